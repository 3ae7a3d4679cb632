#pragma once

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/mat3x3.hpp>
#include <glm/matrix.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <span>
#include <vector>

// The dog as a solid: rounded forms that melt into one another, each with the coat that grows on
// it.
//
// Space: x to the viewer's right, y up, z toward the viewer; half a head is about 0.6 wide. The
// head's forms stand in a space of their own, which is turned and tilted against the body's.
namespace dog {

inline const glm::vec3 kCream = colour(0xd0aa7c);
inline const glm::vec3 kTan = colour(0xac5e26);
inline const glm::vec3 kRust = colour(0x763816);
inline const glm::vec3 kLeather = colour(0x140b07);

inline constexpr float kHeadTurn = -0.17F; // radians, toward the light on the viewer's left
inline constexpr float kHeadTilt = 0.12F;  // radians, clockwise
inline constexpr float kHeadBow = 0.03F;   // radians, the nose down

// Stands for a groom that leads away from a point deep in the muzzle, as fur on the face grows.
inline const glm::vec3 kFromMuzzle{0.0F, 0.0F, 0.0F};
inline const glm::vec3 kMuzzle{0.0F, -0.34F, 0.72F};
inline const glm::vec3 kNoseTip{0.0F, -0.16F, 1.07F};
inline const glm::vec3 kEye{0.25F, 0.13F, 0.42F};
inline const glm::vec3 kBrowSpot{0.20F, 0.36F, 0.42F};

// What grows on a form, and at a place.
struct Coat {
    glm::vec3 groom{0.0F}; // the way that it lies
    float length = 0.0F;   // of its hairs, pixels; 0 is bare skin
    glm::vec3 colour{0.0F};
    float bare = 0.0F; // 0 fur, 1 skin
};

// An ellipsoid; one that stands beside the middle has its mirror image on the other side.
struct Form {
    glm::vec3 centre;
    glm::vec3 radii;
    glm::vec3 turn; // about x, y and z, radians
    float melt;     // how far it melts into its neighbours
    Coat coat;
};

// clang-format off
inline const auto kHead = std::to_array<Form>({
    // Skull, brow, cheekbone, the cheek's longer fur.
    {{0.00,  0.20, -0.16}, {0.53, 0.44, 0.56}, {0.00,  0.00,  0.00}, 0.10F, {kFromMuzzle, 13, kTan}},
    {{0.19,  0.30,  0.25}, {0.18, 0.10, 0.16}, {0.00,  0.00, -0.35}, 0.12F, {{0.25, 1, -0.7}, 9, kTan}},
    {{0.30, -0.06,  0.06}, {0.27, 0.30, 0.38}, {0.00,  0.00,  0.00}, 0.14F, {{0.8, -0.45, -0.5}, 15, kTan}},
    {{0.37, -0.20, -0.08}, {0.24, 0.30, 0.30}, {0.00,  0.00,  0.30}, 0.14F, {{0.8, -0.85, -0.1}, 28, kTan}},
    // The muzzle's bridge and end, upper lip, lower jaw, chin.
    {{0.00, -0.05,  0.48}, {0.19, 0.19, 0.42}, {0.16,  0.00,  0.00}, 0.16F, {kFromMuzzle, 6, kCream}},
    {{0.00, -0.19,  0.82}, {0.18, 0.15, 0.24}, {0.00,  0.00,  0.00}, 0.08F, {kFromMuzzle, 5, kCream}},
    {{0.11, -0.30,  0.74}, {0.16, 0.17, 0.26}, {0.00,  0.00, -0.15}, 0.05F, {{0.6, -0.45, -0.6}, 7, kCream}},
    {{0.00, -0.45,  0.50}, {0.17, 0.12, 0.34}, {0.10,  0.00,  0.00}, 0.03F, {{0, -0.8, -0.5}, 10, kCream}},
    {{0.00, -0.49,  0.74}, {0.12, 0.09, 0.13}, {0.00,  0.00,  0.00}, 0.05F, {{0, -1, -0.2}, 9, kCream}},
    // The ear's root, its flap and its tip.
    {{0.52,  0.33, -0.16}, {0.18, 0.12, 0.15}, {0.00,  0.00, -0.55}, 0.08F, {{0.7, -0.7, 0}, 9, kRust}},
    {{0.69,  0.10, -0.06}, {0.165, 0.34, 0.09}, {0.00,  0.20,  0.20}, 0.06F, {{0.15, -1, 0.1}, 18, kRust}},
    {{0.75, -0.16, -0.06}, {0.155, 0.26, 0.07}, {0.00,  0.20,  0.05}, 0.06F, {{-0.05, -1, 0.1}, 26, kRust}},
    // The nose, and what hangs from it to the lip.
    {{0.00, -0.145, 1.02}, {0.155, 0.105, 0.10}, {0.00, 0.00, 0.00}, 0.03F, {kFromMuzzle, 0, kLeather}},
    {{0.00, -0.215, 1.02}, {0.080, 0.09, 0.08}, {0.00, 0.00,  0.00}, 0.05F, {kFromMuzzle, 0, kLeather}},
});
inline const auto kBody = std::to_array<Form>({
    // Neck, the collar's sides, chest, shoulder.
    {{0.00, -0.58, -0.50}, {0.56, 0.72, 0.46}, {0.00,  0.00,  0.00}, 0.20F, {{0, -1, 0.1}, 28, kTan}},
    {{0.46, -0.86, -0.42}, {0.34, 0.52, 0.36}, {0.00,  0.00,  0.25}, 0.16F, {{0.7, -1, 0.1}, 36, kTan}},
    {{0.00, -1.04,  0.00}, {0.56, 0.60, 0.48}, {0.00,  0.00,  0.00}, 0.18F, {{0, -1, 0.25}, 38, kCream}},
    {{0.76, -1.47, -0.62}, {0.48, 0.66, 0.50}, {0.00,  0.00,  0.30}, 0.20F, {{0.5, -1, 0}, 30, kRust}},
});
// What is pressed into the head: the eyes' sockets, the folds at the ears' roots, the brow's furrow.
inline const auto kHollows = std::to_array<Form>({
    {{0.26,  0.11,  0.49}, {0.11, 0.06, 0.06}, {0.00,  0.30, -0.20}, 0.08F, {}},
    {{0.53,  0.22,  0.04}, {0.035, 0.20, 0.12}, {0.00,  0.00,  0.25}, 0.05F, {}},
    {{0.00,  0.38,  0.42}, {0.020, 0.15, 0.035}, {-0.5,  0.00,  0.00}, 0.08F, {}},
});
// clang-format on

struct Place {
    glm::vec3 body;
    glm::vec3 head;
};

// About x, then y, then z.
inline glm::mat3 turned(glm::vec3 turn)
{
    const auto [pitch, yaw, roll] = std::array{turn.x, turn.y, turn.z};
    const glm::mat3 aboutX{1, 0, 0, 0, cosine(pitch), sine(pitch), 0, -sine(pitch), cosine(pitch)};
    const glm::mat3 aboutY{cosine(yaw), 0, -sine(yaw), 0, 1, 0, sine(yaw), 0, cosine(yaw)};
    const glm::mat3 aboutZ{cosine(roll), sine(roll), 0, -sine(roll), cosine(roll), 0, 0, 0, 1};
    return aboutZ * aboutY * aboutX;
}

class Solid {
public:
    Solid()
    {
        addForms(forms_, kHead, true);
        addForms(forms_, kBody, false);
        addForms(hollows_, kHollows, true);
    }

