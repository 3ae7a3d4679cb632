// A dog that looks at you. Its solid form is lit first; then tens of thousands of hairs are drawn
// over it, from the back of the head to the nose, so that each lies on those behind it. The scene
// amplifies what lies under the picture, so this is light, not paint: black leaves the ground as it
// is.
#include "art/pictures/dog_drawing.h"
#include "art/pictures/dog_eye.h"
#include "art/pictures/dog_form.h"
#include "art/pictures/dog_view.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <cairo.h>
#include <cstddef>
#include <glm/gtc/constants.hpp>
#include <glm/gtc/noise.hpp>
#include <vector>

namespace {

using namespace dog;

constexpr int kWidth = 512;
constexpr int kHeight = 256;
constexpr int kFiner = 2;      // seen and drawn this much larger, then averaged
constexpr int kRoots = 260000; // scattered over the picture; less than half fall on the dog
constexpr int kWhiskers = 22;
constexpr int kJoints = 6; // of a hair
constexpr unsigned kSeed = 1957;

// Hairs close up into locks, and locks stand in tufts; sizes are in units of the dog's space.
constexpr float kTuft = 0.22F;
constexpr float kLongLock = 0.10F;
constexpr float kLock = 0.065F;
constexpr float kShortLock = 0.035F;

float lockSize(const Coat& coat)
{
    if (coat.length > 24.0F) {
        return kLongLock;
    }
    return coat.length > 14.0F ? kLock : kShortLock;
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
        drawMouth(0.9F, 6.0);
        drawFur(folder);
        drawMouth(0.9F, 3.0);
        folder.keepStage(drawing_.picture(), "dog-5-hairs.tga");
        for (const float side : {-1.0F, 1.0F}) {
            drawNostril(side);
            const glm::vec3 mirror(side, 1.0F, 1.0F);
            drawEye(drawing_, onFace(kEye * mirror), side);
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
            const glm::vec3 grey(0.6F);
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
        Drawing flow(kWidth, kHeight, kFiner);
        Random random(kSeed);
        for (int i = 0; i < kLines; ++i) {
            glm::vec2 place(random.next() * kWidth, random.next() * kHeight);
            const glm::vec3 tone = glm::mix(kRust, kKeyColour, random.next());
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
                const Coat& coat = surface.coat;
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
        Lock lock;
        float size; // of the lock
        float fromNose;
    };

    [[nodiscard]] static float shag(const Coat& coat)
    {
        return glm::clamp((coat.length - 4.0F) / 18.0F, 0.0F, 1.4F);
    }

    void drawFur(const OutputFolder& folder)
    {
        Random random(kSeed);
        std::vector<Root> roots;
        for (int i = 0; i < kRoots; ++i) {
            const glm::vec2 place(random.next() * kWidth, random.next() * kHeight);
            const Surface& surface = surfaceAt(place);
            const Coat& coat = surface.coat;
            if (!surface.hit || coat.groom == glm::vec3(0.0F) || coat.bare > 0.3F) {
                continue;
            }
            const float size = lockSize(coat);
            const Lock lock = lockAt(surface.place, size, 1);
            // Whole locks lie over those behind them.
            const float fromNose = glm::length(solid_.toHead(lock.middle) - kNoseTip);
            roots.push_back({place, lock, size, fromNose + random.between(0.0F, 0.03F)});
        }
        std::stable_sort(roots.begin(), roots.end(),
                         [](const Root& a, const Root& b) { return a.fromNose > b.fromNose; });
        for (std::size_t i = 0; i < roots.size(); ++i) {
            if (i == roots.size() / 2) {
                folder.keepStage(drawing_.picture(), "dog-4-behind.tga");
            }
            drawHair(roots[i], random);
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
        const Coat& coat = surface.coat;
        const float shag = Portrait::shag(coat);
        const glm::vec3 aside = glm::cross(surface.normal, coat.groom);
        const Lock tuft = lockAt(surface.place, kTuft, 2);
        const float tuftLean = unit(tuft.number << 5U) - 0.5F;
        const float lockLean = unit(root.lock.number << 5U) - 0.5F;
        const float lean =
            shag * (0.9F * tuftLean + 0.7F * lockLean) + random.between(-0.12F, 0.12F);
        const glm::vec3 hair =
            glm::normalize(coat.groom + aside * lean + surface.normal * (0.05F + 0.16F * shag));

        // Across a lock from -1 to 1: it is round, and deep at its sides.
        const float offMiddle = glm::dot(surface.place - root.lock.middle, aside);
        const float across = glm::clamp(2.0F * offMiddle / root.size, -1.0F, 1.0F);
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
            strayColour(root.place, random) * random.between(0.68F, 1.3F) * lockShade;
        const float deep = 1.0F - 0.62F * across * across * glm::min(1.0F, 0.25F + shag);
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
        constexpr glm::vec3 kCorner{0.26F, -0.41F, 0.60F};
        drawing_.setColour(0.3F * kLeather, cover);
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
            drawDisc(drawing_, root, 0.9, 0.5F * kRust, 0.6F);
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
        cairo_rotate(drawing_.pen(), kHeadTilt - side * 0.5F);
        cairo_scale(drawing_.pen(), 6.3, 3.8);
        cairo_arc(drawing_.pen(), 0, 0, 1, 0, glm::two_pi<double>());
        cairo_restore(drawing_.pen());
        drawing_.setColour(glm::vec3(0.0F));
        cairo_fill(drawing_.pen());
    }

    Solid solid_;
    Raster<Surface> surfaces_{kWidth * kFiner, kHeight* kFiner, Surface()};
    Drawing drawing_{kWidth, kHeight, kFiner};
};

// The ground under the picture has darks of its own, so lit fur is brought close to full light and
// shadows close to none.
void printHard(Picture& picture)
{
    picture.fill([&](int x, int y) {
        const glm::vec3 soft(picture.at(x, y));
        const float bright = brightest(soft);
        const float lifted = (1.0F - exponential(-1.2F * bright)) / (1.0F - exponential(-1.2F));
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
    folder.keepStage(picture, "dog-6-finished.tga");
    folder.write(picture, 24, "koira.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeDog);
}
