// A real OpenGL display for tests that look at what is drawn. One for the whole test program.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

using Pixel = std::array<std::uint8_t, 4>; // red, green, blue, alpha

// Opens the show's window and viewport on first use, and clears to black.
void raiseCurtain();

// What the viewport shows, 640 x 272 pixels, top row first.
struct Picture {
    std::vector<Pixel> pixels;
    [[nodiscard]] Pixel at(int x, int y) const;
};
Picture lookAtViewport();

// The number of pixels outside the viewport that are not black.
int pixelsOutsideViewport();
