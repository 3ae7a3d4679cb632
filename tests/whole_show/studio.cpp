#include "tests/whole_show/studio.h"

#include "tests/whole_show/files.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <png.h>
#include <sstream>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

// What hangs is ended.
constexpr const char* kRecord = "/usr/bin/timeout --foreground 120 " KSO_RECORD;

constexpr std::size_t kBytesPerPixel = 3;

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

Difference differenceOf(const Picture& one, const Picture& other)
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

Studio::Studio(const XmModule& module) : folder_(newFolder("studio"))
{
    fs::create_directory(folder_ / "data");
    for (const auto& file : fs::directory_iterator("data")) {
        if (file.path().extension() == ".tga") {
            fs::create_symlink(fs::absolute(file.path()), folder_ / file.path());
        }
    }
    if (!module.patterns.empty()) {
        write(folder_ / "data/olvu.xm", writeXm(module));
    }
}

Studio::~Studio()
{
    fs::remove_all(folder_);
}

Result Studio::run(const std::string& command) const
{
    ::setenv("RECORD", kRecord, 1);
    const std::string whole =
        "cd " + folder_.string() + " && { " + command + "\n} >output 2>errors";
    const int status = std::system(whole.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_ / "output"),
            contents(folder_ / "errors")};
}

std::vector<FrameLine> Studio::list(const std::string& options) const
{
    const Result result = run("$RECORD --show . --hashes list " + options);
    EXPECT_EQ(result.status, 0) << options << '\n' << result.errors;
    EXPECT_EQ(result.output, "");
    std::vector<FrameLine> lines;
    std::istringstream text(contents(folder_ / "list"));
    for (FrameLine line; text >> line.number >> line.picture >> line.sound;) {
        lines.push_back(line);
    }
    return lines;
}

std::string fps(const FrameRate& rate)
{
    return " --fps " + std::to_string(rate.frames) + '/' + std::to_string(rate.seconds) + ' ';
}
