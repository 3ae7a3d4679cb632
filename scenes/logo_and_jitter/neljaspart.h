#pragma once

#include "image/bitmap.h"
#include "render/screen_quad.h"
#include "scenes/part.h"

// Scene 3, logo and jitter: over the warped grid a logo, and a large picture three times, each
// copy amplifying the light below it; two of the copies are shaken by a few pixels at random.
//
// An event (cues::logo_and_jitter) pushes the warp two seconds ahead. Leaves additive blending on.
class Neljaspart : public Part {
public:
    // Loads the pictures from "data". Needs the display.
    Neljaspart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    void drawLogo();
    void drawShakenPicture();
    void drawPicture(int x, int y);

    Bitmap logo_;
    Bitmap picture_;
    ScreenQuad quad_;
    float timeOffset_ = 0.0F; // seconds, of the warp
};
