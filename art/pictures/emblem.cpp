// The quenta mark: the dog's eye in a whorl of its fur, which parts into five locks, and the word
// with an engraver's shading. Only the upper 96 rows are on screen, of which the mark leaves 24
// free, as many as columns on its left. Pure black is what the scene takes out.
#include "art/pictures/dog/drawing.h"
#include "art/pictures/dog/eye.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"
#include "art/type/font.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/vec2.hpp>
#include <vector>

namespace {

constexpr int kWidth = 256;
constexpr int kHeight = 128;
constexpr int kFiner = 4; // drawn this much larger, then averaged
constexpr unsigned kSeed = 5;

constexpr glm::dvec2 kWhorlMiddle(43.4, 49.4);
constexpr double kWhorlSize = 0.55; // of what follows, on the picture

// The whorl around its middle, in lengths that are pixels before it is set down, and in turns.
constexpr float kRoots = 11.5F; // where its fur begins
constexpr float kTips = 45.0F;
constexpr int kLocks = 5;
constexpr int kStrands = 5;      // of a lock
constexpr float kTwist = 0.24F;  // from the roots to the tips
constexpr float kGather = 1.12F; // how far a lock narrows
constexpr int kHairs = 5000;
constexpr int kJoints = 9;
constexpr double kHairGround = 6.4; // how wide the dark ground under a hair is
constexpr double kIrisSize = 0.86;

constexpr double kWordLeft = 76;
constexpr double kWordBaseline = 59.5;
constexpr double kCapHeight = 20;
constexpr double kGroundWidth = 2.0;
constexpr double kShadeReach = 1.6; // to the right and down
constexpr float kHatching = 2.0F;   // from line to line

const std::array kAmber = {colour(0x120803), colour(0x5c2c0e), colour(0xc0762c), colour(0xf2bf74),
                           colour(0xfff0d2)};
const glm::vec3 kIvory = colour(0xd8c6a4);
const glm::vec3 kHatch = colour(0x9a5a24);
const glm::vec3 kGround = colour(0x0c0704); // never pure black
const glm::vec3 kToLight = glm::normalize(glm::vec3(-0.62F, -0.62F, 0.5F));

struct Hair {
    float from; // its root's distance from the middle
    float length;
    int lock;
    float across; // its lock, -1 to 1
    float shade;
};

std::vector<Hair> hairs()
{
    Random random(kSeed);
    std::vector<Hair> hairs;
    for (int i = 0; i < kHairs; ++i) {
        const float from = glm::mix(kRoots, kTips - 9.0F, random.next());
        const float length = random.between(8.0F, 15.0F);
        hairs.push_back(
            {from, length, i % kLocks, random.between(-1.0F, 1.0F), random.between(0.7F, 1.25F)});
    }
    // Fur that grows nearer to the middle lies over what is behind it.
    std::stable_sort(hairs.begin(), hairs.end(),
                     [](const Hair& a, const Hair& b) { return a.from > b.from; });
    return hairs;
}

// Which strand of its lock a hair belongs to.
struct Strand {
    std::uint32_t number; // random bits of its own
    float middle;         // across the lock, -1 to 1
    float off;            // how far the hair is from there, as a share of the strand: -1 to 1
};

Strand strandOf(const Hair& hair)
{
    const float strand = (hair.across + 1.0F) / 2.0F * kStrands;
    return {hash(hair.lock, static_cast<int>(strand), 1),
            2.0F * (std::floor(strand) + 0.5F) / kStrands - 1.0F,
            2.0F * (strand - std::floor(strand)) - 1.0F};
}

std::vector<glm::vec2> jointsOf(const Hair& hair, const Strand& strand)
{
    const float reach = kTips - 13.0F * std::fabs(strand.middle) - 2.0F * unit(strand.number);
    std::vector<glm::vec2> joints;
    for (int i = 0; i < kJoints; ++i) {
        const float t = static_cast<float>(i) / (kJoints - 1);
        const float radius = std::min(hair.from + hair.length * t, reach + 1.5F * t);
        const float out = (radius - kRoots) / (kTips - kRoots);
        const float across = glm::mix(hair.across, strand.middle, 0.75F * out * out);
        const float narrow = 1.22F - kGather * out;
        const float turn = (static_cast<float>(hair.lock) + 0.5F * across * narrow) / kLocks +
                           kTwist * std::sqrt(out);
        joints.push_back(radius * glm::vec2(sine(turn * kFullTurn), -cosine(turn * kFullTurn)));
    }
    return joints;
}

// A lock is round and so is each of its strands; hairs are dark at a strand's sides.
float toneOf(const Hair& hair, const Strand& strand, glm::vec2 way)
{
    const glm::vec2 aside(-way.y, way.x);
    const glm::vec3 normal =
        glm::normalize(glm::vec3(aside * (0.9F * hair.across + 0.5F * strand.off), 0.7F));
    const float light = glm::max(0.0F, glm::dot(normal, kToLight));
    const float deep = 1.0F - 0.6F * strand.off * strand.off;
    return (0.10F + 0.95F * light) * deep * (0.8F + 0.3F * unit(strand.number << 7U)) * hair.shade;
}

// `ground` is white where something dark belongs under the fur.
void drawHair(const Hair& hair, dog::Drawing& fur, dog::Drawing& ground)
{
    const Strand strand = strandOf(hair);
    const std::vector<glm::vec2> joints = jointsOf(hair, strand);
    const float tone = toneOf(hair, strand, glm::normalize(joints.back() - joints.front()));
    fur.fillHair(joints, 1.2F, ramp(kAmber, 0.3F * tone), ramp(kAmber, tone));
    for (const glm::vec2 joint : joints) {
        cairo_line_to(ground.pen(), joint.x, joint.y);
    }
    cairo_set_line_width(ground.pen(), kHairGround);
    ground.setColour(glm::vec3(1.0F));
    cairo_stroke(ground.pen());
}

void drawEye(dog::Drawing& fur, dog::Drawing& ground)
{
    ground.fillDisc({0, 0}, kRoots + 1.0, glm::vec3(1.0F));
    cairo_t* pen = fur.pen();
    cairo_save(pen);
    fur.fillDisc({0, 0}, kRoots + 1.0, kGround);
    cairo_scale(pen, kIrisSize, kIrisSize);
    dog::drawIris(fur, {0, 0});
    fur.fillDisc({-3.2, -3.2}, 2.6, colour(0xfffaf0));
    cairo_restore(pen);
}

// The word, grown by a distance and moved to the right and down.
GreyPicture wordMask(double growth, double aside)
{
    VectorLayer layer(kWidth, kHeight);
    layer.addType("QUENTA", kWordLeft + aside, kWordBaseline + aside, kCapHeight, Weight::kBold);
    if (growth > 0.0) {
        cairo_set_line_width(layer.pen(), 2 * growth);
        cairo_set_line_join(layer.pen(), CAIRO_LINE_JOIN_ROUND);
        cairo_stroke_preserve(layer.pen());
    }
    cairo_fill(layer.pen());
    return layer.coverage();
}

// The word with the lines of an engraver's shade, over a picture.
struct Word {
    GreyPicture letters = wordMask(0.0, 0.0);
    GreyPicture around = wordMask(1.0, 0.0);
    GreyPicture shade = wordMask(0.0, kShadeReach);
    GreyPicture ground = wordMask(kGroundWidth, 0.0);
    GreyPicture groundOfShade = wordMask(kGroundWidth, kShadeReach);

