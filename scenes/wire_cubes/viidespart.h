#pragma once

#include "render/cube_mesh.h"
#include "scenes/part.h"

#include <array>
#include <cstddef>

// Scene 4, the wire cubes: over the warped grid three spinning cubes, each a cloud of 25 trembling
// copies whose faint lines brighten what is below, recede from frame to frame.
//
// Events (cues::wire_cubes) act in the next frame, once even if the same one came several times:
// they pull the cubes back and flash the grid, or blow the clouds apart, a little or far. Leaves
// depth testing off and blending on with (GL_DST_COLOR, GL_ONE); the shared grid keeps the alpha of
// this scene.
class Viidespart : public Part {
public:
    Viidespart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    static constexpr std::size_t kCubes = 3;

    struct Offset {
        float x, y, z;
    };

    void advance();
    void moveCubes();
    void spread();
    void placeCubes(float seconds);
    void drawClouds(float seconds);

    std::array<CubeMesh, kCubes> cubes_;
    bool pulled_ = false; // events that came since the frame before
    bool smallBlow_ = false;
    bool largeBlow_ = false;
    float spread_ = 0.5F; // world units that a copy may be off its cloud's middle
    std::array<Offset, kCubes> offsets_;
    float gridAlpha_ = 0.25F;
};
