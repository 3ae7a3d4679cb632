// The bulging tube's arithmetic in its plainest form, vertex after vertex: what BumpTube must equal
// and is measured against.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

struct PlainTubeVertex {
    float x, y, z;
    float s, t;
};

class PlainTube {
public:
    // A tube along the z axis, from the eye into the distance.
    PlainTube(int slices, int stacks, float radius, float length);

    // Where both maps are scrolled to: x, y, x, y, in texels as 16.16 fixed point.
    void setScroll(const std::array<std::int32_t, 4>& positions) { scroll_ = positions; }

    // Bulges the tube by two maps of 1024 x 1024 heights, scrolled as they were left, then scrolls
    // them to where they are after `time` seconds.
    void bulge(float time, const std::uint8_t* map1, const std::uint8_t* map2);

    // The vertices before and after bulging, ring after ring; s and t are the base texture's in
    // rest() and the light texture's in bulged().
    [[nodiscard]] const std::vector<PlainTubeVertex>& rest() const { return rest_; }
    [[nodiscard]] const std::vector<PlainTubeVertex>& bulged() const { return bulged_; }

    // The place of a vertex in both; columns and rings wrap around.
    [[nodiscard]] std::size_t index(int column, int ring) const;

    // The base texture's t, which moves along the tube.
    [[nodiscard]] static float baseT(float restT, float time);

private:
    void scaleRadii(const std::uint8_t* map1, const std::uint8_t* map2);
    void placeVertices();
    void lightVertices();

    int slices_;
    int stacks_;
    std::array<std::int32_t, 4> scroll_{};
    std::vector<PlainTubeVertex> rest_;
    std::vector<PlainTubeVertex> bulged_;
    std::vector<float> radiusScale_;
    std::vector<std::int32_t> mapOffset_;
};
