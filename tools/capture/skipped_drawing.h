// Keeps from OpenGL what a program draws in frames that nobody wants to see. When this is loaded
// before OpenGL, it takes the place of its drawing calls; state, arrays and new textures go on as
// they are.
//
// The calls are those that the show makes (render/, scenes/, image/bitmap.cpp); the test
// capture_has_every_call refuses drawing calls that are missing here. Each clears or covers the
// whole buffer, as long as there is no scissor test and no mask.
#pragma once

#include <cstdint>
#include <optional>

// What is drawn from now on belongs to this frame; if not `isDrawn`, it stays away from OpenGL.
// Before the first call of this, everything is drawn.
void beginFrame(std::uint64_t frame, bool isDrawn);

struct MissingFrame {
    std::uint64_t frame = 0;
    bool isHeld = false; // nothing was drawn since: the buffer would show this frame

    bool operator==(const MissingFrame&) const = default;
};

// None if OpenGL's buffer shows what it would show with every frame drawn. Otherwise a skipped
// frame that has to be drawn too: the latest one that the buffer, its depths or a texture in it
// depend on.
std::optional<MissingFrame> missingFrame();
