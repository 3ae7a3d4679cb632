// The folds of the cortex: waves of one length run over it in all directions; where they cancel
// each other, it sinks into a furrow.
#pragma once

#include <glm/vec3.hpp>
#include <vector>

namespace brain {

class Folds {
public:
    explicit Folds(int seed);

    // How far a place near the surface is from the nearest furrow: 0 in it, 1 on a crest.
    [[nodiscard]] float crestAt(glm::vec3 place) const;

private:
    [[nodiscard]] float cell(int x, int y, int z) const;

    std::vector<float> swell_; // in cells of a cube around the brain: -1 to 1, 0 in a furrow
};

} // namespace brain
