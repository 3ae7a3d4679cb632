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
constexpr int kHairs = 60000;
constexpr int kWhiskers = 18;
constexpr int kJoints = 6; // of a hair
constexpr unsigned kSeed = 1957;

// The face.
constexpr double kEyeSize = 1.42;
constexpr int kIrisRings = 24;
const std::array kIris = {colour(0x080301), colour(0xa04c10), colour(0xe88a24), colour(0xffa838),
                          colour(0xffcf70)};

// The view.
constexpr float kScale = 146.0F; // pixels to a unit, at z = 0
constexpr glm::vec2 kMiddle{272.0F, 112.0F};
constexpr glm::vec3 kViewer{0.0F, 0.1F, 6.5F};
constexpr float kFarthest = 9.0F;

const glm::vec3 kKeyLight = glm::normalize(glm::vec3(-0.50F, 0.62F, 0.66F));
const glm::vec3 kFillLight = glm::normalize(glm::vec3(0.70F, 0.10F, 0.70F));
const glm::vec3 kRimLight = glm::normalize(glm::vec3(0.85F, 0.25F, -0.35F));
const glm::vec3 kKeyColour = colour(0xffe6c0);
const glm::vec3 kShade{1.0F, 0.74F, 0.52F}; // what shadows keep of the light
const glm::vec3 kRimColour = colour(0xff9a40);

struct Surface {
    bool hit = false;
    glm::vec3 place{0.0F};
    glm::vec3 normal{0.0F};
    float openness = 1.0F;
};

glm::vec2 onPicture(glm::vec3 place)
{
    const glm::vec3 from = place - kViewer;
    return kMiddle + glm::vec2(from.x, -from.y) * (kScale * kViewer.z / -from.z);
}

Surface surfaceAt(const dog::Solid& solid, float x, float y)
{
    const glm::vec2 aside = (glm::vec2(x, y) - kMiddle) / kScale;
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
    }
    return surface;
}

// The light that fur sends to the viewer; hairs shine across their direction, like thin cylinders.
glm::vec3 lightOnFur(const Surface& surface, glm::vec3 normal, glm::vec3 hair, glm::vec3 coat)
{
    const glm::vec3 toViewer = glm::normalize(kViewer - surface.place);
    const float key = glm::max(0.0F, (glm::dot(normal, kKeyLight) + 0.25F) / 1.25F);
    const float fill = glm::max(0.0F, glm::dot(normal, kFillLight));
    const float along = glm::dot(hair, glm::normalize(kKeyLight + toViewer));
    const float sheen =
        power(1.0F - along * along, 14.0F) * glm::max(0.0F, glm::dot(normal, kKeyLight) + 0.1F);
    const float edge = power(1.0F - glm::max(0.0F, glm::dot(normal, toViewer)), 2.2F);
    const float rim = edge * glm::max(0.0F, glm::dot(normal, kRimLight) + 0.45F);
    const float falloff = softStep(-1.5F, 0.0F, surface.place.y) * 0.75F + 0.25F;
    const float matte = 0.06F + 1.05F * key * (0.4F + 0.6F * key) + 0.30F * fill;
    const glm::vec3 light =
        falloff * (surface.openness * (coat * matte + kKeyColour * 0.2F * sheen) +
                   kRimColour * (0.3F + 0.6F * surface.openness) * rim);
    return light * glm::mix(kShade, glm::vec3(1.0F), softStep(0.05F, 0.7F, brightest(light)));
}

// The leather of the nose: grained and wet.
glm::vec3 lightOnNose(const Surface& surface, glm::vec3 head)
{
    const glm::vec3 grain(glm::perlin(head * 38.0F), glm::perlin(head * 38.0F + 9.0F), 0.0F);
    const glm::vec3 normal = glm::normalize(surface.normal + 0.13F * grain);
    const glm::vec3 halfway = glm::normalize(kKeyLight + glm::normalize(kViewer - surface.place));
    const float wet = power(glm::max(0.0F, glm::dot(normal, halfway)), 18.0F);
    const float sky = glm::max(0.0F, normal.y);
    return dog::kLeather + kKeyColour * (0.55F * wet + 0.1F * sky * sky);
}

