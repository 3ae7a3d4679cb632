#pragma once

#include "image/bitmap.h"
#include "render/line_set.h"
#include "render/screen_quad.h"
#include "render/zoom_blur.h"
#include "scenes/part.h"

// Scene 6, the closing: a line figure, smeared along the rays from the centre, fills the view, and
// a title is burnt into it in black.
//
// Neither time nor events move it: it advances by a fixed step per drawn frame. Leaves blending on
// with (GL_ZERO, GL_ONE_MINUS_SRC_COLOR) and the depth function at GL_ALWAYS.
class Loppupart : public Part {
public:
    // Loads the title from "data". Needs the display.
    Loppupart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    void drawFigure();
    void advance();
    void presentFire();
    void burnTitle();

    ZoomBlur blur_;
    LineSet lines_;
    Bitmap lineBitmap_; // the figure
    Bitmap blurBitmap_; // the figure, smeared
    ScreenQuad quad_;
    Bitmap titleImage_;
    float phase_ = 0.0F; // the scene's own clock
};
