#include "art/pictures/dog/view.h"

namespace dog {

namespace {

constexpr glm::vec2 kMiddle{288.0F, 116.0F}; // of the view, on the picture
constexpr float kFarthest = 9.0F;

// Follows the ray from the viewer through a place on the picture until it meets the solid.
Surface look(const Solid& solid, glm::vec2 place)
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

} // namespace

glm::vec2 onPicture(glm::vec3 place)
{
    const glm::vec3 from = place - kViewer;
    return kMiddle + glm::vec2(from.x, -from.y) * (kScale * kViewer.z / -from.z);
}

View::View()
{
    surfaces_.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFiner);
        return look(solid_, place);
    });
}

const Surface& View::at(glm::vec2 place) const
{
    const glm::ivec2 pixel(place * static_cast<float>(kFiner));
    return surfaces_.wrapped(pixel.x, pixel.y);
}

glm::vec2 View::onFace(glm::vec3 head) const
{
    return onPicture(solid_.fromHead(head));
}

} // namespace dog
