// What OpenGL draws, read back from a real display.
#pragma once

#include "base/window_and_view.h"
#include "image/bitmap.h"
#include "render/projection.h"
#include "show/display.h"
#include "show/options.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

using Pixel = std::array<std::uint8_t, 4>; // red, green, blue, alpha
constexpr Pixel kRed = {255, 0, 0, 255};
constexpr Pixel kGreen = {0, 255, 0, 255};
constexpr Pixel kBlue = {0, 0, 255, 255};
constexpr Pixel kWhite = {255, 255, 255, 255};

struct Rectangle {
    int x, y, width, height; // from the viewport's top left corner
};

// A black picture on the one display of all tests.
class OnDisplay : public ::testing::Test {
protected:
    OnDisplay()
    {
        if (displayMetrics.viewportWidth == 0) {
            options.fullscreen = 0;
            initVideo(kWindowWidth, kWindowHeight);
            initGL(kWindowWidth, kWindowHeight, kViewWidth, kViewHeight);
        }
        glClear(GL_COLOR_BUFFER_BIT);
    }

    // Draws, and looks whether this lights, in the whole window, exactly the part of a rectangle
    // that is within the viewport.
    template <class Draw>
    static void expectLit(const Rectangle& r, Draw draw)
    {
        std::vector<Pixel> pixels(std::size_t{kWindowWidth} * kWindowHeight); // lowest row first
        glClear(GL_COLOR_BUFFER_BIT);
        draw();
        glReadPixels(0, 0, kWindowWidth, kWindowHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        for (int i = 0; i < kWindowWidth * kWindowHeight; ++i) {
            const int x = i % kWindowWidth;
            const int y = displayMetrics.viewportY + kViewHeight - 1 - i / kWindowWidth;
            const bool inside = y >= 0 && y < kViewHeight && x >= r.x && x < r.x + r.width &&
                                y >= r.y && y < r.y + r.height;
            ASSERT_EQ(pixels[static_cast<std::size_t>(i)][0] != 0, inside)
                << x << ", " << y << " of what was drawn at " << r.x << ", " << r.y;
        }
    }

    // What is now at this place of the viewport.
    static Pixel pixelAt(int x, int y)
    {
        Pixel pixel{};
        glReadPixels(x, displayMetrics.viewportY + kViewHeight - 1 - y, 1, 1, GL_RGBA,
                     GL_UNSIGNED_BYTE, pixel.data());
        return pixel;
    }

    // Makes a texture: red and green on top, blue and white below.
    void makeFourColours(unsigned bpp)
    {
        constexpr std::array kColours = {kRed, kGreen, kBlue, kWhite};
        bitmap.create(64, 32, bpp);
        std::uint8_t* byte = bitmap.getPixels();
        for (unsigned i = 0; i < 64 * 32; ++i) {
            byte = std::copy_n(kColours[i / 1024 * 2 + i / 32 % 2].begin(), bpp / 8, byte);
        }
        bitmap.makeTexture();
    }

    Bitmap bitmap;
};
