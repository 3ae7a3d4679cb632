// A dog that looks at you. Its solid form is lit first; then tens of thousands of hairs are drawn
// over it, from the back of the head to the nose, so that each lies on those behind it. The scene
// amplifies what lies under the picture, so this is light, not paint: black leaves the ground as it
// is.
#include "art/pictures/dog_drawing.h"
#include "art/pictures/dog_form.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <cairo.h>
#include <glm/gtc/constants.hpp>
#include <glm/gtc/noise.hpp>
#include <vector>

namespace {

constexpr int kWidth = 512;
constexpr int kHeight = 256;
constexpr int kFiner = 2;      // seen and drawn this much larger, then averaged
constexpr int kRoots = 260000; // scattered over the picture; less than half fall on the dog
constexpr int kWhiskers = 22;
constexpr int kJoints = 6; // of a hair
constexpr unsigned kSeed = 1957;

// Locks stand in tufts; sizes are in units of the dog's space.
constexpr float kTuft = 0.22F;
constexpr float kLock = 0.065F;
constexpr float kFineLock = 0.035F; // where the coat is short

constexpr double kEyeSize = 1.5;

// The view.
constexpr float kScale = 152.0F; // pixels to a unit, at z = 0
constexpr glm::vec2 kMiddle{270.0F, 118.0F};
constexpr glm::vec3 kViewer{0.0F, 0.1F, 6.5F};
constexpr float kFarthest = 9.0F;

const glm::vec3 kKeyLight = glm::normalize(glm::vec3(-0.74F, 0.58F, 0.46F));
const glm::vec3 kFillLight = glm::normalize(glm::vec3(0.55F, -0.10F, 0.80F));
const glm::vec3 kRimLight = glm::normalize(glm::vec3(0.90F, 0.22F, -0.36F));
const glm::vec3 kKeyColour = colour(0xffe8c4);
const glm::vec3 kShade{1.0F, 0.70F, 0.45F}; // what shadows keep of the light
const glm::vec3 kRimColour = colour(0xffa24c);

struct Surface {
    bool hit = false;
    glm::vec3 place{0.0F};
    glm::vec3 normal{0.0F};
    float openness = 1.0F;
    float keyLight = 1.0F; // how much of the key light comes here
    dog::Coat coat;
};

glm::vec2 onPicture(glm::vec3 place)
{
    const glm::vec3 from = place - kViewer;
    return kMiddle + glm::vec2(from.x, -from.y) * (kScale * kViewer.z / -from.z);
}

Surface look(const dog::Solid& solid, glm::vec2 place)
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
glm::vec3 lightOnFur(const Surface& surface, glm::vec3 normal, glm::vec3 hair, glm::vec3 coat)
{
    const glm::vec3 toViewer = glm::normalize(kViewer - surface.place);
    const float facing = glm::dot(normal, kKeyLight);
    const float key = glm::max(0.0F, (facing + 0.15F) / 1.15F) * (0.2F + 0.8F * surface.keyLight);
    const float fill = glm::max(0.0F, glm::dot(normal, kFillLight));
    const float along = glm::dot(hair, glm::normalize(kKeyLight + toViewer));
    const float sheen = power(1.0F - along * along, 10.0F) * glm::max(0.0F, facing + 0.1F) *
                        (0.2F + 0.8F * surface.keyLight);
    const float edge = power(1.0F - glm::max(0.0F, glm::dot(surface.normal, toViewer)), 1.6F);
    const float rim = edge * glm::max(0.0F, glm::dot(normal, kRimLight) + 0.25F);
    const float falloff = softStep(-1.0F, -0.3F, surface.place.y) * 0.45F + 0.55F;
    const float matte = 0.05F + 2.1F * key * (0.32F + 0.70F * key) + 0.26F * fill;
    const glm::vec3 light =
        falloff * (surface.openness * (coat * matte + kKeyColour * 0.16F * sheen) +
                   kRimColour * surface.openness * 2.4F * rim);
    return light * glm::mix(kShade, glm::vec3(1.0F), softStep(0.05F, 0.8F, brightest(light)));
}

// The leather of the nose: grained and wet.
glm::vec3 lightOnNose(const Surface& surface, glm::vec3 head)
{
    const glm::vec3 grain(glm::perlin(head * 38.0F), glm::perlin(head * 38.0F + 9.0F), 0.0F);
    const glm::vec3 normal = glm::normalize(surface.normal + 0.13F * grain);
    const glm::vec3 halfway = glm::normalize(kKeyLight + glm::normalize(kViewer - surface.place));
    const float wet = power(glm::max(0.0F, glm::dot(normal, halfway)), 30.0F);
    const float sky = glm::max(0.0F, normal.y);
    return dog::kLeather + kKeyColour * (0.9F * wet + 0.10F * sky * sky);
}

class Portrait {
public:
    Portrait()
    {
        surfaces_.fill([&](int x, int y) {
            const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFiner);
            return look(solid_, place);
        });
    }

