#include "art/pictures/dog/forms.h"

#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace dog {

namespace {

const glm::vec3 kFawn = colour(0xb8905c); // between tan and grey

// clang-format off
const auto kHead = std::to_array<Form>({
    // Skull, forehead, brow, cheekbone, the cheek's longer fur.
    {{0.00,  0.17, -0.14}, {0.40, 0.39, 0.50}, {0.00,  0.00,  0.00}, 0.10F, {kFromMuzzle, 13, kTan}},
    {{0.11,  0.29,  0.16}, {0.19, 0.15, 0.20}, {0.00,  0.00,  0.00}, 0.14F, {kFromMuzzle, 10, kTan}},
    {{0.20,  0.25,  0.34}, {0.15, 0.07, 0.075}, {0.00,  0.00, -0.40}, 0.14F, {{0.35, 1, -0.6}, 11, kTan}},
    {{0.28, -0.05,  0.06}, {0.24, 0.28, 0.36}, {0.00,  0.00,  0.00}, 0.14F, {{0.8, -0.45, -0.5}, 15, kTan}},
    {{0.33, -0.24, -0.08}, {0.20, 0.30, 0.28}, {0.00,  0.00,  0.30}, 0.14F, {{0.8, -0.85, -0.1}, 32, kTan}},
    // The muzzle's bridge, its flanks and its end.
    {{0.00,  0.00,  0.50}, {0.145, 0.15, 0.46}, {0.18,  0.00,  0.00}, 0.14F, {kFromMuzzle, 8, kFawn}},
    {{0.09, -0.13,  0.62}, {0.13, 0.17, 0.36}, {0.00,  0.00,  0.00}, 0.12F, {kFromMuzzle, 8, kFawn}},
    {{0.00, -0.17,  0.86}, {0.18, 0.14, 0.18}, {0.00,  0.00,  0.00}, 0.08F, {kFromMuzzle, 5, kGrey}},
    // The upper lip, which hangs, in front and behind; lower jaw, chin.
    {{0.11, -0.29,  0.76}, {0.135, 0.19, 0.23}, {0.00,  0.00, -0.10}, 0.06F, {{0.5, -0.7, -0.5}, 8, kGrey}},
    {{0.165, -0.31, 0.54}, {0.11, 0.20, 0.27}, {0.00,  0.00,  0.05}, 0.10F, {{0.5, -0.8, -0.5}, 10, kGrey}},
    {{0.00, -0.47,  0.52}, {0.16, 0.11, 0.32}, {0.10,  0.00,  0.00}, 0.03F, {{0, -0.8, -0.5}, 14, kGrey}},
    {{0.00, -0.49,  0.72}, {0.11, 0.08, 0.12}, {0.00,  0.00,  0.00}, 0.05F, {{0, -1, -0.2}, 16, kGrey}},
    // The nose, and what hangs from it to the lip.
    {{0.00, -0.13,  1.02}, {0.112, 0.082, 0.09}, {0.00, 0.00, 0.00}, 0.03F, {kFromMuzzle, 0, kLeather}},
    {{0.00, -0.21,  1.00}, {0.055, 0.09, 0.07}, {0.00, 0.00,  0.00}, 0.06F, {kFromMuzzle, 0, kLeather}},
});
// Of each ear its root, its flap and its tip: the one before the lamp hangs close, the other one
// stands off and is longer.
const auto kEars = std::to_array<Form>({
    {{-0.42, 0.10, -0.12}, {0.16, 0.12, 0.15}, {0.00,  0.00,  0.60}, 0.08F, {{-0.7, -0.7, 0}, 14, 0.5F * kRust}},
    {{-0.54, -0.12, -0.05}, {0.15, 0.30, 0.085}, {0.00, -0.30, -0.16}, 0.09F, {{-0.2, -1, 0.1}, 26, 0.5F * kRust}},
    {{-0.58, -0.33, -0.03}, {0.16, 0.20, 0.07}, {0.00, -0.30,  0.05}, 0.09F, {{0.02, -1, 0.1}, 34, 0.5F * kRust}},
    {{0.43,  0.13, -0.12}, {0.18, 0.11, 0.15}, {0.00,  0.00, -0.35}, 0.08F, {{0.8, -0.6, 0}, 14, 0.7F * kRust}},
    {{0.60, -0.10, -0.06}, {0.15, 0.30, 0.085}, {0.00,  0.35,  0.40}, 0.09F, {{0.3, -1, 0.1}, 26, 0.7F * kRust}},
    {{0.69, -0.34, -0.04}, {0.16, 0.22, 0.07}, {0.00,  0.30,  0.15}, 0.09F, {{0.0, -1, 0.1}, 38, 0.7F * kRust}},
});
const auto kBody = std::to_array<Form>({
    // Neck, the collar's sides, chest, shoulder.
    {{0.00, -0.58, -0.50}, {0.56, 0.72, 0.46}, {0.00,  0.00,  0.00}, 0.20F, {{0, -1, 0.1}, 28, 0.45F * kTan}},
    {{0.36, -0.86, -0.42}, {0.34, 0.52, 0.36}, {0.00,  0.00,  0.25}, 0.16F, {{0.5, -1, 0.1}, 36, 0.45F * kTan}},
    {{0.00, -1.04,  0.00}, {0.56, 0.60, 0.48}, {0.00,  0.00,  0.00}, 0.18F, {{0, -1, 0.25}, 38, 0.5F * kCream}},
    {{0.76, -1.47, -0.62}, {0.48, 0.66, 0.50}, {0.00,  0.00,  0.30}, 0.20F, {{0.5, -1, 0}, 30, 0.5F * kRust}},
});
// The eyes' sockets, the folds at the ears' roots, the brow's furrow; between the lips, and under
// them: the mouth is nothing but where fur meets fur.
const auto kHollows = std::to_array<Form>({
    {{0.25,  0.11,  0.46}, {0.12, 0.055, 0.05}, {0.00,  0.30, -0.20}, 0.10F, {}},
    {{0.45,  0.02,  0.06}, {0.035, 0.20, 0.12}, {0.00,  0.00,  0.25}, 0.05F, {}},
    {{0.00,  0.36,  0.40}, {0.020, 0.15, 0.045}, {-0.5,  0.00,  0.00}, 0.08F, {}},
    {{0.00, -0.36,  0.98}, {0.014, 0.10, 0.09}, {0.00,  0.00,  0.00}, 0.05F, {}},
    {{0.13, -0.50,  0.78}, {0.11, 0.014, 0.16}, {0.00,  0.00,  0.10}, 0.03F, {}},
});
// clang-format on

constexpr glm::vec3 kBrowSpot{0.17F, 0.28F, 0.42F};
constexpr glm::vec3 kUnderEye{0.28F, -0.03F, 0.42F};

// The crown and the blaze, which run down the middle. `aside` is the distance from it.
glm::vec3 markedInTheMiddle(glm::vec3 coat, glm::vec3 head, float aside)
{
    const float crown = softStep(0.28F, 0.55F, head.y);
    coat = glm::mix(coat, 0.5F * kRust, 0.9F * crown);
    const float blaze =
        0.05F + 0.03F * softStep(0.25F, -0.05F, head.y) + 0.10F * softStep(0.35F, 0.75F, head.z);
    coat = glm::mix(coat, kGrey,
                    (0.85F - 0.2F * crown) * softStep(blaze + 0.07F, blaze - 0.03F, aside) *
                        softStep(0.05F, 0.15F, head.z));
    // The nose's bridge, which the light strikes straight, is darker.
    const float bridge = softStep(0.20F, 0.45F, head.z) * softStep(0.98F, 0.80F, head.z) *
                         softStep(-0.18F, -0.02F, head.y) * softStep(0.28F, 0.12F, aside);
    return coat * (1.0F - 0.4F * bridge);
}

// The spots over and under an eye, and its lids. `folded` is the place, or its mirror image, on the
// viewer's right.
glm::vec3 markedAroundTheEye(glm::vec3 coat, glm::vec3 folded)
{
    const glm::vec3 fromSpot = (folded - kBrowSpot) * glm::vec3(1.0F, 1.6F, 0.7F);
    coat = glm::mix(coat, kGrey, 0.75F * softStep(0.19F, 0.09F, glm::length(fromSpot)));
    const glm::vec3 fromLid = (folded - kUnderEye) * glm::vec3(1.0F, 1.6F, 0.6F);
    coat = glm::mix(coat, kGrey, 0.85F * softStep(0.21F, 0.10F, glm::length(fromLid)));
    const glm::vec3 fromEye = (folded - kEye) * glm::vec3(1.0F, 1.7F, 0.6F);
    return glm::mix(coat, 0.25F * kRust, softStep(0.14F, 0.105F, glm::length(fromEye)));
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

std::span<const Form> earForms()
{
    return kEars;
}

std::span<const Form> headHollows()
{
    return kHollows;
}

glm::vec3 marked(glm::vec3 coat, glm::vec3 head)
{
    const float aside = std::fabs(head.x);
    coat = markedInTheMiddle(coat, head, aside);
    return markedAroundTheEye(coat, glm::vec3(aside, head.y, head.z));
}

} // namespace dog
