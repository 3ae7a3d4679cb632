#include "art/pictures/dog/fur.h"

#include "art/pictures/dog/light.h"
#include "art/pictures/dog/lock.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <vector>

namespace dog {

namespace {

constexpr int kRoots = 260000; // scattered over the picture; less than half fall on the dog
constexpr int kJoints = 6;     // of a hair
constexpr unsigned kSeed = 1957;

// Hairs close up into locks, and locks stand in tufts; sizes are in units of the dog's space.
constexpr float kTuft = 0.22F;
constexpr float kLongLock = 0.13F;
constexpr float kLock = 0.10F;
constexpr float kShortLock = 0.06F;

float lockSize(const Coat& coat)
{
    if (coat.length > 24.0F) {
        return kLongLock;
    }
    return coat.length > 14.0F ? kLock : kShortLock;
}

// How shaggy a coat is: 0 sleek to 1.4.
float shagOf(const Coat& coat)
{
    return glm::clamp((coat.length - 4.0F) / 18.0F, 0.0F, 1.4F);
}

glm::vec2 anywhere(Random& random)
{
    const float y = random.next() * kHeight;
    return {random.next() * kWidth, y};
}

// How near a place lies to the dog's outline: 0 to 1. There the fur is long, fine and stands off;
// within, fine lines would be lost among those of the ground, and locks are broad and calm.
float edgeAt(const Surface& surface)
{
    const float facing = glm::dot(surface.normal, glm::normalize(kViewer - surface.place));
    return softStep(0.55F, 0.15F, facing);
}

// How much there is of the fur at a place: the crown dissolves into the dark.
float presenceAt(const View& view, const Surface& surface)
{
    const glm::vec3 head = view.solid().toHead(surface.place);
    const float aside = glm::min(0.36F, glm::abs(head.x));
    return softStep(0.58F, 0.30F, head.y + 1.1F * aside * aside);
}

// Where a hair grows.
struct Root {
    glm::vec2 place; // on the picture
    Lock lock;
    float lockSize;
    float fromNose;
};

bool growsHair(const Surface& surface)
{
    const Coat& coat = surface.coat;
    return surface.hit && coat.groom != glm::vec3(0.0F) && coat.bare <= 0.3F;
}

// The roots of all hairs, the farthest from the nose first. Whole locks lie over those behind them.
std::vector<Root> scatterRoots(const View& view, Random& random)
{
    std::vector<Root> roots;
    for (int i = 0; i < kRoots; ++i) {
        const glm::vec2 place = anywhere(random);
        const Surface& surface = view.at(place);
        if (growsHair(surface)) {
            const float size = lockSize(surface.coat);
            const Lock lock = lockAt(surface.place, size, 1);
            const float fromNose = glm::length(view.solid().toHead(lock.middle) - kNoseTip);
            roots.push_back({place, lock, size, fromNose + random.between(0.0F, 0.03F)});
        }
    }
    std::stable_sort(roots.begin(), roots.end(),
                     [](const Root& a, const Root& b) { return a.fromNose > b.fromNose; });
    return roots;
}

// A hair, as one of its lock and of the tuft that the lock stands in.
struct Hair {
    const Root& root;
    const Surface& surface;
    Lock tuft;
    float shag;
    float edge;
    glm::vec3 aside; // along the surface, across the hair
    float offMiddle; // how far aside of its lock's middle it grows
    float across;    // the same as a share of the lock: -1 to 1
};

Hair hairAt(const Root& root, const Surface& surface)
{
    const glm::vec3 aside = glm::cross(surface.normal, surface.coat.groom);
    const float offMiddle = glm::dot(surface.place - root.lock.middle, aside);
    return {.root = root,
            .surface = surface,
            .tuft = lockAt(surface.place, kTuft, 2),
            .shag = shagOf(surface.coat),
            .edge = edgeAt(surface),
            .aside = aside,
            .offMiddle = offMiddle,
            .across = glm::clamp(2.0F * offMiddle / root.lockSize, -1.0F, 1.0F)};
}

// The direction in which a hair sets out: it leans with its lock and with its tuft.
glm::vec3 headingOf(const Hair& hair, Random& random)
{
    const float tuftLean = unit(hair.tuft.number << 5U) - 0.5F;
    const float lockLean = unit(hair.root.lock.number << 5U) - 0.5F;
    const float lean = hair.shag * (0.9F * tuftLean + 0.7F * lockLean) +
                       (1.0F + 3.0F * hair.edge) * random.between(-0.12F, 0.12F);
    return glm::normalize(hair.surface.coat.groom + hair.aside * lean +
                          hair.surface.normal * (0.05F + 0.16F * hair.shag + 0.35F * hair.edge));
}

// The direction that a hair's side faces: locks are round, and so are tufts.
glm::vec3 normalOf(const Hair& hair)
{
    const float acrossTuft = glm::clamp(
        2.0F * glm::dot(hair.surface.place - hair.tuft.middle, hair.aside) / kTuft, -1.0F, 1.0F);
    return glm::normalize(
        hair.surface.normal +
        hair.aside * ((0.25F + 0.6F * hair.shag) * hair.across + 0.3F * hair.shag * acrossTuft));
}

// A hair's joints on the picture: it closes in on the middle of its lock, sinks and curls.
std::vector<glm::vec2> jointsOf(const Hair& hair, glm::vec3 heading, Random& random)
{
    const Surface& surface = hair.surface;
    const std::uint32_t number = hair.root.lock.number;
    const float ownLength = surface.coat.length * (1.0F + 0.6F * hair.edge) *
                            random.between(0.65F, 1.2F) * (0.75F + 0.5F * unit(number << 9U));
    const float step = ownLength / kScale / static_cast<float>(kJoints - 1);
    const float curl = 0.5F * hair.shag * (unit(number << 13U) - 0.5F);
    std::vector<glm::vec2> joints;
    glm::vec3 place = surface.place;
    for (int i = 0; i < kJoints; ++i) {
        const float t = static_cast<float>(i) / (kJoints - 1);
        const glm::vec3 gathered =
            place - hair.aside * ((0.8F - 0.4F * hair.edge) * hair.offMiddle * t * (2.0F - t));
        joints.push_back(hair.root.place + onPicture(gathered) - onPicture(surface.place));
        heading = glm::normalize(heading + glm::vec3(0.0F, -0.10F, 0.0F) * hair.shag +
                                 hair.aside * (curl * (t - 0.3F)));
        place += heading * step;
    }
    return joints;
}

// The colour of a place nearby: hairs cross the borders of the coat's markings.
glm::vec3 strayColour(const View& view, glm::vec2 place, Random& random)
{
    constexpr float kStray = 4.0F; // pixels
    const float aside = random.between(-kStray, kStray);
    const Surface& nearby = view.at(place + glm::vec2(aside, random.between(-kStray, kStray)));
    const Surface& own = view.at(place);
    const bool isNear = nearby.hit && glm::distance(nearby.place, own.place) < 0.1F;
    return isNear && nearby.coat.bare < 0.2F ? nearby.coat.colour : own.coat.colour;
}

// The light on a hair: a lock is deep, and so dark, at its sides.
glm::vec3 lightOf(const Hair& hair, glm::vec3 heading, const View& view, Random& random)
{
    const float lockShade = 0.88F + 0.24F * unit(hair.root.lock.number << 3U);
    const float uneven = 0.14F + 0.26F * hair.edge;
    const float ownShade = 0.95F + uneven * random.between(-1.0F, 1.0F);
    const glm::vec3 shade = strayColour(view, hair.root.place, random) * ownShade * lockShade;
    const float deep = 1.0F - 0.48F * hair.across * hair.across * glm::min(1.0F, 0.4F + hair.shag);
    return lightOnFur(hair.surface, normalOf(hair), heading, shade) * deep;
}

void drawHair(const Root& root, const View& view, Drawing& drawing, Random& random)
{
    const Hair hair = hairAt(root, view.at(root.place));
    const glm::vec3 heading = headingOf(hair, random);
    const std::vector<glm::vec2> joints = jointsOf(hair, heading, random);
    const float presence = presenceAt(view, hair.surface);
    const glm::vec3 light = lightOf(hair, heading, view, random) * (0.2F + 0.8F * presence);
    drawing.fillHair(joints, glm::mix(1.5F + 0.5F * hair.shag, 0.6F, hair.edge),
                     (0.8F - 0.35F * glm::min(1.0F, hair.shag)) * light, 1.1F * light,
                     0.85F * presence * presence);
}

} // namespace

void drawSkin(const View& view, Drawing& drawing)
{
    const Raster<Surface>& surfaces = view.surfaces();
    for (int y = 0; y < surfaces.height(); ++y) {
        for (int x = 0; x < surfaces.width(); ++x) {
            const Surface& surface = surfaces.at(x, y);
            if (!surface.hit) {
                continue;
            }
            const Coat& coat = surface.coat;
            const glm::vec3 fur =
                0.4F * lightOnFur(surface, surface.normal, coat.groom, coat.colour);
            const glm::vec3 nose = lightOnNose(surface, view.solid().toHead(surface.place));
            drawing.setColour(glm::mix(fur, nose * softStep(0.35F, 0.6F, coat.bare),
                                       softStep(0.38F, 0.42F, coat.bare)),
                              presenceAt(view, surface) * (1.0F - 0.9F * edgeAt(surface)));
            drawing.fillSquare(glm::dvec2(x, y) / double{kFiner}, 1.0 / kFiner);
        }
    }
}

void drawFur(const View& view, Drawing& drawing, const OutputFolder& folder)
{
    Random random(kSeed);
    const std::vector<Root> roots = scatterRoots(view, random);
    for (std::size_t i = 0; i < roots.size(); ++i) {
        if (i == roots.size() / 2) {
            folder.keepStage(drawing.picture(), "dog-4-behind.tga");
        }
        drawHair(roots[i], view, drawing, random);
    }
}

Picture flowOfFur(const View& view)
{
    constexpr int kLines = 6000;
    constexpr std::size_t kLongest = 9; // joints
    constexpr float kStep = 0.016F;     // in the dog's space
    Drawing flow(kWidth, kHeight, 2 * kFiner);
    Random random(kSeed);
    for (int i = 0; i < kLines; ++i) {
        glm::vec2 place = anywhere(random);
        const glm::vec3 tone = glm::mix(kRust, kKeyColour, random.next());
        std::vector<glm::vec2> joints;
        while (joints.size() < kLongest && view.at(place).hit) {
            const Surface& surface = view.at(place);
            joints.push_back(place);
            place +=
                onPicture(surface.place + kStep * surface.coat.groom) - onPicture(surface.place);
        }
        if (joints.size() > 2) {
            flow.fillHair(joints, 1.3F, 0.2F * tone, tone);
        }
    }
    return flow.picture();
}

} // namespace dog
