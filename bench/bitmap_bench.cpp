#include "bench/rows.h"
#include "image/bitmap.h"
#include "reference/plain_bitmap.h"
#include "render/line_set.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr unsigned kWidth = 512;
constexpr unsigned kHeight = 256;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;
constexpr std::size_t kBytes = kPixels * 4;

Bitmap& canvas()
{
    static Bitmap bitmap;
    return bitmap;
}

std::vector<std::uint8_t>& other()
{
    static std::vector<std::uint8_t> bytes(kBytes);
    return bytes;
}

// A line canvas as the opening scene leaves it: much black, and edges everywhere.
void drawFigure(std::uint8_t* pixels)
{
    LineSet lines;
    lines.create(600);
    lines.generate(2);
    lines.setTarget(pixels, kWidth, kHeight);
    lines.setThickness(3);
    lines.setPosition(0.0F, 0.0F, -4.0F);
    lines.transform();
    lines.draw();
}

// Every other pixel black, by chance.
void scatter(std::uint8_t* pixels)
{
    std::mt19937 random{1};
    for (std::size_t i = 0; i < kPixels; ++i) {
        const auto word = random() % 2 == 0 ? 0U : static_cast<std::uint32_t>(random());
        std::memcpy(pixels + i * 4, &word, 4);
    }
}

void addColourKeyRow(const char* row, void (*paint)(std::uint8_t*))
{
    const auto bitmap = std::make_shared<Bitmap>();
    bitmap->create(kWidth, kHeight, 32);
    bitmap->clear();
    paint(bitmap->getPixels());
    bitmap->setAlpha(1.0F);

    std::vector<std::uint8_t> expected(bitmap->getPixels(), bitmap->getPixels() + kBytes);
    PlainBitmap{expected.data(), kWidth, kHeight}.setColourKeyAlpha(0, 0, 0, 0);
    bitmap->setColourKeyAlpha(0, 0, 0, 0);
    requireSame(std::equal(expected.begin(), expected.end(), bitmap->getPixels()), row);

    addForm(row, "kso", [bitmap] { bitmap->setColourKeyAlpha(0, 0, 0, 0); });
    const auto plain = std::make_shared<PlainBitmap>();
    *plain = {bitmap->getPixels(), kWidth, kHeight}; // the other form keeps them alive
    addForm(row, "plain", [plain] { plain->setColourKeyAlpha(0, 0, 0, 0); });
}

} // namespace

void addBitmapRows()
{
    canvas().create(kWidth, kHeight, 32);
    scatter(canvas().getPixels());
    std::copy_n(canvas().getPixels(), kBytes, other().begin());
    canvas().setAlpha(0.5F);
    PlainBitmap{other().data(), kWidth, kHeight}.setAlpha(0.5F);
    requireSame(std::equal(other().begin(), other().end(), canvas().getPixels()), "setAlpha");

    addForm("clear 512x256", "kso", [] { canvas().clear(); });
    addForm("clear 512x256", "memset", [] { std::memset(canvas().getPixels(), 0, kBytes); });

    addForm("setAlpha 512x256", "kso", [] { canvas().setAlpha(1.0F); });
    static PlainBitmap plain = {canvas().getPixels(), kWidth, kHeight};
    addForm("setAlpha 512x256", "plain", [] { plain.setAlpha(1.0F); });
    addForm("setAlpha 512x256", "memcpy",
            [] { std::memcpy(other().data(), canvas().getPixels(), kBytes); });

    addColourKeyRow("setColourKeyAlpha 512x256, figure", drawFigure);
    addColourKeyRow("setColourKeyAlpha 512x256, scattered", scatter);
}
