// The quenta mark, engraved like a seal: a band knotted into five loops around a small sun, and the
// word. Only the upper 96 rows are on screen. Pure black is what the scene takes out.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/vec2.hpp>
#include <limits>
#include <optional>
#include <vector>

namespace {

constexpr int kWidth = 256;
constexpr int kHeight = 128;
constexpr int kFiner = 4; // drawn this much larger, then averaged

constexpr glm::vec2 kSeal(49.0F, 48.0F);
constexpr float kRim = 44.0F;
constexpr int kTicks = 60;

// The band follows this circle twice, swinging out and in five times.
constexpr float kCircle = 25.0F;
constexpr float kSwing = 9.5F;
constexpr int kLoops = 5;
constexpr float kBand = 4.6F;      // half its width
constexpr float kBandLines = 2.5F; // from its middle to its edge
constexpr float kGap = 1.4F;
constexpr int kBandPlaces = 600;

constexpr double kWordLeft = 106;
constexpr double kWordBaseline = 66;
constexpr double kCapHeight = 37;
constexpr float kTail = 0.05F;    // how far the Q hangs below, in heights of a capital
constexpr float kHatching = 2.6F; // from line to line
constexpr double kGroundWidth = 2.5;

const std::array kAmber = {colour(0x1d0d04), colour(0x6b3a12), colour(0xc98a3a), colour(0xf3d79a),
                           colour(0xfff6e0)};
const glm::vec3 kGround = colour(0x0a0603); // never pure black

struct BandPlace {
    glm::vec2 place;
    float height; // above 0 it passes over, below 0 under
};

std::vector<BandPlace> bandPlaces()
{
    std::vector<BandPlace> band;
    for (int i = 0; i < kBandPlaces; ++i) {
        const float angle = 2.0F * kFullTurn * static_cast<float>(i) / kBandPlaces;
        const float swing = angle * kLoops / 2.0F;
        const float radius = kCircle + kSwing * cosine(swing);
        // A quarter turn on, so that one loop points up.
        const glm::vec2 direction(sine(angle), -cosine(angle));
        band.push_back({kSeal + radius * direction, sine(swing)});
    }
    return band;
}

// What is engraved at a place: how far it is lit, and whether anything is there.
struct Mark {
    float tone = 0.0F;
    float cover = 0.0F;
};

// 1 within half a width of the edge-on line, falling to 0 within about a pixel.
float lineAt(float distance, float width)
{
    return softStep(width / 2 + 0.35F, width / 2 - 0.35F, distance);
}

// The place of the band that is nearest, or the nearest one far along the band from `other`.
std::size_t nearestPlace(const std::vector<BandPlace>& band, glm::vec2 place,
                         std::optional<std::size_t> other)
{
    std::size_t nearest = 0;
    float distance = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < band.size(); ++i) {
        const std::size_t along = (i + band.size() - other.value_or(0)) % band.size();
        const bool isSamePass = std::min(along, band.size() - along) < band.size() / 8;
        const float here = glm::distance(place, band[i].place);
        if (here < distance && !(other && isSamePass)) {
            distance = here;
            nearest = i;
        }
    }
    return nearest;
}

// Lines along the band, which swell where it faces the light, between two bright edges.
float bandTone(glm::vec2 way)
{
    const float distance = glm::length(way);
    const float side = glm::dot(way, glm::vec2(-0.6F, -0.8F)) > 0.0F ? 1.0F : -1.0F;
    const float facing = 0.5F + 0.5F * side * distance / kBand;
    const float lines = distance / kBand * kBandLines;
    const float offLine = std::fabs(lines - std::floor(lines) - 0.5F) / kBandLines * kBand;
    const float edge = lineAt(std::fabs(distance - kBand + 0.5F), 1.0F);
    const float inside = softStep(kBand, kBand - 0.4F, distance);
    const float hatch = lineAt(offLine, 0.35F + 0.75F * facing);
    return std::max(edge * (0.55F + 0.4F * facing), inside * hatch * (0.35F + 0.6F * facing));
}

