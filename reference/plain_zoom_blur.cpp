#include "reference/plain_zoom_blur.h"

#include <array>
#include <bit>
#include <cstddef>

PlainBlur::PlainBlur(int width, int height) : width_{width}, height_{height}
{
    const int halfWidth = width / 2;
    const int halfHeight = height / 2;
    for (int level = 0; level < 20; ++level) {
        const double scale = 1.0 + level * 0.1;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int sourceY = static_cast<int>(halfHeight + (y - halfHeight) * scale);
                const int sourceX = static_cast<int>(halfWidth + (x - halfWidth) * scale);
                const bool inside =
                    sourceY >= 0 && sourceY < height && sourceX >= 0 && sourceX < width;
                table_.push_back(inside ? (sourceY * width + sourceX) * 4 : 0);
            }
        }
    }
}

void PlainBlur::render(const std::uint8_t* source, std::uint32_t* target, int levels) const
{
    const std::size_t pixels = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    for (std::size_t i = 0; i < pixels; ++i) {
        std::array<std::uint32_t, 3> sums{};
        std::uint32_t count = 0;
        for (int level = 0; level < levels; ++level) {
            const std::int32_t offset = table_[static_cast<std::size_t>(level) * pixels + i];
            if (offset == 0) {
                break;
            }
            for (std::size_t c = 0; c < sums.size(); ++c) {
                sums[c] += source[static_cast<std::size_t>(offset) + c];
            }
            ++count;
        }
        if (count == 0) {
            sums = {source[0], source[1], source[2]};
            count = 1;
        }
        const std::array<std::uint8_t, 4> pixel = {static_cast<std::uint8_t>(sums[0] / count),
                                                   static_cast<std::uint8_t>(sums[1] / count),
                                                   static_cast<std::uint8_t>(sums[2] / count), 0};
        target[i] = std::bit_cast<std::uint32_t>(pixel);
    }
}
