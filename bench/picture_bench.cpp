#include "bench/rows.h"
#include "image/bitmap.h"
#include "reference/picture_files.h"
#include "reference/plain_picture.h"

#include <algorithm>
#include <array>
#include <malloc.h>
#include <memory>
#include <string>
#include <utility>

#if defined(KSO_BENCH_STB)
#include <stb_image.h>
#endif
#if defined(KSO_BENCH_SDL_IMAGE)
#include <SDL_image.h>
#endif
#if defined(KSO_BENCH_GDK_PIXBUF)
#include <gdk-pixbuf/gdk-pixbuf.h>
#endif

namespace {

struct Kind {
    const char* name;
    unsigned type;
    unsigned bits;
    unsigned descriptor;
    std::size_t run; // of equal pixels in the noise; 0 for none
    bool peersAgree; // that pixels without alpha are opaque, and how 5 bits become 8
};

constexpr std::array kKinds = {
    Kind{"24-bit raw",                    2,  24, 0,  0,   true },
    Kind{"32-bit raw",                    2,  32, 8,  0,   true },
    Kind{"24-bit run-length, long runs",  10, 24, 0,  300, true },
    Kind{"24-bit run-length, no runs",    10, 24, 0,  0,   true },
    Kind{"24-bit run-length, short runs", 10, 24, 0,  6,   true },
    Kind{"8-bit mapped raw",              1,  8,  0,  0,   true },
    Kind{"15-bit raw",                    2,  16, 1,  0,   false},
    Kind{"24-bit raw, mirrored",          2,  24, 16, 0,   false},
};

bool samePixels(const Bitmap& bitmap, const std::uint8_t* pixels)
{
    const std::size_t bytes = std::size_t{4} * bitmap.getWidth() * bitmap.getHeight();
    return std::equal(pixels, pixels + bytes, bitmap.getPixels());
}

// Libraries that read the same files; all but the first leave out the conversion to 32 bits.
void addPeers([[maybe_unused]] const std::string& row, [[maybe_unused]] bool peersAgree,
              [[maybe_unused]] const std::shared_ptr<TemporaryFile>& file,
              [[maybe_unused]] const Bitmap& expected)
{
#if defined(KSO_BENCH_STB)
    const auto stbLoad = [file] {
        int width = 0;
        int height = 0;
        int channels = 0;
        return std::unique_ptr<stbi_uc, void (*)(void*)>{
            stbi_load(file->path(), &width, &height, &channels, 4), stbi_image_free};
    };
    const auto pixels = stbLoad();
    if (pixels != nullptr && (!peersAgree || samePixels(expected, pixels.get()))) {
        addForm(row, "stb_image", [stbLoad] { stbLoad(); });
    }
#endif
#if defined(KSO_BENCH_SDL_IMAGE)
    const auto sdlLoad = [file] {
        std::string type = "TGA"; // which the library does not find out by itself
        SDL_Surface* surface = IMG_LoadTyped_RW(SDL_RWFromFile(file->path(), "rb"), 1, type.data());
        SDL_FreeSurface(surface);
        return surface != nullptr;
    };
    if (sdlLoad()) {
        addForm(row, "SDL_image", sdlLoad);
    }
#endif
#if defined(KSO_BENCH_GDK_PIXBUF)
    if (GdkPixbuf* picture = gdk_pixbuf_new_from_file(file->path(), nullptr); picture != nullptr) {
        g_object_unref(picture);
        addForm(row, "GdkPixbuf",
                [file] { g_object_unref(gdk_pixbuf_new_from_file(file->path(), nullptr)); });
    }
#endif
}

void addLoadRow(const Kind& kind, unsigned size)
{
    const std::size_t count = std::size_t{size} * size;
    const TgaShape shape = {.type = kind.type,
                            .width = size,
                            .height = size,
                            .bits = kind.bits,
                            .descriptor = kind.descriptor,
                            .entries = kind.type == 1 ? 256U : 0U};
    const auto file = std::make_shared<TemporaryFile>(
        makeTga(shape, makePixels(count, (kind.bits + 7) / 8, kind.run)));
    const std::string row =
        std::string{kind.name} + " " + std::to_string(size) + "x" + std::to_string(size);

    Bitmap bitmap;
    bitmap.load(file->path(), 32);
    const PlainPicture plain = plainConvert(plainReadTga(file->path()), 32);
    requireSame(samePixels(bitmap, plain.pixels.data()), row.c_str());

    addForm(row, "kso", [file] { Bitmap{}.load(file->path(), 32); });
    addForm(row, "plain", [file] { plainConvert(plainReadTga(file->path()), 32); });
    addPeers(row, kind.peersAgree, file, bitmap);
}

void addConversionRow(int sourceBpp, unsigned bpp)
{
    constexpr unsigned kSize = 512;
    const std::string row = "convertFrom 512x512, " + std::to_string(sourceBpp) + " to " +
                            std::to_string(bpp) + " bits";
    const auto bitmap = std::make_shared<Bitmap>();
    bitmap->create(kSize, kSize, bpp);
    const auto source = std::make_shared<Bytes>(makePixels(std::size_t{kSize} * kSize, 4, 0));
    const auto expected = std::make_shared<Bytes>(std::size_t{kSize} * kSize * bpp / 8);
    const auto plain = [=] {
        plainConvertPixels(source->data(), sourceBpp, expected->data(), static_cast<int>(bpp),
                           std::size_t{kSize} * kSize, {});
    };
    bitmap->convertFrom(source->data(), sourceBpp);
    plain();
    requireSame(std::equal(expected->begin(), expected->end(), bitmap->getPixels()), row.c_str());
    addForm(row, "kso", [=] { bitmap->convertFrom(source->data(), sourceBpp); });
    addForm(row, "plain", plain);
}

} // namespace

void addPictureRows()
{
    // Memory that was freed stays in the process, so that no form is timed by the pages that the
    // kernel has to clear for it.
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);

    for (const Kind& kind : kKinds) {
        for (const unsigned size : {256U, 1024U}) {
            addLoadRow(kind, size);
        }
    }
    for (const int sourceBpp : {8, 15, 16, 24}) {
        addConversionRow(sourceBpp, 32);
    }
}
