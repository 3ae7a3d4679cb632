#pragma once

#include "image/bitmap.h"
#include "render/screen_quad.h"
#include "render/twister.h"
#include "scenes/part.h"

#include <array>
#include <cstddef>

// Scene 1, the twister: a textured column twists and sways on the right half of the view, over a
// still background and five titles.
//
// Events (cues::twister) show or hide one title each, and jolt the twist; the jolt dies away within
// a few frames.
class Tokapart : public Part {
public:
    // Loads the pictures from "data". Needs the display.
    Tokapart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    struct Rectangle {
        int x, y, width, height; // pixels of the view
    };
    static constexpr std::size_t kTitles = 5;

    Rectangle drawTitles();
    void advance(float seconds);
    void drawColumn(float seconds);
    void drawTitleQuad(const Rectangle& r);

    std::array<Bitmap, kTitles> titles_;
    ScreenQuad titleQuad_;
    Bitmap background_;
    ScreenQuad backgroundQuad_;
    Bitmap canvas_; // of the column
    ScreenQuad twisterQuad_;
    Bitmap columnTexture_;
    Twister twister_;
    std::array<int, kTitles> titleOn_{};
    float flash_ = 0.0F;    // jolt of the twist, 1 right after an event
    float prevTime_ = 0.0F; // seconds, of the frame drawn before
};
