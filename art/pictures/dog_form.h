#pragma once

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"

#include <array>
#include <cmath>
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

inline const glm::vec3 kTan = colour(0x955620);
inline const glm::vec3 kRust = colour(0x5e2c0d);
inline const glm::vec3 kCream = colour(0xffd08a);
inline const glm::vec3 kDark = colour(0x24130a);
inline const glm::vec3 kLeather = colour(0x120b07);

inline constexpr float kHeadTurn = -0.17F; // radians, to the viewer's right
inline constexpr float kHeadTilt = 0.13F;  // radians, clockwise

// Stands for a groom that leads away from a point deep in the muzzle, as fur on the face grows.
inline const glm::vec3 kFromMuzzle{0.0F, 0.0F, 0.0F};
inline const glm::vec3 kMuzzle{0.0F, -0.36F, 0.72F};
inline const glm::vec3 kNoseTip{0.0F, -0.15F, 1.06F};
inline const glm::vec3 kEye{0.245F, 0.13F, 0.42F};
inline const glm::vec3 kBrowSpot{0.21F, 0.36F, 0.42F};

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
    glm::vec2 turn; // about x, about z, radians
    float melt;     // how far it melts into its neighbours
    Coat coat;
};

// clang-format off
inline const auto kHead = std::to_array<Form>({
    // Skull, cheek, brow.
    {{0.00,  0.24, -0.15}, {0.56, 0.47, 0.58}, {0.00,  0.00}, 0.10F, {kFromMuzzle, 12, kTan}},
    {{0.31, -0.08,  0.05}, {0.29, 0.32, 0.40}, {0.00,  0.00}, 0.14F, {{0.7, -0.55, -0.4}, 18, kTan}},
    {{0.20,  0.33,  0.28}, {0.20, 0.12, 0.18}, {0.00, -0.35}, 0.10F, {kFromMuzzle, 8, kTan}},
    // The muzzle's bridge and its end, upper lip, chin.
    {{0.00, -0.06,  0.48}, {0.20, 0.20, 0.42}, {0.16,  0.00}, 0.16F, {kFromMuzzle, 6, kCream}},
    {{0.00, -0.19,  0.82}, {0.18, 0.15, 0.24}, {0.00,  0.00}, 0.08F, {kFromMuzzle, 5, kCream}},
    {{0.11, -0.31,  0.74}, {0.16, 0.17, 0.26}, {0.00, -0.15}, 0.05F, {{0.6, -0.45, -0.6}, 7, kCream}},
    {{0.00, -0.46,  0.60}, {0.15, 0.10, 0.24}, {0.00,  0.00}, 0.03F, {{0, -0.8, -0.5}, 8, kCream}},
    // The ear's root, its flap and its tip.
    {{0.54,  0.47, -0.12}, {0.20, 0.15, 0.17}, {0.00, -0.55}, 0.10F, {{0.8, -0.4, 0}, 11, kRust}},
    {{0.72,  0.22, -0.04}, {0.19, 0.33, 0.09}, {0.00,  0.20}, 0.06F, {{0.15, -1, 0.1}, 17, kRust}},
    {{0.77, -0.05, -0.04}, {0.13, 0.26, 0.07}, {0.00,  0.05}, 0.06F, {{-0.05, -1, 0.1}, 24, kRust}},
    // The nose, and what hangs from it to the lip.
    {{0.00, -0.145, 1.02}, {0.15, 0.10, 0.10}, {0.00,  0.00}, 0.03F, {kFromMuzzle, 0, kLeather}},
    {{0.00, -0.205, 1.02}, {0.08, 0.09, 0.08}, {0.00,  0.00}, 0.05F, {kFromMuzzle, 0, kLeather}},
});
inline const auto kBody = std::to_array<Form>({
    // Neck, chest, shoulder.
    {{0.00, -0.60, -0.50}, {0.60, 0.75, 0.50}, {0.00,  0.00}, 0.20F, {{0, -1, 0.1}, 24, kTan}},
    {{0.00, -1.15, -0.25}, {0.52, 0.72, 0.45}, {0.00,  0.00}, 0.20F, {{0, -1, 0.2}, 27, kCream}},
    {{0.62, -1.55, -0.60}, {0.52, 0.95, 0.55}, {0.00,  0.22}, 0.20F, {{0.45, -1, 0}, 22, kTan}},
});
// clang-format on

struct Place {
    glm::vec3 body;
    glm::vec3 head;
};

inline glm::mat3 turned(float pitch, float yaw, float roll)
{
    const glm::mat3 aboutX{1, 0, 0, 0, cosine(pitch), sine(pitch), 0, -sine(pitch), cosine(pitch)};
    const glm::mat3 aboutY{cosine(yaw), 0, -sine(yaw), 0, 1, 0, sine(yaw), 0, cosine(yaw)};
    const glm::mat3 aboutZ{cosine(roll), sine(roll), 0, -sine(roll), cosine(roll), 0, 0, 0, 1};
    return aboutZ * aboutY * aboutX;
}

class Solid {
public:
    Solid()
    {
        addForms(kHead, true);
        addForms(kBody, false);
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

    static constexpr glm::vec3 kHeadPosition{0.0F, 0.12F, 0.0F};

    void addForms(std::span<const Form> forms, bool inHead)
    {
        for (Form form : forms) {
            forms_.push_back(
                {form, glm::transpose(turned(form.turn.x, 0.0F, form.turn.y)), inHead});
            if (form.centre.x != 0.0F) {
                form.centre.x = -form.centre.x;
                form.coat.groom.x = -form.coat.groom.x;
                form.turn.y = -form.turn.y;
                forms_.push_back(
                    {form, glm::transpose(turned(form.turn.x, 0.0F, form.turn.y)), inHead});
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

    // The coat's markings: a blaze from the crown to the muzzle, dark eyelids, a spot on each brow.
    static glm::vec3 marked(glm::vec3 coat, glm::vec3 head)
    {
        const float blaze = 0.05F + 0.08F * softStep(0.25F, -0.05F, head.y) +
                            0.05F * softStep(0.35F, 0.65F, head.z);
        const float aside = std::fabs(head.x);
        coat = glm::mix(coat, kCream,
                        softStep(blaze + 0.05F, blaze - 0.02F, aside) *
                            softStep(0.05F, 0.15F, head.z));
        const glm::vec3 folded(aside, head.y, head.z);
        const glm::vec3 fromEye = (folded - kEye) * glm::vec3(1.0F, 1.2F, 0.8F);
        coat = glm::mix(coat, kDark, 0.6F * softStep(0.21F, 0.13F, glm::length(fromEye)));
        const glm::vec3 fromSpot = (folded - kBrowSpot) * glm::vec3(1.0F, 1.3F, 0.7F);
        return glm::mix(coat, kCream, 0.4F * softStep(0.15F, 0.03F, glm::length(fromSpot)));
    }

    std::vector<Placed> forms_;
    glm::mat3 headAxes_ = turned(0.0F, kHeadTurn, -kHeadTilt);
};

} // namespace dog