    void draw(const OutputFolder& folder)
    {
        keepForm(folder);
        keepFlow(folder);
        drawSkin();
        folder.keepStage(drawing_.picture(), "dog-3-undercoat.tga");
        drawMouth(0.9F, 4.0);
        drawFur();
        drawMouth(0.85F, 2.4);
        folder.keepStage(drawing_.picture(), "dog-4-hairs.tga");
        for (const float side : {-1.0F, 1.0F}) {
            drawNostril(side);
            drawEye(side);
        }
        drawWhiskers();
    }

    [[nodiscard]] Picture picture() const { return drawing_.picture(); }

private:
    [[nodiscard]] const Surface& surfaceAt(glm::vec2 place) const
    {
        const glm::ivec2 pixel(place * static_cast<float>(kFiner));
        return surfaces_.wrapped(pixel.x, pixel.y);
    }

    // The solid in grey.
    void keepForm(const OutputFolder& folder) const
    {
        Picture form(surfaces_.width(), surfaces_.height());
        form.fill([&](int x, int y) {
            const Surface& surface = surfaces_.at(x, y);
            const glm::vec3 grey(0.75F);
            return glm::vec4(surface.hit ? lightOnFur(surface, surface.normal, kRimLight, grey)
                                         : glm::vec3(0.0F),
                             1.0F);
        });
        form = form.shrunk(kFiner);
        folder.keepStage(form, "dog-1-form.tga");
    }

    // Lines along the groom.
    void keepFlow(const OutputFolder& folder) const
    {
        constexpr int kLines = 6000;
        constexpr int kSteps = 9;
        constexpr float kStep = 0.016F;
        dog::Drawing flow(kWidth, kHeight, kFiner);
        Random random(kSeed);
        for (int i = 0; i < kLines; ++i) {
            glm::vec2 place(random.next() * kWidth, random.next() * kHeight);
            const glm::vec3 tone = glm::mix(dog::kDark, kKeyColour, random.next());
            std::vector<glm::vec2> joints;
            for (int step = 0; step < kSteps && surfaceAt(place).hit; ++step) {
                const Surface& surface = surfaceAt(place);
                joints.push_back(place);
                place += onPicture(surface.place + kStep * surface.coat.groom) -
                         onPicture(surface.place);
            }
            if (joints.size() > 2) {
                flow.fillHair(joints, 1.3F, 0.2F * tone, tone);
            }
        }
        folder.keepStage(flow.picture(), "dog-2-flow.tga");
    }

    // The fur's depth under the hairs, and the nose.
    void drawSkin()
    {
        for (int y = 0; y < surfaces_.height(); ++y) {
            for (int x = 0; x < surfaces_.width(); ++x) {
                const Surface& surface = surfaces_.at(x, y);
                if (!surface.hit) {
                    continue;
                }
                const dog::Coat& coat = surface.coat;
                const glm::vec3 fur =
                    0.4F * lightOnFur(surface, surface.normal, coat.groom, coat.colour);
                const glm::vec3 nose = lightOnNose(surface, solid_.toHead(surface.place));
                drawing_.setColour(glm::mix(fur, nose * softStep(0.35F, 0.6F, coat.bare),
                                            softStep(0.38F, 0.42F, coat.bare)));
                drawing_.fillPixel(x, y);
            }
        }
    }

    struct Root {
        glm::vec2 place;
        dog::Lock lock;
        float fromNose;
    };

    [[nodiscard]] static float shag(const dog::Coat& coat)
    {
        return glm::clamp((coat.length - 4.0F) / 18.0F, 0.0F, 1.4F);
    }

    void drawFur()
    {
        Random random(kSeed);
        std::vector<Root> roots;
        for (int i = 0; i < kRoots; ++i) {
            const glm::vec2 place(random.next() * kWidth, random.next() * kHeight);
            const Surface& surface = surfaceAt(place);
            const dog::Coat& coat = surface.coat;
            if (!surface.hit || coat.groom == glm::vec3(0.0F) || coat.bare > 0.3F) {
                continue;
            }
            const float size = glm::mix(kFineLock, kLock, softStep(8.0F, 20.0F, coat.length));
            const dog::Lock lock = dog::lockAt(surface.place, size < 0.05F ? kFineLock : kLock, 1);
            // Whole locks lie over those behind them.
            const float fromNose = glm::length(solid_.toHead(lock.middle) - dog::kNoseTip);
            roots.push_back({place, lock, fromNose + random.between(0.0F, 0.03F)});
        }
        std::stable_sort(roots.begin(), roots.end(),
                         [](const Root& a, const Root& b) { return a.fromNose > b.fromNose; });
        for (const Root& root : roots) {
            drawHair(root, random);
        }
    }

