#pragma once

#include "render/arrays.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// A long tube seen from inside, whose wall bulges as two height maps scroll across it. A base
// texture covers it, and a light texture, looked up by the wall's normals, multiplies that.
//
// The tube begins at z = 0 and goes along -z; its vertices are rings r = 0 to stacks of columns
// c = 0 to slices, where the last column closes the ring on the first. Height maps and textures are
// borrowed.
class BumpTube {
public:
    // Makes the tube at rest, without bulges; `radius` and `length` are in world units. Seeds the C
    // library's random numbers with the current time and scrolls the maps to random places. If
    // there is no memory for it, the process ends with a message on standard error and status 0.
    void build(int slices, int stacks, float radius, float length);

    // Two maps of 1024 x 1024 bytes, rows back to back; both may be the same one. The radius grows
    // with the sum of their heights: 45 adds one radius at rest.
    void setHeightMaps(const std::uint8_t* first, const std::uint8_t* second);

    void setBaseTexture(unsigned name) { baseTexture_ = name; }
    void setLightTexture(unsigned name) { lightTexture_ = name; }
    void setRotation(float x, float y, float z) { rotation_ = {x, y, z}; } // degrees

    // The part of draw() that needs no OpenGL: bulges the wall by the maps, which are where the
    // previous call has scrolled them to, lights it, and scrolls the maps to a time in seconds.
    void update(float time);

    // Calls update() and draws the tube for a time in seconds. Expects the depth state to be set.
    // Leaves the model-view matrix as it was, texturing enabled with the light texture bound, and
    // blending enabled with (GL_DST_COLOR, GL_ZERO).
    void draw(float time);

    struct Vertex {
        float x, y, z;
        float s, t;
    };

    // Ring after ring, bulged, with the light's texture coordinates.
    [[nodiscard]] std::span<const Vertex> vertices() const;

private:
    struct Vector {
        float x, y, z;
    };

    static Vector cross(const Vector& a, const Vector& b);
    static Vector normalised(const Vector& v);

    [[nodiscard]] std::size_t index(int column, int ring) const;
    [[nodiscard]] const Vertex& neighbour(int column, int ring) const;
    static Vector between(const Vertex& from, const Vertex& to);

    void sampleMaps();
    void scrollMaps(float time);
    void bulge();
    void light();
    void drawStrips(float time) const;

    Array<Vertex> baseVertices_;    // at rest
    Array<Vertex> vertices_;        // this frame's
    Array<float> radiusScale_;      // this frame's
    Array<std::int32_t> mapOffset_; // in texels
    std::int32_t slices_ = 0;
    std::int32_t stacks_ = 0;
    float length_ = 0.0F;
    std::uint32_t baseTexture_ = 0;
    std::uint32_t lightTexture_ = 0;
    std::int32_t mapX1_ = 0; // 16.16 fixed point, in texels
    std::int32_t mapY1_ = 0;
    std::int32_t mapX2_ = 0;
    std::int32_t mapY2_ = 0;
    std::array<float, 3> rotation_{};
    const std::uint8_t* heightMap1_ = nullptr; // borrowed
    const std::uint8_t* heightMap2_ = nullptr; // borrowed
};
