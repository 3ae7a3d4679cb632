#include "tests/image/picture_checks.h"

#include <algorithm>
#include <array>
#include <cstdio>

Bytes pixelsOf(const Bitmap& bitmap)
{
    const std::size_t count = std::size_t{bitmap.getWidth()} * bitmap.getHeight();
    const std::size_t size = pixelBytes(static_cast<int>(bitmap.getBpp()));
    return {bitmap.getPixels(), bitmap.getPixels() + count * size};
}

void compareWithPlain(const Bytes& file, Load load, PlainRead plainRead)
{
    const TemporaryFile temporary{file};
    for (const int bpp : {plainRead(temporary.path()).bpp, 16, 24, 32}) {
        const PlainPicture expected = plainConvert(plainRead(temporary.path()), bpp);
        Bitmap bitmap;
        bitmap.create(1, 1, 8); // what it holds is given up
        (bitmap.*load)(temporary.path(), static_cast<unsigned>(bpp));
        ASSERT_EQ(bitmap.getWidth(), static_cast<unsigned>(expected.width));
        ASSERT_EQ(bitmap.getHeight(), static_cast<unsigned>(expected.height));
        ASSERT_EQ(pixelsOf(bitmap), expected.pixels) << bpp;
        if (bpp == 8) {
            const std::uint8_t* palette = bitmap.getPalette()->data();
            ASSERT_TRUE(std::equal(expected.palette.begin(), expected.palette.end(), palette));
        }
    }
}

void expectRefusals(const Bytes& good, Load load, const std::vector<Refusal>& refusals)
{
    for (const auto& [patches, message] : refusals) {
        Bytes bad = good;
        for (const auto& [at, byte] : patches) {
            bad[at] = byte;
        }
        const TemporaryFile file{bad};
        std::array<char, 256> text{};
        std::snprintf(text.data(), text.size(), ("^\n\n" + message + "$").c_str(), file.path());
        EXPECT_EXIT((Bitmap{}.*load)(file.path(), 32), kStatus0, text.data());
    }
}
