#include "tests/whole_show/golden.h"

#include "tools/record/png_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <png.h>
#include <sstream>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBytesPerPixel = 3;
constexpr int kAmplification = 8; // of what differs, to be seen

void write(const fs::path& file, const Picture& picture)
{
    writePng(file, {picture.width, picture.height}, picture.bytes);
}

// Black where both are the same.
Picture amplifiedDifference(const Picture& one, const Picture& other)
{
    Picture result = one;
    for (std::size_t i = 0; i < std::min(one.bytes.size(), other.bytes.size()); ++i) {
        const int distance = kAmplification * std::abs(one.bytes[i] - other.bytes[i]);
        result.bytes[i] = static_cast<std::uint8_t>(std::min(distance, 255));
    }
    return result;
}

// Writes what is to be seen, and says where.
std::string writeForTheEye(const std::string& name, const Picture& expected, const Picture& got)
{
    const std::string path = "build/golden/" + name;
    fs::create_directories("build/golden");
    write(path + "-got.png", got);
    write(path + "-expected.png", expected);
    write(path + "-difference.png", amplifiedDifference(got, expected));
    return "look at " + path + "-{expected,got,difference}.png";
}

} // namespace

Picture readPng(const fs::path& file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_file(&image, file.c_str());
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr);
    EXPECT_FALSE(PNG_IMAGE_FAILED(image)) << file << ": " << image.message;
    return {static_cast<int>(image.width), static_cast<int>(image.height), std::move(bytes)};
}

Picture scaledDown(const Picture& picture, int factor)
{
    Picture small{picture.width / factor, picture.height / factor, {}};
    const int rowBytes = picture.width * static_cast<int>(kBytesPerPixel);
    for (int i = 0; i < small.width * small.height * static_cast<int>(kBytesPerPixel); ++i) {
        const int channel = i % 3;
        const int x = i / 3 % small.width * factor;
        const int y = i / 3 / small.width * factor;
        int sum = 0;
        for (int j = 0; j < factor * factor; ++j) {
            const int at = (y + j / factor) * rowBytes + (x + j % factor) * 3 + channel;
            sum += picture.bytes.at(static_cast<std::size_t>(at));
        }
        small.bytes.push_back(static_cast<std::uint8_t>(sum / (factor * factor)));
    }
    return small;
}

Difference differenceBetween(const Picture& one, const Picture& other)
{
    if (one.width != other.width || one.bytes.size() != other.bytes.size() || one.bytes.empty()) {
        return {};
    }
    Difference difference{0, 0.0};
    for (std::size_t i = 0; i < one.bytes.size(); ++i) {
        const int distance = std::abs(one.bytes[i] - other.bytes[i]);
        difference.largest = std::max(difference.largest, distance);
        difference.mean += distance / static_cast<double>(one.bytes.size());
    }
    return difference;
}

void expectGolden(const std::string& name, const Picture& picture, const Difference& allowed)
{
    const fs::path file = "tests/whole_show/golden/" + name + ".png";
    if (std::getenv("KSO_RECORD_GOLDEN") != nullptr) {
        write(file, picture);
        ADD_FAILURE() << file << " is written anew: look at it, then run without "
                      << "KSO_RECORD_GOLDEN";
        return;
    }
    const Picture expected = readPng(file);
    const Difference difference = differenceBetween(picture, expected);
    if (difference.largest > allowed.largest || difference.mean > allowed.mean) {
        std::ostringstream text; // rounds where a failure's own stream writes every digit
        text << name << " differs by " << difference.mean << " on average (allowed " << allowed.mean
             << ") and by at most " << difference.largest << " (allowed " << allowed.largest
             << "); " << writeForTheEye(name, expected, picture);
        ADD_FAILURE() << text.str();
    }
}
