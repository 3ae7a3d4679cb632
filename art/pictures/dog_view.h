#pragma once

#include "art/pictures/dog_form.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"

#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/gtc/noise.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

// What the viewer sees of the dog's solid, and how light falls on it: a warm key from the upper
// left, a rim from behind on the right, and little between.
namespace dog {

inline constexpr float kScale = 149.0F; // pixels to a unit, at z = 0
inline constexpr glm::vec2 kMiddle{271.0F, 109.5F};
inline constexpr glm::vec3 kViewer{0.0F, 0.1F, 6.5F};
inline constexpr float kFarthest = 9.0F;

inline const glm::vec3 kKeyLight = glm::normalize(glm::vec3(-0.58F, 0.62F, 0.58F));
inline const glm::vec3 kFillLight = glm::normalize(glm::vec3(0.55F, -0.10F, 0.80F));
inline const glm::vec3 kRimLight = glm::normalize(glm::vec3(0.90F, 0.22F, -0.36F));
inline const glm::vec3 kKeyColour = colour(0xffe8c4);
inline const glm::vec3 kShade{1.0F, 0.70F, 0.45F}; // what shadows keep of the light
inline const glm::vec3 kRimColour = colour(0xffa24c);

struct Surface {
    bool hit = false;
    glm::vec3 place{0.0F};
    glm::vec3 normal{0.0F};
    float openness = 1.0F;
    float keyLight = 1.0F; // how much of the key light comes here
    Coat coat;
};

inline glm::vec2 onPicture(glm::vec3 place)
{
    const glm::vec3 from = place - kViewer;
    return kMiddle + glm::vec2(from.x, -from.y) * (kScale * kViewer.z / -from.z);
}

inline Surface look(const Solid& solid, glm::vec2 place)
{
    const glm::vec2 aside = (place - kMiddle) / kScale;
    const glm::vec3 direction = glm::normalize(glm::vec3(aside.x, -aside.y, -kViewer.z));
    Surface surface;
    for (float way = kViewer.z - 2.0F; way < kFarthest && !surface.hit;) {
        surface.place = kViewer + direction * way;
        const float room = solid.distance(surface.place);
        surface.hit = room < 0.002F;
        way += 0.8F * room;
    }
    if (surface.hit) {
        surface.normal = solid.normal(surface.place);
        surface.openness = solid.openness(surface.place, surface.normal);
        surface.keyLight = solid.seenFrom(surface.place + 0.02F * surface.normal, kKeyLight);
        surface.coat = solid.coat(surface.place, surface.normal);
    }
    return surface;
}

// The light that fur sends to the viewer; hairs shine across their direction, like thin cylinders.
inline glm::vec3 lightOnFur(const Surface& surface, glm::vec3 normal, glm::vec3 hair,
                            glm::vec3 coat)
{
    const glm::vec3 toViewer = glm::normalize(kViewer - surface.place);
    const float facing = glm::dot(normal, kKeyLight);
    const float key = glm::max(0.0F, (facing + 0.2F) / 1.2F) * (0.45F + 0.55F * surface.keyLight);
    const float fill = glm::max(0.0F, glm::dot(normal, kFillLight));
    const float along = glm::dot(hair, glm::normalize(kKeyLight + toViewer));
    const float sheen = power(1.0F - along * along, 10.0F) * glm::max(0.0F, facing + 0.1F) *
                        (0.2F + 0.8F * surface.keyLight);
    const float edge = power(1.0F - glm::max(0.0F, glm::dot(surface.normal, toViewer)), 2.4F);
    const float rim = edge * glm::max(0.0F, glm::dot(normal, kRimLight) + 0.25F);
    const float falloff = softStep(-1.0F, -0.3F, surface.place.y) * 0.25F + 0.75F;
    const float matte = 0.08F + 1.36F * key * (0.4F + 0.6F * key) + 0.66F * fill;
    const float open = 0.25F + 0.75F * surface.openness;
    const glm::vec3 light = falloff * (open * (coat * matte + kKeyColour * 0.16F * sheen) +
                                       kRimColour * surface.openness * 2.4F * rim);
    return light * glm::mix(kShade, glm::vec3(1.0F), softStep(0.05F, 0.8F, brightest(light)));
}

// The leather of the nose: grained and wet.
inline glm::vec3 lightOnNose(const Surface& surface, glm::vec3 head)
{
    const glm::vec3 grain(glm::perlin(head * 38.0F), glm::perlin(head * 38.0F + 9.0F), 0.0F);
    const glm::vec3 normal = glm::normalize(surface.normal + 0.08F * grain);
    const glm::vec3 halfway = glm::normalize(kKeyLight + glm::normalize(kViewer - surface.place));
    const float wet = power(glm::max(0.0F, glm::dot(normal, halfway)), 36.0F);
    const float sky = glm::max(0.0F, normal.y);
    return kLeather + kKeyColour * (1.1F * wet + 0.10F * sky * sky);
}

} // namespace dog