    // The colour of a place nearby: hairs cross the borders of the coat's markings.
    glm::vec3 strayColour(glm::vec2 place, Random& random) const
    {
        constexpr float kStray = 4.0F;
        const float aside = random.between(-kStray, kStray);
        const Surface& nearby =
            surfaceAt(place + glm::vec2(aside, random.between(-kStray, kStray)));
        const Surface& own = surfaceAt(place);
        const bool isNear = nearby.hit && glm::distance(nearby.place, own.place) < 0.1F;
        return isNear && nearby.coat.bare < 0.2F ? nearby.coat.colour : own.coat.colour;
    }

    // A lock's hairs close in on its middle, and lean with it and with the tuft that it stands in.
    void drawHair(const Root& root, Random& random)
    {
        const Surface& surface = surfaceAt(root.place);
        const dog::Coat& coat = surface.coat;
        const float shag = Portrait::shag(coat);
        const glm::vec3 aside = glm::cross(surface.normal, coat.groom);
        const dog::Lock tuft = dog::lockAt(surface.place, kTuft, 2);
        const float tuftLean = unit(tuft.number << 5U) - 0.5F;
        const float lockLean = unit(root.lock.number << 5U) - 0.5F;
        const float lean =
            shag * (0.9F * tuftLean + 0.7F * lockLean) + random.between(-0.12F, 0.12F);
        const glm::vec3 hair =
            glm::normalize(coat.groom + aside * lean + surface.normal * (0.05F + 0.16F * shag));

        // Across a lock from -1 to 1: it is round, and deep at its sides.
        const float size = coat.length > 14.0F ? kLock : kFineLock;
        const float offMiddle = glm::dot(surface.place - root.lock.middle, aside);
        const float across = glm::clamp(2.0F * offMiddle / size, -1.0F, 1.0F);
        const float acrossTuft =
            glm::clamp(2.0F * glm::dot(surface.place - tuft.middle, aside) / kTuft, -1.0F, 1.0F);
        const glm::vec3 normal = glm::normalize(
            surface.normal + aside * ((0.25F + 0.6F * shag) * across + 0.5F * shag * acrossTuft));

        const float ownLength = coat.length * random.between(0.65F, 1.2F) *
                                (0.75F + 0.5F * unit(root.lock.number << 9U));
        const float step = ownLength / kScale / static_cast<float>(kJoints - 1);
        const float curl = 0.5F * shag * (unit(root.lock.number << 13U) - 0.5F);
        std::vector<glm::vec2> joints;
        glm::vec3 place = surface.place;
        glm::vec3 heading = hair;
        for (int i = 0; i < kJoints; ++i) {
            const float t = static_cast<float>(i) / (kJoints - 1);
            const glm::vec3 gathered = place - aside * (0.8F * offMiddle * t * (2.0F - t));
            joints.push_back(root.place + onPicture(gathered) - onPicture(surface.place));
            heading = glm::normalize(heading + glm::vec3(0.0F, -0.10F, 0.0F) * shag +
                                     aside * (curl * (t - 0.3F)));
            place += heading * step;
        }

        const float lockShade = 0.8F + 0.4F * unit(root.lock.number << 3U);
        const glm::vec3 shade =
            strayColour(root.place, random) * random.between(0.75F, 1.25F) * lockShade;
        const float deep = 1.0F - 0.55F * across * across * glm::min(1.0F, 0.4F + shag);
        const glm::vec3 light = lightOnFur(surface, normal, hair, shade) * deep;
        drawing_.fillHair(joints, 0.9F + 0.35F * shag,
                          (0.6F - 0.35F * glm::min(1.0F, shag)) * light, 1.1F * light, 0.85F);
    }

    [[nodiscard]] glm::vec2 onFace(glm::vec3 head) const
    {
        return onPicture(solid_.fromHead(head));
    }