    // Distance from the surface, negative inside.
    [[nodiscard]] float distance(glm::vec3 position) const
    {
        const Place place = placeOf(position);
        float nearest = 10.0F;
        for (const Placed& placed : forms_) {
            const float next = distanceTo(placed, place);
            const float overlap =
                glm::max(placed.form.melt - std::fabs(nearest - next), 0.0F) / placed.form.melt;
            nearest = glm::min(nearest, next) - overlap * overlap * placed.form.melt / 4.0F;
        }
        for (const Placed& placed : hollows_) {
            const float outside = -distanceTo(placed, place);
            const float overlap =
                glm::max(placed.form.melt - std::fabs(nearest - outside), 0.0F) / placed.form.melt;
            nearest = glm::max(nearest, outside) + overlap * overlap * placed.form.melt / 4.0F;
        }
        return nearest;
    }

    [[nodiscard]] glm::vec3 normal(glm::vec3 position) const
    {
        constexpr float kStep = 0.004F;
        glm::vec3 slope;
        for (int axis = 0; axis < 3; ++axis) {
            glm::vec3 aside(0.0F);
            aside[axis] = kStep;
            slope[axis] = distance(position + aside) - distance(position - aside);
        }
        return glm::normalize(slope);
    }

    // How open the surface lies to the air, 0 in a deep crease to 1.
    [[nodiscard]] float openness(glm::vec3 position, glm::vec3 normal) const
    {
        float closed = 0.0F;
        for (int i = 1; i <= 4; ++i) {
            const float away = 0.07F * static_cast<float>(i);
            closed += glm::max(0.0F, away - distance(position + normal * away)) / away;
        }
        return glm::clamp(1.05F - 0.36F * closed, 0.0F, 1.0F);
    }

