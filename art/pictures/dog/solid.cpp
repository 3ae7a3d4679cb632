#include "art/pictures/dog/solid.h"

#include "art/pictures/kit/arithmetic.h"

#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/matrix.hpp>

namespace dog {

namespace {

constexpr glm::vec3 kHeadPosition{0.0F, 0.11F, 0.0F};

// About x, then y, then z.
glm::mat3 turned(glm::vec3 turn)
{
    const float pitch = turn.x;
    const float yaw = turn.y;
    const float roll = turn.z;
    const glm::mat3 aboutX{1, 0, 0, 0, cosine(pitch), sine(pitch), 0, -sine(pitch), cosine(pitch)};
    const glm::mat3 aboutY{cosine(yaw), 0, -sine(yaw), 0, 1, 0, sine(yaw), 0, cosine(yaw)};
    const glm::mat3 aboutZ{cosine(roll), sine(roll), 0, -sine(roll), cosine(roll), 0, 0, 0, 1};
    return aboutZ * aboutY * aboutX;
}

Form mirrored(Form form)
{
    form.centre.x = -form.centre.x;
    form.coat.groom.x = -form.coat.groom.x;
    form.turn.y = -form.turn.y;
    form.turn.z = -form.turn.z;
    return form;
}

// How much lies where two surfaces melt into each other: their distances differ by less than
// `melt`.
float molten(float one, float other, float melt)
{
    const float overlap = glm::max(melt - std::fabs(one - other), 0.0F) / melt;
    return overlap * overlap * melt / 4.0F;
}

} // namespace

Solid::Solid()
    : forms_(withMirrorImages(headForms(), true)), hollows_(withMirrorImages(headHollows(), true)),
      headAxes_(turned({kHeadBow, kHeadTurn, -kHeadTilt}))
{
    for (const Form& ear : earForms()) {
        forms_.push_back(placed(ear, true));
    }
    const std::vector<Placed> body = withMirrorImages(bodyForms(), false);
    forms_.insert(forms_.end(), body.begin(), body.end());
}

Solid::Placed Solid::placed(const Form& form, bool inHead)
{
    return {form, glm::transpose(turned(form.turn)), inHead};
}

std::vector<Solid::Placed> Solid::withMirrorImages(std::span<const Form> forms, bool inHead)
{
    std::vector<Placed> all;
    for (const Form& form : forms) {
        all.push_back(placed(form, inHead));
        if (form.centre.x != 0.0F) {
            all.push_back(placed(mirrored(form), inHead));
        }
    }
    return all;
}

// Close to an ellipsoid's distance near its surface, too small far away.
float Solid::distanceTo(const Placed& placed, const Place& place)
{
    const Form& form = placed.form;
    const glm::vec3 from =
        placed.toForm * ((placed.inHead ? place.head : place.body) - form.centre);
    const float reach = glm::length(from / form.radii);
    const float slope = glm::length(from / (form.radii * form.radii));
    return reach * (reach - 1.0F) / glm::max(slope, 0.001F);
}

float Solid::distance(glm::vec3 position) const
{
    const Place place = placeOf(position);
    float nearest = 10.0F;
    for (const Placed& placed : forms_) {
        const float next = distanceTo(placed, place);
        nearest = glm::min(nearest, next) - molten(nearest, next, placed.form.melt);
    }
    for (const Placed& placed : hollows_) {
        const float outside = -distanceTo(placed, place);
        nearest = glm::max(nearest, outside) + molten(nearest, outside, placed.form.melt);
    }
    return nearest;
}

glm::vec3 Solid::normal(glm::vec3 position) const
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

float Solid::openness(glm::vec3 position, glm::vec3 normal) const
{
    float closed = 0.0F;
    for (int i = 1; i <= 4; ++i) {
        const float away = 0.07F * static_cast<float>(i);
        closed += glm::max(0.0F, away - distance(position + normal * away)) / away;
    }
    return glm::clamp(1.05F - 0.36F * closed, 0.0F, 1.0F);
}

float Solid::seenFrom(glm::vec3 position, glm::vec3 toLight) const
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

Coat Solid::coat(glm::vec3 position, glm::vec3 normal) const
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
    return {along > 0.001F * weights ? sum.groom / along : glm::vec3(0.0F), sum.length / weights,
            marked(sum.colour / weights, place.head), sum.bare / weights};
}

glm::vec3 Solid::fromHead(glm::vec3 position) const
{
    return headAxes_ * position + kHeadPosition;
}

glm::vec3 Solid::toHead(glm::vec3 position) const
{
    return glm::transpose(headAxes_) * (position - kHeadPosition);
}

} // namespace dog
