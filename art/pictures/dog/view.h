// What the viewer sees of the dog: for each pixel of the picture the place on the solid behind it.
#pragma once

#include "art/pictures/dog/forms.h"
#include "art/pictures/dog/solid.h"
#include "art/pictures/kit/picture.h"

#include <glm/geometric.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace dog {

inline constexpr int kWidth = 512;
inline constexpr int kHeight = 256;
inline constexpr int kFiner = 2; // the finished picture is this much larger, and so is the view

inline constexpr float kScale = 172.0F; // pixels to a unit, at z = 0
inline constexpr glm::vec3 kViewer{0.0F, 0.1F, 6.5F};
inline const glm::vec3 kKeyLight = glm::normalize(glm::vec3(-0.58F, 0.62F, 0.58F)); // toward it

struct Surface {
    bool hit = false; // what follows holds only where the dog is seen
    glm::vec3 place{0.0F};
    glm::vec3 normal{0.0F};
    float openness = 1.0F;
    float keyLight = 1.0F; // how much of the key light comes here
    Coat coat;
};

// Where on the picture a place is seen, in its pixels.
glm::vec2 onPicture(glm::vec3 place);

class View {
public:
    View();

    [[nodiscard]] const Solid& solid() const { return solid_; }

    // Of the picture drawn kFiner times as large.
    [[nodiscard]] const Raster<Surface>& surfaces() const { return surfaces_; }

    // Behind a place in the picture's pixels.
    [[nodiscard]] const Surface& at(glm::vec2 place) const;

    // Where on the picture a place in the head's space is seen.
    [[nodiscard]] glm::vec2 onFace(glm::vec3 head) const;

private:
    Solid solid_;
    Raster<Surface> surfaces_{kWidth * kFiner, kHeight* kFiner, Surface()};
};

} // namespace dog
