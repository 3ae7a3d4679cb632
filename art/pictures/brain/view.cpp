#include "art/pictures/brain/view.h"

#include "art/pictures/brain/anatomy.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/mat3x3.hpp>

namespace brain {

namespace {

constexpr float kAside = 0.85F; // radians from the front
constexpr float kAbove = 0.64F;
constexpr float kAway = 2.7F;
constexpr glm::vec2 kMiddle{127.0F, 98.0F};
constexpr float kScale = 300.0F; // pixels for a unit at a unit's distance
constexpr float kTurn = -0.16F;  // radians by which the head leans
constexpr float kFoldDepth = 0.075F;
constexpr float kReach = 1.45F; // from the middle to the farthest end

class Eye {
public:
    Eye()
    {
        const glm::vec3 toEye(cosine(kAbove) * sine(kAside), cosine(kAbove) * cosine(kAside),
                              sine(kAbove));
        const glm::vec3 right = glm::normalize(glm::cross(glm::vec3(0.0F, 0.0F, 1.0F), toEye));
        const glm::vec3 up = glm::cross(toEye, right);
        axes_ = glm::mat3(cosine(kTurn) * right + sine(kTurn) * up,
                          cosine(kTurn) * up - sine(kTurn) * right, toEye);
    }

    [[nodiscard]] glm::vec3 place() const { return kAway * axes_[2]; }
    [[nodiscard]] glm::vec3 toward(glm::vec2 pixel) const
    {
        const glm::vec2 off = (pixel - kMiddle) / kScale;
        return glm::normalize(axes_ * glm::vec3(off.x, -off.y, -1.0F));
    }
    [[nodiscard]] glm::vec3 seen(glm::vec3 direction) const { return direction * axes_; }

private:
    glm::mat3 axes_{}; // right, up and toward the viewer
};

// A fold is round on top and meets the next one in a cleft.
float foldedDistance(const Folds& folds, glm::vec3 place)
{
    float cortex = cortexDistance(place);
    if (cortex < 0.5F * kFoldDepth) {
        const float down = 1.0F - folds.crestAt(place);
        cortex += kFoldDepth * (1.0F - std::sqrt(1.0F - down * down));
    }
    return cortex;
}

// Which way a distance grows fastest.
template <typename Distance>
glm::vec3 normalOf(const Distance& distance, glm::vec3 place, float step)
{
    constexpr std::array<glm::vec3, 4> kCorners{
        {{1.0F, -1.0F, -1.0F}, {-1.0F, -1.0F, 1.0F}, {-1.0F, 1.0F, -1.0F}, {1.0F, 1.0F, 1.0F}}
    };
    glm::vec3 sum(0.0F);
    for (const glm::vec3& corner : kCorners) {
        sum += corner * distance(place + step * corner);
    }
    return sum / std::max(glm::length(sum), 0.000001F);
}

// How far along the ray the brain is, or less than 0 where the ray goes past it.
float reached(const Folds& folds, glm::vec3 from, glm::vec3 way)
{
    constexpr float kCaution = 0.55F; // folds are steep, so distances are less than they seem
    constexpr int kHalvings = 8;
    float outside = kAway - kReach;
    float gone = outside;
    while (gone < kAway + kReach) {
        const float distance = foldedDistance(folds, from + gone * way);
        if (distance < 0.0F) {
            for (int i = 0; i < kHalvings; ++i) {
                const float half = 0.5F * (outside + gone);
                (foldedDistance(folds, from + half * way) < 0.0F ? gone : outside) = half;
            }
            return gone;
        }
        outside = gone;
        gone += kCaution * distance + 0.001F;
    }
    return -1.0F;
}

float openness(const Folds& folds, glm::vec3 place, glm::vec3 normal)
{
    constexpr std::array kSteps{0.03F, 0.07F, 0.14F};
    float open = 1.0F;
    for (const float step : kSteps) {
        open -= 0.6F * std::max(0.0F, 1.0F - foldedDistance(folds, place + step * normal) / step);
    }
    return std::max(open, 0.0F);
}

} // namespace

Raster<Sight> see(const Folds& folds, int fine)
{
    const Eye eye;
    const auto whole = [&](glm::vec3 place) { return foldedDistance(folds, place); };
    Raster<Sight> sights(fine * kSize, fine * kSize, Sight());
    sights.fill([&](int x, int y) {
        const glm::vec3 way = eye.toward((glm::vec2(x, y) + 0.5F) / static_cast<float>(fine));
        const float gone = reached(folds, eye.place(), way);
        if (gone < 0.0F) {
            return Sight();
        }
        const glm::vec3 place = eye.place() + gone * way;
        const glm::vec3 normal = normalOf(whole, place, 0.010F);
        return Sight{.covered = 1.0F,
                     .normal = eye.seen(normal),
                     .form = eye.seen(normalOf(cortexDistance, place, 0.08F)),
                     .crest = folds.crestAt(place),
                     .open = openness(folds, place, normal),
                     .near = softStep(kAway + 0.75F, kAway - 0.9F, gone)};
    });
    return sights;
}

} // namespace brain
