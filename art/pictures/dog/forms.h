// What the dog is made of: rounded forms that melt into one another, each with the coat that grows
// on it.
//
// Space: x to the viewer's right, y up, z toward the viewer; half a head is about 0.6 wide. The
// head's forms stand in a space of their own, which is turned and tilted against the body's.
#pragma once

#include "art/pictures/kit/lighting.h"

#include <glm/vec3.hpp>
#include <span>

namespace dog {

inline const glm::vec3 kCream = colour(0xd29a58);
inline const glm::vec3 kGrey = colour(0xdfc192); // what has gone grey with age
inline const glm::vec3 kTan = colour(0xac6428);
inline const glm::vec3 kRust = colour(0x6c3c14);
inline const glm::vec3 kLeather = colour(0x190b06);

inline constexpr float kHeadTurn = -0.17F; // radians, toward the light on the viewer's left
inline constexpr float kHeadTilt = 0.12F;  // radians, clockwise
inline constexpr float kHeadBow = 0.03F;   // radians, the nose down

// Places in the head's space; of what there are two of, the one on the viewer's right.
inline constexpr glm::vec3 kMuzzle{0.0F, -0.34F, 0.72F}; // deep inside it
inline constexpr glm::vec3 kNoseTip{0.0F, -0.14F, 1.07F};
inline constexpr glm::vec3 kEye{0.245F, 0.12F, 0.42F};

// Stands for a groom that leads away from kMuzzle, as fur on the face grows.
inline constexpr glm::vec3 kFromMuzzle{0.0F, 0.0F, 0.0F};

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

std::span<const Form> headForms();
std::span<const Form> bodyForms();

// Both ears, in the head's space: no dog carries them alike.
std::span<const Form> earForms();

// What is pressed into the head; nothing grows on these.
std::span<const Form> headHollows();

// The colour of a coat with its markings: a dark crown, a blaze that widens over the muzzle and has
// gone grey, grey spots over and under the eyes, dark eyelids. `head` is a place in the head's
// space.
glm::vec3 marked(glm::vec3 coat, glm::vec3 head);

} // namespace dog
