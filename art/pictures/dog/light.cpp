#include "art/pictures/dog/light.h"

#include "art/pictures/kit/arithmetic.h"

#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/gtc/noise.hpp>

namespace dog {

namespace {

const glm::vec3 kFillLight = glm::normalize(glm::vec3(0.55F, -0.10F, 0.80F));
const glm::vec3 kRimLight = glm::normalize(glm::vec3(0.90F, 0.22F, -0.36F));
const glm::vec3 kLampLight = glm::normalize(glm::vec3(-0.66F, 0.55F, -0.50F));
const glm::vec3 kRimColour = colour(0xffa24c);
constexpr glm::vec3 kShade{1.0F, 0.70F, 0.45F}; // what shadows keep of the light

} // namespace

glm::vec3 lightOnFur(const Surface& surface, glm::vec3 normal, glm::vec3 hair, glm::vec3 coat)
{
    const glm::vec3 toViewer = glm::normalize(kViewer - surface.place);
    const float facing = glm::dot(normal, kKeyLight);
    const float key = glm::max(0.0F, (facing + 0.2F) / 1.2F) * (0.45F + 0.55F * surface.keyLight);
    const float fill = glm::max(0.0F, glm::dot(normal, kFillLight));
    const float along = glm::dot(hair, glm::normalize(kKeyLight + toViewer));
    const float sheen = power(1.0F - along * along, 10.0F) * glm::max(0.0F, facing + 0.1F) *
                        (0.2F + 0.8F * surface.keyLight);
    const float edge = power(1.0F - glm::max(0.0F, glm::dot(surface.normal, toViewer)), 2.4F);
    const float rim = edge * (0.7F * glm::max(0.0F, glm::dot(normal, kRimLight) + 0.25F) +
                              0.5F * glm::max(0.0F, glm::dot(normal, kLampLight) + 0.15F));
    const float falloff = softStep(-0.95F, -0.50F, surface.place.y) * 0.5F + 0.5F;
    const float matte = 0.08F + 1.26F * key * (0.3F + 0.7F * key) + 0.62F * fill;
    const float open = 0.25F + 0.75F * surface.openness;
    const glm::vec3 light = falloff * (open * (coat * matte + kKeyColour * 0.16F * sheen) +
                                       kRimColour * surface.openness * 2.4F * rim);
    return light * glm::mix(kShade, glm::vec3(1.0F), softStep(0.05F, 0.8F, brightest(light)));
}

glm::vec3 lightOnForm(const Surface& surface)
{
    return lightOnFur(surface, surface.normal, kRimLight, glm::vec3(0.6F));
}

glm::vec3 lightOnNose(const Surface& surface, glm::vec3 head)
{
    const glm::vec3 grain(glm::perlin(head * 38.0F), glm::perlin(head * 38.0F + 9.0F), 0.0F);
    const glm::vec3 normal = glm::normalize(surface.normal + 0.06F * grain);
    const glm::vec3 halfway = glm::normalize(kKeyLight + glm::normalize(kViewer - surface.place));
    const float wet = power(glm::max(0.0F, glm::dot(normal, halfway)), 70.0F);
    const float sky = glm::max(0.0F, normal.y);
    return kLeather + kKeyColour * (1.1F * wet + 0.05F * sky * sky);
}

} // namespace dog
