#include "art/pictures/dog/forms.h"

#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace dog {

namespace {

// clang-format off
const auto kHead = std::to_array<Form>({
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
const auto kBody = std::to_array<Form>({
    // Neck, the collar's sides, chest, shoulder.
    {{0.00, -0.58, -0.50}, {0.56, 0.72, 0.46}, {0.00,  0.00,  0.00}, 0.20F, {{0, -1, 0.1}, 28, kTan}},
    {{0.46, -0.86, -0.42}, {0.34, 0.52, 0.36}, {0.00,  0.00,  0.25}, 0.16F, {{0.7, -1, 0.1}, 36, kTan}},
    {{0.00, -1.04,  0.00}, {0.56, 0.60, 0.48}, {0.00,  0.00,  0.00}, 0.18F, {{0, -1, 0.25}, 38, kCream}},
    {{0.76, -1.47, -0.62}, {0.48, 0.66, 0.50}, {0.00,  0.00,  0.30}, 0.20F, {{0.5, -1, 0}, 30, kRust}},
});
// The eyes' sockets, the folds at the ears' roots, the brow's furrow.
const auto kHollows = std::to_array<Form>({
    {{0.26,  0.11,  0.49}, {0.11, 0.06, 0.06}, {0.00,  0.30, -0.20}, 0.08F, {}},
    {{0.53,  0.22,  0.04}, {0.035, 0.20, 0.12}, {0.00,  0.00,  0.25}, 0.05F, {}},
    {{0.00,  0.38,  0.42}, {0.020, 0.15, 0.035}, {-0.5,  0.00,  0.00}, 0.08F, {}},
});
// clang-format on

constexpr glm::vec3 kBrowSpot{0.20F, 0.36F, 0.42F};
constexpr glm::vec3 kUnderEye{0.30F, 0.0F, 0.40F};
const glm::vec3 kLitEdge = colour(0xe8944a);

// The crown and the blaze, which run down the middle. `aside` is the distance from it.
glm::vec3 markedInTheMiddle(glm::vec3 coat, glm::vec3 head, float aside)
{
    const float crown = softStep(0.28F, 0.55F, head.y);
    coat = glm::mix(coat, 0.5F * kRust, 0.9F * crown);
    const float blaze =
        0.05F + 0.08F * softStep(0.25F, -0.05F, head.y) + 0.05F * softStep(0.35F, 0.65F, head.z);
    return glm::mix(coat, kCream,
                    (1.0F - 0.4F * crown) * softStep(blaze + 0.04F, blaze - 0.02F, aside) *
                        softStep(0.05F, 0.15F, head.z));
}

// The spots over and under an eye, and its lids. `folded` is the place, or its mirror image, on the
// viewer's right.
glm::vec3 markedAroundTheEye(glm::vec3 coat, glm::vec3 folded)
{
    const glm::vec3 fromSpot = (folded - kBrowSpot) * glm::vec3(1.0F, 1.6F, 0.7F);
    coat = glm::mix(coat, kCream, 0.45F * softStep(0.17F, 0.06F, glm::length(fromSpot)));
    const glm::vec3 fromLid = (folded - kUnderEye) * glm::vec3(1.0F, 1.6F, 0.6F);
    coat = glm::mix(coat, kCream, 0.5F * softStep(0.20F, 0.10F, glm::length(fromLid)));
    const glm::vec3 fromEye = (folded - kEye) * glm::vec3(1.0F, 1.7F, 0.6F);
    return glm::mix(coat, 0.3F * kRust, softStep(0.16F, 0.12F, glm::length(fromEye)));
}

} // namespace

std::span<const Form> headForms()
{
    return kHead;
}

std::span<const Form> bodyForms()
{
    return kBody;
}

std::span<const Form> headHollows()
{
    return kHollows;
}

glm::vec3 marked(glm::vec3 coat, glm::vec3 head)
{
    const float aside = std::fabs(head.x);
    coat = markedInTheMiddle(coat, head, aside);
    coat = markedAroundTheEye(coat, glm::vec3(aside, head.y, head.z));
    // The ears' front edges, which catch light.
    const float behindEdge = aside - 0.55F - 0.25F * (0.33F - head.y);
    return glm::mix(coat, kLitEdge,
                    0.8F * softStep(0.07F, 0.03F, behindEdge) *
                        softStep(-0.06F, -0.02F, behindEdge) * softStep(0.32F, 0.26F, head.y));
}

} // namespace dog