class Portrait {
public:
    Portrait()
    {
        surfaces_.fill([&](int x, int y) {
            return surfaceAt(solid_, static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
        });
    }

    Picture draw()
    {
        drawSkin();
        drawFur();
        drawMouth();
        drawWhiskers();
        for (const float side : {-1.0F, 1.0F}) {
            drawNostril(side);
            drawEye(side);
        }
        return drawing_.picture();
    }

private:
    // Half the fur's light under the hairs, and the nose.
    void drawSkin()
    {
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const Surface& surface = surfaces_.at(x, y);
                if (!surface.hit) {
                    continue;
                }
                const dog::Coat coat = solid_.coat(surface.place, surface.normal);
                const glm::vec3 fur =
                    0.55F * lightOnFur(surface, surface.normal, coat.groom, coat.colour);
                const glm::vec3 nose = lightOnNose(surface, solid_.toHead(surface.place));
                drawing_.setColour(glm::mix(fur, nose * softStep(0.35F, 0.6F, coat.bare),
                                            softStep(0.38F, 0.42F, coat.bare)));
                drawing_.fillPixel(x, y);
            }
        }
    }

    struct Root {
        glm::vec2 place;
        float fromNose;
    };

    void drawFur()
    {
        Random random(kSeed);
        std::vector<Root> roots;
        for (int i = 0; i < kHairs; ++i) {
            const float x = random.next() * kWidth;
            const float y = random.next() * kHeight;
            const Surface& surface = surfaces_.at(static_cast<int>(x), static_cast<int>(y));
            const glm::vec3 head = solid_.toHead(surface.place);
            if (surface.hit) {
                const float fromNose = glm::length(head - dog::kNoseTip);
                roots.push_back({glm::vec2(x, y), fromNose + random.between(0.0F, 0.05F)});
            }
        }
        std::stable_sort(roots.begin(), roots.end(),
                         [](const Root& a, const Root& b) { return a.fromNose > b.fromNose; });
        for (const Root& root : roots) {
            drawHair(root.place, random);
        }
    }

    // Hairs lean together in locks, a broad wave and a narrow one.
    void drawHair(glm::vec2 root, Random& random)
    {
        const Surface& surface = surfaces_.at(static_cast<int>(root.x), static_cast<int>(root.y));
        const dog::Coat coat = solid_.coat(surface.place, surface.normal);
        if (coat.groom == glm::vec3(0.0F) || coat.bare > 0.45F) {
            return;
        }
        const float shag = glm::clamp((coat.length - 4.0F) / 14.0F, 0.0F, 1.4F);
        const float wave = glm::perlin(surface.place * 7.0F + 3.1F);
        const float lock = glm::perlin(surface.place * 16.0F + 7.7F);
        const glm::vec3 aside = glm::cross(surface.normal, coat.groom);
        const float lean = shag * (0.6F * wave + 0.5F * lock) + random.between(-0.15F, 0.15F);
        const glm::vec3 hair =
            glm::normalize(coat.groom + aside * lean + surface.normal * 0.10F * shag);
        const float tilt = (0.15F + 0.35F * shag) * lock + random.between(-0.12F, 0.12F);
        const glm::vec3 normal = glm::normalize(surface.normal + aside * tilt);

        const float step =
            coat.length * random.between(0.6F, 1.4F) / kScale / static_cast<float>(kJoints - 1);
        std::vector<glm::vec2> joints;
        glm::vec3 place = surface.place;
        glm::vec3 heading = hair;
        for (int i = 0; i < kJoints; ++i) {
            joints.push_back(root + onPicture(place) - onPicture(surface.place));
            const glm::vec3 bend = glm::vec3(0.0F, -0.10F, 0.0F) * shag + aside * lock * 0.12F;
            heading = glm::normalize(heading + bend);
            place += heading * step;
        }
        const glm::vec3 shade = coat.colour * random.between(0.8F, 1.25F);
        drawing_.setColour(lightOnFur(surface, normal, hair, shade) * (1.0F + 0.55F * lock * shag),
                           0.8F);
        drawing_.fillHair(joints, 1.0F + 0.5F * shag);
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

    void drawMouth()
    {
        constexpr glm::vec3 kUnderNose{0.0F, -0.24F, 1.05F};
        constexpr glm::vec3 kParting{0.0F, -0.37F, 0.97F};
        constexpr glm::vec3 kLip{0.05F, -0.47F, 0.95F};
        constexpr glm::vec3 kCheek{0.17F, -0.50F, 0.85F};
        constexpr glm::vec3 kCorner{0.25F, -0.40F, 0.68F};
        drawing_.setColour(0.3F * dog::kLeather, 0.9F);
        drawCurve(kUnderNose, kUnderNose, kParting, kParting, 2.0);
        for (const float side : {-1.0F, 1.0F}) {
            const glm::vec3 mirror(side, 1.0F, 1.0F);
            drawCurve(kParting, kLip * mirror, kCheek * mirror, kCorner * mirror, 2.6);
        }
    }

    // A few long ones stand off the upper lip.
    void drawWhiskers()
    {
        Random random(kSeed);
        for (int i = 0; i < kWhiskers; ++i) {
            const float side = i % 2 == 0 ? -1.0F : 1.0F;
            const glm::vec3 root{side * random.between(0.14F, 0.24F),
                                 random.between(-0.42F, -0.26F), random.between(0.76F, 0.90F)};
            const float length = random.between(0.16F, 0.32F);
            const float rise = random.between(-0.35F, 0.2F);
            std::vector<glm::vec2> joints;
            for (int j = 0; j < kJoints; ++j) {
                const float t = static_cast<float>(j) / (kJoints - 1);
                joints.push_back(onFace(
                    root + length * glm::vec3(side * t, rise * t - 0.35F * t * t, -0.4F * t)));
            }
            drawing_.setColour(kKeyColour, random.between(0.25F, 0.5F));
            drawing_.fillHair(joints, 1.1F);
        }
    }

    void drawNostril(float side)
    {
        const glm::vec2 middle = onFace({side * 0.08F, -0.165F, 1.10F});
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
    void drawAlmond(double size)
    {
        cairo_t* pen = drawing_.pen();
        cairo_move_to(pen, -14 * size, 3.5 * size);
        cairo_curve_to(pen, -8 * size, -9 * size, 6 * size, -11 * size, 15 * size, -size);
        cairo_curve_to(pen, 8 * size, 9 * size, -6 * size, 10 * size, -14 * size, 3.5 * size);
        cairo_close_path(pen);
    }

    void drawDisc(double x, double y, double radius, glm::vec3 colour, float cover = 1.0F)
    {
        cairo_arc(drawing_.pen(), x, y, radius, 0, glm::two_pi<double>());
        drawing_.setColour(colour, cover);
        cairo_fill(drawing_.pen());
    }

    void drawEye(float side)
    {
        cairo_t* pen = drawing_.pen();
        const glm::vec2 middle = onFace(dog::kEye * glm::vec3(side, 1.0F, 1.0F));
        cairo_save(pen);
        cairo_translate(pen, middle.x, middle.y);
        cairo_rotate(pen, dog::kHeadTilt + side * 0.16);
        cairo_scale(pen, side * kEyeSize, kEyeSize);
        for (int lid = 0; lid < 5; ++lid) {
            drawAlmond(1.34 - 0.07 * lid);
            drawing_.setColour(0.3F * dog::kLeather, 0.4F);
            cairo_fill(pen);
        }
        drawAlmond(1.0);
        cairo_save(pen);
        cairo_clip(pen);
        for (int ring = 0; ring <= kIrisRings; ++ring) {
            const float t = static_cast<float>(ring) / kIrisRings;
            drawDisc(0.5, 4.0 * t - 0.5, 10.0 * (1.0 - 0.95 * t), ramp(kIris, t));
        }
        drawDisc(0.5, -0.5, 4.9, glm::vec3(0.0F));
        for (int shadow = 0; shadow < 6; ++shadow) {
            cairo_rectangle(pen, -20, -20, 40, 11.5 + 1.6 * shadow);
            drawing_.setColour(glm::vec3(0.0F), 0.24F);
            cairo_fill(pen);
        }
        cairo_restore(pen);
        cairo_scale(pen, side, 1);
        drawDisc(-3.4, -3.6, 2.9, colour(0xfff8e8));
        drawDisc(4.2, 3.0, 1.3, colour(0xffcc80), 0.8F);
        cairo_restore(pen);
    }

    dog::Solid solid_;
    Raster<Surface> surfaces_{kWidth, kHeight, Surface()};
    dog::Drawing drawing_{kWidth, kHeight};
};

// The ground under the picture has darks of its own, so lit fur is brought close to full light and
// shadows close to none.
void printHard(Picture& picture)
{
    picture.fill([&](int x, int y) {
        const glm::vec3 soft(picture.at(x, y));
        const float bright = brightest(soft);
        const float lifted = 1.0F - power(1.0F - bright, 1.4F);
        const float hard = softStep(0.0F, 0.9F, lifted);
        return glm::vec4(soft * (hard / glm::max(0.001F, bright)), 1.0F);
    });
}

void makeDog(const OutputFolder& folder)
{
    Picture picture = Portrait().draw();
    printHard(picture);
    folder.write(picture, 24, "koira.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeDog);
}
