// The radial blur in its plainest form: what ZoomBlur must equal and is measured against.
#pragma once

#include <cstdint>
#include <vector>

class PlainBlur {
public:
    PlainBlur(int width, int height);

    // Averages up to `levels` samples, 1 to 20, for each pixel of `target`. Both pictures have
    // 4-byte pixels and the size above; alpha becomes 0.
    void render(const std::uint8_t* source, std::uint32_t* target, int levels) const;

private:
    int width_;
    int height_;
    // For each of 20 levels and each pixel the sampled pixel's first byte, 0 for none.
    std::vector<std::int32_t> table_;
};
