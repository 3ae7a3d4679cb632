// The dog as one solid, in the space that forms.h describes.
#pragma once

#include "art/pictures/dog/forms.h"

#include <glm/mat3x3.hpp>
#include <glm/vec3.hpp>
#include <span>
#include <vector>

namespace dog {

class Solid {
public:
    Solid();

    // Distance from the surface, negative inside; too small far away.
    [[nodiscard]] float distance(glm::vec3 position) const;

    // The direction that the surface faces, of unit length.
    [[nodiscard]] glm::vec3 normal(glm::vec3 position) const;

    // How open the surface lies to the air, 0 in a deep crease to 1.
    [[nodiscard]] float openness(glm::vec3 position, glm::vec3 normal) const;

    // How much of a far light's disc is seen from a place on the surface, 0 to 1.
    [[nodiscard]] float seenFrom(glm::vec3 position, glm::vec3 toLight) const;

    // What grows at a place on the surface. Its groom lies along the surface and has unit length;
    // it is zero where hairs stand upright.
    [[nodiscard]] Coat coat(glm::vec3 position, glm::vec3 normal) const;

    // From the head's space to the body's, and back.
    [[nodiscard]] glm::vec3 fromHead(glm::vec3 position) const;
    [[nodiscard]] glm::vec3 toHead(glm::vec3 position) const;

private:
    struct Placed {
        Form form;
        glm::mat3 toForm;
        bool inHead;
    };

    // One place in both spaces.
    struct Place {
        glm::vec3 body;
        glm::vec3 head;
    };

    static Placed placed(const Form& form, bool inHead);
    static std::vector<Placed> withMirrorImages(std::span<const Form> forms, bool inHead);
    static float distanceTo(const Placed& placed, const Place& place);
    [[nodiscard]] Place placeOf(glm::vec3 position) const { return {position, toHead(position)}; }

    std::vector<Placed> forms_;
    std::vector<Placed> hollows_;
    glm::mat3 headAxes_;
};

} // namespace dog