// The pass of the band that is on top; it stands clear of the one below.
Mark bandAt(const std::vector<BandPlace>& band, glm::vec2 place)
{
    const std::size_t first = nearestPlace(band, place, std::nullopt);
    const std::size_t second = nearestPlace(band, place, first);
    Mark top;
    float highest = -2.0F;
    for (const std::size_t i : {first, second}) {
        const glm::vec2 way = place - band[i].place;
        if (glm::length(way) < kBand + kGap && band[i].height > highest) {
            highest = band[i].height;
            top = {bandTone(way), 1.0F};
        }
    }
    return top;
}

Mark rimAt(glm::vec2 place)
{
    const glm::vec2 way = place - kSeal;
    const float radius = glm::length(way);
    const float angle = angleOf(way.x, way.y) / kFullTurn * kTicks;
    const float offTick = offWhole(angle) * kFullTurn * radius / kTicks;
    Mark mark;
    const float ticks =
        lineAt(offTick, 0.8F) * softStep(39.2F, 39.8F, radius) * softStep(42.2F, 41.6F, radius);
    mark.tone =
        std::max({0.9F * lineAt(std::fabs(radius - kRim), 1.3F), 0.6F * ticks,
                  0.7F * lineAt(std::fabs(radius - 38.2F), 0.6F),
                  // The sun in the middle, with two rings like those of a tree.
                  softStep(3.6F, 2.9F, radius), 0.8F * lineAt(std::fabs(radius - 6.2F), 0.9F),
                  0.55F * lineAt(std::fabs(radius - 9.0F), 0.7F)});
    mark.cover = radius < kRim + 2.5F ? 1.0F : 0.0F;
    return mark;
}

GreyPicture wordMask(double groundWidth)
{
    VectorLayer layer(kWidth * kFiner, kHeight * kFiner);
    cairo_scale(layer.pen(), kFiner, kFiner);
    const double width = VectorLayer::widthOfType("QUENTA", kCapHeight, Weight::kBold);
    layer.addType("QUENTA", kWordLeft, kWordBaseline, kCapHeight, Weight::kBold);
    // Two rules as wide as the word.
    cairo_rectangle(layer.pen(), kWordLeft, kWordBaseline + 6, width, 0.9);
    cairo_rectangle(layer.pen(), kWordLeft, kWordBaseline - kCapHeight - 7, width, 0.9);
    if (groundWidth > 0.0) {
        cairo_set_line_width(layer.pen(), 2 * groundWidth);
        cairo_set_line_join(layer.pen(), CAIRO_LINE_JOIN_ROUND);
        cairo_stroke_preserve(layer.pen());
    }
    cairo_fill(layer.pen());
    return layer.coverage();
}

// The word is white at the top and is drawn in ever finer lines downwards.
float wordTone(glm::vec2 place)
{
    const auto top = static_cast<float>(kWordBaseline - kCapHeight);
    const float down = (place.y - top) / static_cast<float>(kCapHeight);
    if (down < 0.0F || down > 1.0F + kTail) {
        return 0.8F; // the rules
    }
    const float offLine = offWhole((place.y + 0.35F * place.x) / kHatching) * kHatching;
    const float gap = 1.5F * softStep(0.25F, 1.0F, down);
    const float hatch = 1.0F - lineAt(offLine, gap) * softStep(0.2F, 0.45F, down);
    return (0.97F - 0.25F * down) * (0.42F + 0.58F * hatch);
}

void makeEmblem(const OutputFolder& folder)
{
    const std::vector<BandPlace> band = bandPlaces();
    const GreyPicture word = wordMask(0.0);
    const GreyPicture wordGround = wordMask(kGroundWidth);
    Picture fine(kWidth * kFiner, kHeight * kFiner);
    fine.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFiner);
        const Mark rim = rimAt(place);
        const Mark knot = rim.cover > 0.0F ? bandAt(band, place) : Mark{};
        const float tone =
            std::max(knot.cover > 0.0F ? knot.tone : rim.tone, word.at(x, y) * wordTone(place));
        const float cover = std::max(rim.cover, wordGround.at(x, y));
        return glm::vec4(glm::mix(kGround, ramp(kAmber, tone), softStep(0.0F, 0.2F, tone)), cover);
    });
    Picture picture = fine.shrunk(kFiner);
    picture.fill([&](int x, int y) {
        const glm::vec4 pixel = picture.at(x, y);
        return glm::vec4(pixel.a > 0.5F ? glm::vec3(pixel) : glm::vec3(0.0F), 1.0F);
    });
    folder.write(picture, 32, "quentalogo.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeEmblem);
}