    // How much of a far light's disc is seen from a place on the surface, 0 to 1.
    [[nodiscard]] float seenFrom(glm::vec3 position, glm::vec3 toLight) const
    {
        constexpr float kSoftness = 5.0F;
        constexpr float kReach = 1.6F;
        float seen = 1.0F;
        for (float way = 0.06F; way < kReach && seen > 0.0F;) {
            const float room = distance(position + toLight * way);
            seen = glm::min(seen, 0.5F + 0.5F * kSoftness * room / way);
            way += glm::clamp(room, 0.02F, 0.1F);
        }
        return softStep(0.0F, 1.0F, seen);
    }

    // The coat's groom lies along the surface here: it has unit length, or none where hairs stand.
    [[nodiscard]] Coat coat(glm::vec3 position, glm::vec3 normal) const
    {
        const Place place = placeOf(position);
        Coat sum;
        float weights = 0.0F;
        for (const Placed& placed : forms_) {
            const Coat& coat = placed.form.coat;
            const float weight = exponential(-24.0F * glm::max(distanceTo(placed, place), -0.02F));
            const glm::vec3 groom = coat.groom == kFromMuzzle ? place.head - kMuzzle : coat.groom;
            sum.groom += weight * glm::normalize(placed.inHead ? headAxes_ * groom : groom);
            sum.length += weight * coat.length;
            sum.colour += weight * coat.colour;
            sum.bare += coat.length == 0.0F ? weight : 0.0F;
            weights += weight;
        }
        sum.groom -= normal * glm::dot(sum.groom, normal);
        const float along = glm::length(sum.groom);
        return {along > 0.001F * weights ? sum.groom / along : glm::vec3(0.0F),
                sum.length / weights, marked(sum.colour / weights, place.head), sum.bare / weights};
    }

    [[nodiscard]] glm::vec3 fromHead(glm::vec3 position) const
    {
        return headAxes_ * position + kHeadPosition;
    }
    [[nodiscard]] glm::vec3 toHead(glm::vec3 position) const
    {
        return glm::transpose(headAxes_) * (position - kHeadPosition);
    }

private:
    struct Placed {
        Form form;
        glm::mat3 toForm;
        bool inHead;
    };

    static constexpr glm::vec3 kHeadPosition{0.0F, 0.11F, 0.0F};

    static void addForms(std::vector<Placed>& placed, std::span<const Form> forms, bool inHead)
    {
        const auto add = [&](const Form& form) {
            placed.push_back({form, glm::transpose(turned(form.turn)), inHead});
        };
        for (Form form : forms) {
            add(form);
            if (form.centre.x != 0.0F) {
                form.centre.x = -form.centre.x;
                form.coat.groom.x = -form.coat.groom.x;
                form.turn.y = -form.turn.y;
                form.turn.z = -form.turn.z;
                add(form);
            }
        }
    }