    void drawCurve(glm::vec3 from, glm::vec3 by, glm::vec3 andBy, glm::vec3 to, double width)
    {
        cairo_t* pen = drawing_.pen();
        const glm::vec2 start = onFace(from);
        const glm::vec2 first = onFace(by);
        const glm::vec2 second = onFace(andBy);
        const glm::vec2 end = onFace(to);
        cairo_move_to(pen, start.x, start.y);
        cairo_curve_to(pen, first.x, first.y, second.x, second.y, end.x, end.y);
        cairo_set_line_width(pen, width);
        cairo_stroke(pen);
    }

    // The line from the nose to the lips, and where these meet.
    void drawMouth(float cover, double width)
    {
        constexpr glm::vec3 kUnderNose{0.0F, -0.28F, 1.05F};
        constexpr glm::vec3 kParting{0.0F, -0.37F, 1.0F};
        constexpr glm::vec3 kLip{0.05F, -0.44F, 1.0F};
        constexpr glm::vec3 kCheek{0.15F, -0.47F, 0.90F};
        constexpr glm::vec3 kCorner{0.27F, -0.37F, 0.55F};
        drawing_.setColour(0.3F * dog::kLeather, cover);
        drawCurve(kUnderNose, kUnderNose, kParting, kParting, width);
        for (const float side : {-1.0F, 1.0F}) {
            const glm::vec3 mirror(side, 1.0F, 1.0F);
            drawCurve(kParting, kLip * mirror, kCheek * mirror, kCorner * mirror, width);
        }
    }

    // A few long ones stand off the upper lip, from rows of dark roots.
    void drawWhiskers()
    {
        Random random(kSeed);
        for (int i = 0; i < 24; ++i) {
            const float side = i % 2 == 0 ? -1.0F : 1.0F;
            const int row = i / 2 % 3;
            const int place = i / 6;
            const float along = static_cast<float>(place) + 0.4F * static_cast<float>(row % 2);
            const glm::vec2 root = onFace({side * (0.12F + 0.035F * along),
                                           -0.24F - 0.05F * static_cast<float>(row) + 0.01F * along,
                                           1.0F - 0.045F * along});
            drawDisc(root, 0.9, 0.5F * dog::kDark, 0.6F);
        }
        for (int i = 0; i < kWhiskers; ++i) {
            const float side = i % 2 == 0 ? -1.0F : 1.0F;
            const glm::vec3 root{side * random.between(0.14F, 0.24F),
                                 random.between(-0.40F, -0.26F), random.between(0.76F, 0.90F)};
            const float length = random.between(0.16F, 0.32F);
            const float rise = random.between(-0.35F, 0.2F);
            std::vector<glm::vec2> joints;
            for (int j = 0; j < kJoints; ++j) {
                const float t = static_cast<float>(j) / (kJoints - 1);
                joints.push_back(onFace(
                    root + length * glm::vec3(side * t, rise * t - 0.35F * t * t, -0.4F * t)));
            }
            drawing_.fillHair(joints, 1.1F, kKeyColour, kKeyColour, random.between(0.25F, 0.5F));
        }
    }

    void drawNostril(float side)
    {
        const glm::vec2 middle = onFace({side * 0.075F, -0.17F, 1.10F});
        cairo_save(drawing_.pen());
        cairo_translate(drawing_.pen(), middle.x, middle.y);
        cairo_rotate(drawing_.pen(), dog::kHeadTilt - side * 0.5F);
        cairo_scale(drawing_.pen(), 6.3, 3.8);
        cairo_arc(drawing_.pen(), 0, 0, 1, 0, glm::two_pi<double>());
        cairo_restore(drawing_.pen());
        drawing_.setColour(glm::vec3(0.0F));
        cairo_fill(drawing_.pen());
    }

    // An almond, 30 by 18 or so, with the inner corner low.
    void addAlmond(double size)
    {
        cairo_t* pen = drawing_.pen();
        cairo_move_to(pen, -15 * size, 6.5 * size);
        cairo_curve_to(pen, -10 * size, -5 * size, 4 * size, -10.5 * size, 14 * size, -2.5 * size);
        cairo_curve_to(pen, 9 * size, 9 * size, -4 * size, 11.5 * size, -15 * size, 6.5 * size);
        cairo_close_path(pen);
    }

    void drawDisc(glm::dvec2 middle, double radius, glm::vec3 colour, float cover = 1.0F)
    {
        cairo_arc(drawing_.pen(), middle.x, middle.y, radius, 0, glm::two_pi<double>());
        drawing_.setColour(colour, cover);
        cairo_fill(drawing_.pen());
    }