    [[nodiscard]] float groundAt(int x, int y) const
    {
        return std::max(ground.at(x, y), groundOfShade.at(x, y));
    }

    [[nodiscard]] glm::vec3 over(glm::vec3 pixel, int x, int y) const
    {
        const float line = offWhole(static_cast<float>(y) / kHatching) > 0.25F ? 1.0F : 0.25F;
        const float hatch = line * shade.at(x, y) * (1.0F - around.at(x, y));
        return glm::mix(glm::mix(pixel, kHatch, hatch), kIvory, letters.at(x, y));
    }
};

void setDown(dog::Drawing& drawing)
{
    cairo_translate(drawing.pen(), kWhorlMiddle.x, kWhorlMiddle.y);
    cairo_scale(drawing.pen(), kWhorlSize, kWhorlSize);
}

void makeEmblem(const OutputFolder& folder)
{
    dog::Drawing fur(kWidth, kHeight, kFiner);
    dog::Drawing furGround(kWidth, kHeight, kFiner);
    setDown(fur);
    setDown(furGround);
    for (const Hair& hair : hairs()) {
        drawHair(hair, fur, furGround);
    }
    drawEye(fur, furGround);
    const Picture whorl = fur.picture();
    const Picture whorlGround = furGround.picture();
    folder.keepStage(whorl, "emblem-1-whorl.tga");

    const Word word;
    Picture picture(kWidth, kHeight, glm::vec4(0.0F, 0.0F, 0.0F, 1.0F));
    picture.fill([&](int x, int y) {
        if (std::max(whorlGround.at(x, y).r, word.groundAt(x, y)) < 0.5F) {
            return glm::vec4(0.0F, 0.0F, 0.0F, 1.0F);
        }
        return glm::vec4(word.over(glm::max(kGround, glm::vec3(whorl.at(x, y))), x, y), 1.0F);
    });
    folder.write(picture, 32, "quentalogo.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeEmblem);
}
