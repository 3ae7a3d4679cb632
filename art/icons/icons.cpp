// The program's icons: the eclipse of the twister's landscape, whose sky is worked out anew for
// each size, on a tile with round corners. The cold light turns to embers on its lower right, as
// the show does on its way. Small icons come nearer to the moon and have a brighter ring.
//
//   make_icons OUTPUT_FOLDER
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/picture.h"
#include "art/pictures/landscape/sky.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

struct Icon {
    int size;
    float across; // how much of the landscape's screen is seen, in its pixels
    float ring;   // light that is added along the moon's edge
    int finer;    // drawn this much larger, then averaged
};
constexpr std::array kIcons = {
    Icon{16,  128.0F, 0.90F, 8},
    Icon{22,  130.0F, 0.80F, 8},
    Icon{24,  130.0F, 0.75F, 8},
    Icon{32,  134.0F, 0.60F, 8},
    Icon{48,  142.0F, 0.35F, 6},
    Icon{64,  148.0F, 0.25F, 4},
    Icon{128, 160.0F, 0.10F, 3},
    Icon{256, 166.0F, 0.00F, 2},
    Icon{512, 166.0F, 0.00F, 2},
};

constexpr float kMoonRadius =
    45.0F;                          // of the landscape's moon, a pixel less than where light begins
constexpr float kMargin = 0.04F;    // around the tile, as a share of the icon
constexpr float kCorner = 0.20F;    // its corners' radius
constexpr float kGain = 1.4F;       // an icon is looked at beside bright windows
constexpr float kDarkening = 30.0F; // pixels of the landscape in which the sky grows dark
const glm::vec2 kToEmbers = glm::normalize(glm::vec2(0.75F, 0.66F));
const glm::vec3 kEmber = colour(0xff9a4a);
const glm::vec3 kColdRing = colour(0xdff2ff);

// How far outside of the tile a place is, in shares of the icon; negative inside. The icon reaches
// from -0.5 to 0.5.
float outsideTile(glm::vec2 place)
{
    const glm::vec2 beyond = glm::abs(place) - (0.5F - kMargin - kCorner);
    const float corner = glm::length(glm::max(beyond, 0.0F));
    return corner + glm::min(glm::max(beyond.x, beyond.y), 0.0F) - kCorner;
}

// The sky around the moon. `way` is from its middle, in the landscape's pixels.
glm::vec3 eclipseAt(glm::vec2 way, float ring)
{
    const float away = glm::length(way);
    const float warm = softStep(-0.35F, 0.75F, glm::dot(way / glm::max(away, 1.0F), kToEmbers)) *
                       softStep(kMoonRadius * 0.95F, kMoonRadius * 1.05F, away);
    glm::vec3 sky = kGain * landscape::skyAt(landscape::kMoon + way);
    const float off = (away - kMoonRadius - 1.5F) / 3.0F;
    sky += ring * exponential(-off * off) * kColdRing;
    sky *= 0.22F + 0.78F * exponential(-glm::max(0.0F, away - kMoonRadius) / kDarkening);
    // As bright as before, of another colour.
    return glm::mix(sky, brightest(sky) * kEmber, 0.85F * warm);
}

constexpr int kWindowIcon = 64;

Picture drawIcon(const Icon& icon)
{
    const int size = icon.size * icon.finer;
    const float pixel = 1.0F / static_cast<float>(size);
    Picture large(size, size);
    large.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) * pixel - 0.5F;
        const float inside = glm::clamp(0.5F - outsideTile(place) / pixel, 0.0F, 1.0F);
        const glm::vec3 sky = glm::clamp(eclipseAt(place * icon.across, icon.ring), 0.0F, 1.0F);
        return glm::vec4(sky * inside, inside); // multiplied with its alpha, as Cairo keeps it
    });
    return large.shrunk(icon.finer);
}

void writePng(const Picture& picture, const std::string& path)
{
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, picture.width(), picture.height()),
        cairo_surface_destroy);
    cairo_surface_flush(surface.get());
    std::uint8_t* const bytes = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const glm::vec4 value = glm::round(picture.at(x, y) * 255.0F);
            const auto part = [&](int i) { return static_cast<std::uint32_t>(value[i]); };
            const std::uint32_t pixel = part(3) << 24U | part(0) << 16U | part(1) << 8U | part(2);
            reinterpret_cast<std::uint32_t*>(bytes + std::ptrdiff_t{y} * stride)[x] = pixel;
        }
    }
    cairo_surface_mark_dirty(surface.get());
    if (cairo_surface_write_to_png(surface.get(), path.c_str()) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot write " + path);
    }
}

// A bitmap file with alpha, which SDL can read for the window's icon: a header of the fourth
// version, and rows from the bottom up.
void writeBmp(const Picture& picture, const std::string& path)
{
    constexpr std::uint32_t kFileHeaderBytes = 14;
    constexpr std::uint32_t kHeaderBytes = 108;
    constexpr std::uint32_t kBitfields = 3; // the masks say where the colours are
    const auto width = static_cast<std::uint32_t>(picture.width());
    const auto height = static_cast<std::uint32_t>(picture.height());
    const std::uint32_t begin = kFileHeaderBytes + kHeaderBytes;

    std::ofstream file(path, std::ios::binary);
    const auto put = [&](std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            file.put(static_cast<char>(value >> 8 * i & 0xFFU));
        }
    };
    file << "BM";
    for (const std::uint32_t value :
         {begin + 4 * width * height, 0U, begin, kHeaderBytes, width, height, 1U | 32U << 16U,
          kBitfields, 0U, 0U, 0U, 0U, 0U, 0x00FF0000U, 0x0000FF00U, 0x000000FFU, 0xFF000000U}) {
        put(value, 4);
    }
    file << "BGRs"; // the usual colours; what would describe others follows
    file << std::string(48, '\0');
    for (int y = picture.height() - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width(); ++x) {
            const glm::vec4 value = picture.at(x, y);
            const glm::vec3 colour = glm::vec3(value) / glm::max(value.a, 1.0F / 255.0F);
            const glm::vec4 straight = glm::round(glm::vec4(colour, value.a) * 255.0F);
            for (const int channel : {2, 1, 0, 3}) {
                put(static_cast<std::uint32_t>(straight[channel]), 1);
            }
        }
    }
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_FOLDER\n", argv[0]);
        return 2;
    }
    try {
        for (const Icon& icon : kIcons) {
            const std::string path =
                std::string(argv[1]) + "/kso-" + std::to_string(icon.size) + ".png";
            writePng(drawIcon(icon), path);
            std::printf("%s\n", path.c_str());
            if (icon.size == kWindowIcon) {
                writeBmp(drawIcon(icon), std::string(argv[1]) + "/window.bmp");
            }
        }
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s: %s\n", argv[0], fault.what());
        return 1;
    }
    return 0;
}
