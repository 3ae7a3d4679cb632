#include "tools/record/png_file.h"

#include "tools/record/output_file.h"
#include "tools/record/record_error.h"

#include <png.h>

void writePng(const std::filesystem::path& file, PictureSize size,
              std::span<const std::uint8_t> pixels)
{
    requireFile(file);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(size.width);
    image.height = static_cast<png_uint_32>(size.height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, file.c_str(), 0, pixels.data(), 0, nullptr) == 0) {
        throw RecordError("cannot write " + file.string() + ": " +
                          static_cast<const char*>(image.message));
    }
}