    // Amber, darker at the rim and above, with fibres that run to the pupil.
    void drawIris(glm::dvec2 middle)
    {
        constexpr double kRadius = 10.8;
        constexpr int kRings = 24;
        const std::array amber = {colour(0x200a02), colour(0xb85a10), colour(0xff9c28),
                                  colour(0xffb648), colour(0xffd884)};
        for (int ring = 0; ring <= kRings; ++ring) {
            const float t = static_cast<float>(ring) / kRings;
            const double lower = 3.4 * static_cast<double>(t); // light falls through, from above
            drawDisc(middle + glm::dvec2(0.25 * lower, lower),
                     kRadius * (1.0 - 0.9 * static_cast<double>(t)), ramp(amber, t));
        }
        cairo_t* pen = drawing_.pen();
        cairo_set_line_width(pen, 0.45);
        for (int i = 0; i < 36; ++i) {
            const float angle = kFullTurn * static_cast<float>(i) / 36.0F;
            const glm::dvec2 way(cosine(angle), sine(angle));
            const double to = i % 3 == 0 ? 0.92 : 0.78;
            cairo_move_to(pen, middle.x + 4.7 * way.x, middle.y + 4.7 * way.y);
            cairo_line_to(pen, middle.x + to * kRadius * way.x, middle.y + to * kRadius * way.y);
            drawing_.setColour(i % 2 == 0 ? colour(0x502000) : colour(0xffe0a0), 0.35F);
            cairo_stroke(pen);
        }
        drawDisc(middle, 4.7, glm::vec3(0.0F));
    }

    // The wet rim of the lower lid, and the light on both lids' fur, which is what is left of an
    // eye when pictures of it are shaken.
    void drawLids()
    {
        drawing_.fillHair(
            {
                {14,  1   },
                {11,  5.5 },
                {6,   9   },
                {0,   10.8},
                {-6,  10.8},
                {-12, 9   }
        },
            1.8F, colour(0xd08840), colour(0xffd090));
    }

    void drawEye(float side)
    {
        constexpr glm::dvec2 kGaze{0.6, 0.2};
        cairo_t* pen = drawing_.pen();
        const glm::vec2 middle = onFace(dog::kEye * glm::vec3(side, 1.0F, 1.0F));
        cairo_save(pen);
        cairo_translate(pen, middle.x, middle.y);
        cairo_rotate(pen, dog::kHeadTilt + side * 0.10);
        cairo_scale(pen, side * kEyeSize, kEyeSize);
        for (int lid = 0; lid < 6; ++lid) {
            addAlmond(1.30 - 0.05 * lid);
            drawing_.setColour(0.3F * dog::kLeather, 0.35F);
            cairo_fill(pen);
        }
        addAlmond(1.0);
        cairo_save(pen);
        cairo_clip(pen);
        drawDisc({0, 0}, 30, colour(0x120703));
        cairo_scale(pen, side, 1);
        drawIris(kGaze);
        cairo_scale(pen, side, 1);
        // The upper lid's shadow.
        for (int shadow = 0; shadow < 6; ++shadow) {
            cairo_rectangle(pen, -20, -20, 40, 11.0 + 1.3 * shadow);
            drawing_.setColour(glm::vec3(0.0F), 0.13F);
            cairo_fill(pen);
        }
        cairo_restore(pen);
        drawLids();
        cairo_scale(pen, side, 1);
        drawDisc({-3.0, -2.4}, 2.7, colour(0xfffaf0));
        drawDisc({5.0, 4.6}, 1.1, colour(0xffd89c), 0.8F);
        cairo_restore(pen);
    }

    dog::Solid solid_;
    Raster<Surface> surfaces_{kWidth * kFiner, kHeight* kFiner, Surface()};
    dog::Drawing drawing_{kWidth, kHeight, kFiner};
};

// The ground under the picture has darks of its own, so lit fur is brought close to full light and
// shadows close to none.
void printHard(Picture& picture)
{
    picture.fill([&](int x, int y) {
        const glm::vec3 soft(picture.at(x, y));
        const float bright = brightest(soft);
        const float lifted = (1.0F - exponential(-1.6F * bright)) / (1.0F - exponential(-1.6F));
        const float hard = glm::mix(lifted, softStep(0.0F, 1.0F, lifted), 0.5F);
        return glm::vec4(soft * (hard / glm::max(0.001F, bright)), 1.0F);
    });
}

void makeDog(const OutputFolder& folder)
{
    Portrait portrait;
    portrait.draw(folder);
    Picture picture = portrait.picture();
    printHard(picture);
    folder.keepStage(picture, "dog-5-finished.tga");
    folder.write(picture, 24, "koira.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeDog);
}
