#pragma once

#include "image/bitmap.h"
#include "render/screen_quad.h"
#include "render/twister.h"
#include "scenes/part.h"

#include <array>

// Scene 1, the twister: a textured column twists and sways on the right half of the viewport, over
// a still background and five titles.
//
// Sync events 128 to 137 show (even) and hide (odd) the titles one after the other, and jolt the
// twist; the jolt dies away within a few frames.
class Tokapart : public Part {
public:
    // Loads the pictures from "data". Needs the display.
    Tokapart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    struct Rectangle {
        int x, y, width, height; // pixels of the viewport
    };
    struct Title {
        const char* path;
        Rectangle rectangle;
    };

    static constexpr std::array kTitles = {
        Title{"data/the.tga",       {0, 176, 128, 32}},
        Title{"data/end.tga",       {0, 208, 256, 64}},
        Title{"data/kso.tga",       {0, 0, 256, 128} },
        Title{"data/by.tga",        {60, 70, 64, 32} },
        Title{"data/velmorant.tga", {80, 80, 512, 64}},
    };

    void drawTitleQuad(const Rectangle& r);

    std::array<Bitmap, kTitles.size()> titles_;
    ScreenQuad titleQuad_;
    Bitmap background_;
    ScreenQuad backgroundQuad_;
    Bitmap canvas_; // of the column
    ScreenQuad twisterQuad_;
    Bitmap columnTexture_;
    Twister twister_;
    std::array<int, kTitles.size()> titleOn_{};
    float flash_ = 0.0F;    // jolt of the twist, 1 right after an event
    float prevTime_ = 0.0F; // seconds, of the frame drawn before
};
