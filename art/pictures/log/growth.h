// How the log has grown: places in its wood, the hearts that rings begin at, and the years.
//
// All geometry is in the view's pixels, so that rings stay round: the tile is shown over the whole
// view.
#pragma once

#include "base/window_and_view.h"

#include <array>
#include <cstddef>
#include <glm/vec2.hpp>
#include <vector>

namespace wood {

inline constexpr glm::vec2 kScreen(kViewWidth, kViewHeight);

// Where rings begin.
struct Heart {
    glm::vec2 place;
    float ringWidth; // as a share of the log's
    float radius;    // of a knot, pixels; 0 for a stem
};
inline constexpr std::array kHearts = {
    Heart{{188, 112}, 1.0F,  0 }, // the log
    Heart{{486, 212}, 0.9F,  0 }, // a second stem
    Heart{{392, 74},  0.72F, 64}, // knots
    Heart{{312, 226}, 0.66F, 46},
    Heart{{58, 232},  0.68F, 54},
};
inline constexpr std::size_t kFirstKnot = 2;
using Ages = std::array<float, kHearts.size()>;

// The growth at a place, in pixels of wood since the nearest heart, as a smooth minimum over all
// hearts, so that rings of two of them flow together.
struct Growth {
    float age;
    std::size_t heart; // the nearest one
    glm::vec2 fromHeart;
    float knot; // 1 in a knot, 0 in the stems
};

// The ages with which the hearts begin.
Ages agesOfHearts();

Growth growthAt(glm::vec2 place, const Ages& heads);

struct Year {
    float start; // age
    float width;
    float tone; // how pale its wood is
};

// The years, one after the other.
std::vector<Year> growYears();

const Year& yearAt(const std::vector<Year>& years, float age);

// A place in the cells of noise that has so many of them over the tile.
glm::vec2 noisePlace(glm::vec2 place, glm::ivec2 period);

} // namespace wood