    [[nodiscard]] Place placeOf(glm::vec3 position) const { return {position, toHead(position)}; }

    // Close to an ellipsoid's distance near its surface, too small far away.
    static float distanceTo(const Placed& placed, const Place& place)
    {
        const Form& form = placed.form;
        const glm::vec3 from =
            placed.toForm * ((placed.inHead ? place.head : place.body) - form.centre);
        const float reach = glm::length(from / form.radii);
        const float slope = glm::length(from / (form.radii * form.radii));
        return reach * (reach - 1.0F) / glm::max(slope, 0.001F);
    }

    // The coat's markings: a dark crown, a blaze that widens over the muzzle, bright spots over and
    // under the eyes, dark eyelids, bright edges on the ears.
    static glm::vec3 marked(glm::vec3 coat, glm::vec3 head)
    {
        const float aside = std::fabs(head.x);
        const glm::vec3 folded(aside, head.y, head.z);
        const float crown = softStep(0.28F, 0.55F, head.y);
        coat = glm::mix(coat, 0.5F * kRust, 0.9F * crown);
        const float blaze = 0.05F + 0.08F * softStep(0.25F, -0.05F, head.y) +
                            0.05F * softStep(0.35F, 0.65F, head.z);
        coat = glm::mix(coat, kCream,
                        (1.0F - 0.4F * crown) * softStep(blaze + 0.04F, blaze - 0.02F, aside) *
                            softStep(0.05F, 0.15F, head.z));
        const glm::vec3 fromSpot = (folded - kBrowSpot) * glm::vec3(1.0F, 1.6F, 0.7F);
        coat = glm::mix(coat, kCream, 0.45F * softStep(0.17F, 0.06F, glm::length(fromSpot)));
        const glm::vec3 fromLid = (folded - kUnderEye) * glm::vec3(1.0F, 1.6F, 0.6F);
        coat = glm::mix(coat, kCream, 0.5F * softStep(0.20F, 0.10F, glm::length(fromLid)));
        const glm::vec3 fromEye = (folded - kEye) * glm::vec3(1.0F, 1.7F, 0.6F);
        coat = glm::mix(coat, 0.3F * kRust, softStep(0.16F, 0.12F, glm::length(fromEye)));
        // The ears' front edges, which catch light.
        const float behindEdge = aside - 0.55F - 0.25F * (0.33F - head.y);
        return glm::mix(coat, kLitEdge,
                        0.8F * softStep(0.07F, 0.03F, behindEdge) *
                            softStep(-0.06F, -0.02F, behindEdge) * softStep(0.32F, 0.26F, head.y));
    }

    static constexpr glm::vec3 kUnderEye{0.30F, 0.0F, 0.40F};
    inline static const glm::vec3 kLitEdge = colour(0xe8944a);

    std::vector<Placed> forms_;
    std::vector<Placed> hollows_;
    glm::mat3 headAxes_ = turned({kHeadBow, kHeadTurn, -kHeadTilt});
};

// The lock that a hair belongs to: hairs stand closer together than locks do, and lean together
// where they end. Locks are the cells around points that are scattered through space.
struct Lock {
    glm::vec3 middle;
    std::uint32_t number; // random bits of its own
};

inline Lock lockAt(glm::vec3 place, float size, int seed)
{
    const glm::ivec3 home(glm::floor(place / size));
    Lock nearest{};
    float distance = 100.0F * size;
    for (int i = 0; i < 27; ++i) {
        const glm::ivec3 cell = home + glm::ivec3(i % 3, i / 3 % 3, i / 9) - 1;
        const std::uint32_t bits =
            hash(static_cast<int>(hash(cell.x, cell.y, seed) >> 8U), cell.z, seed);
        const glm::vec3 offset(unit(bits), unit(bits << 8U), unit(bits << 16U));
        const glm::vec3 middle = (glm::vec3(cell) + offset) * size;
        if (glm::distance(place, middle) < distance) {
            distance = glm::distance(place, middle);
            nearest = {middle, bits};
        }
    }
    return nearest;
}

} // namespace dog
