// What a frame is made of once OpenGL 1.1 is taken out of it: vertices in clip coordinates, and the
// few commands that draw them. web/page/painter.js reads these lists and draws them with WebGL 2;
// the numbers of states are OpenGL's, which WebGL shares.
//
// All of it is plain 32-bit numbers in the order in which they are written here, since a script
// reads them from memory.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

struct FrameVertex {
    std::array<float, 4> position; // clip coordinates
    std::array<float, 2> texCoord;
    std::array<float, 4> colour; // red, green, blue, alpha, 0 to 1
};

// Clears, if `clears` has OpenGL's bits; otherwise draws triangles.
struct FrameCommand {
    std::uint32_t clears = 0;
    std::uint32_t firstIndex = 0;
    std::uint32_t indexCount = 0;
    std::uint32_t texture = 0; // 0: plain
    std::uint32_t blends = 0;  // 0 or 1
    std::uint32_t blendSource = 0;
    std::uint32_t blendDestination = 0;
    std::uint32_t testsDepth = 0; // 0 or 1
    std::uint32_t depthFunction = 0;

    bool operator==(const FrameCommand&) const = default;
};

// A texture and its picture, rows back to back.
struct FrameTexture {
    std::uint32_t version = 0; // becomes another number with every new picture; 0: no picture yet
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t channels = 0; // bytes a pixel: 3 or 4
    const std::uint8_t* pixels = nullptr;
};

// A whole frame. Texture n has the name n + 1. Valid until the next call of OpenGL.
struct FrameList {
    const FrameVertex* vertices = nullptr;
    std::uint32_t vertexCount = 0;
    const std::uint32_t* indices = nullptr;
    std::uint32_t indexCount = 0;
    const FrameCommand* commands = nullptr;
    std::uint32_t commandCount = 0;
    const FrameTexture* textures = nullptr;
    std::uint32_t textureCount = 0;
};

// What OpenGL was asked to draw since the last frame ended, or if that is nothing, the last frame
// again.
FrameList frameList();

// The frame is over: the next call that draws begins a new list.
void endFrameList();
