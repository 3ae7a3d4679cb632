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
    PlainTube(int slices, int stacks, float radius, float length);

    // The scroll positions of both maps as x, y, x, y in 16.16 texels.
    void setScroll(const std::array<std::int32_t, 4>& positions) { scroll_ = positions; }

    // Bulges the tube by two maps of 1024 x 1024 texels at the scroll positions, then moves these
    // to where they are at `time`.
    void bulge(float time, const std::uint8_t* map1, const std::uint8_t* map2);

    // Ring after ring; s and t are the base texture's in the rest, the light's in the bulged ones.
    [[nodiscard]] const std::vector<PlainTubeVertex>& rest() const { return rest_; }
    [[nodiscard]] const std::vector<PlainTubeVertex>& bulged() const { return bulged_; }

    // The place of a vertex in all of these, both indices wrapped around.
    [[nodiscard]] std::size_t index(int column, int ring) const;

    // The t of the first pass, which moves along the tube.
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
