#include "image/hsi_raw_reader.h"

#include "base/fatal.h"
#include "image/picture_file.h"
#include "image/pixel_conversion.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

void readHsiRaw(const char* path, LoadedImage& image)
{
    PictureFile file{path};
    std::array<std::uint8_t, 32> header{};
    file.read(header.data(), header.size());
    if (header[0] != 'm' || header[1] != 'h' || header[2] != 'w') {
        fatal(stderr, 0, "\n\nError! Not valid HSIRAW!!\n\n");
    }
    const auto readBe16 = [&](std::size_t at) { return 256 * header[at] + header[at + 1]; };
    image.width = readBe16(8);
    image.height = readBe16(10);
    const int colours = readBe16(12);

    if (colours > 256) {
        fatal(stderr, 0, "\n\nError! Too many colors!!\n\n");
    }
    image.bpp = colours == 0 ? 24 : 8;
    file.read(image.palette.data()->data(), 3 * static_cast<std::size_t>(colours));

    const std::size_t pixelSize = pixelBytes(image.bpp);
    image.pixels =
        allocatePicture(image.width, image.height, pixelSize, file.remaining() / pixelSize);
    if (image.pixels == nullptr) {
        fatal(stderr, 0, "\n\nMemory allocation failed!!\n\n");
    }
    file.read(image.pixels.get(), static_cast<std::size_t>(image.width) *
                                      static_cast<std::size_t>(image.height) * pixelSize);
}
