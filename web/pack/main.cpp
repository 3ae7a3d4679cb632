// Packs the show's data for a page.
//
//   pack DATA FOLDER     writes FOLDER/show.pack, which holds the packed files of DATA one after
//   the
//                        other, and FOLDER/show.json, which says where, and what the page tells of
//                        the show: how long it is, its scenes, and when each begins
#include "cues/scenes_and_events.h"
#include "virtual/row_walk.h"
#include "web/pack/packed_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

Bytes readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    Bytes bytes{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return bytes;
}

void writeFile(const fs::path& path, const char* bytes, std::size_t count)
{
    std::ofstream file(path, std::ios::binary);
    file.write(bytes, static_cast<std::streamsize>(count));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::string number(double value)
{
    return std::to_string(value);
}

double seconds(std::int64_t samples)
{
    return static_cast<double>(samples) / static_cast<double>(kSamplesPerSecond);
}

// When each order is played first, and when the music ends the show.
struct Times {
    std::map<int, double> ofOrder;
    double end = 0.0;
};

Times readTimes(const fs::path& module)
{
    std::ifstream file(module, std::ios::binary);
    RowWalk walk(file);
    Times times;
    while (walk.next()) {
        times.ofOrder.try_emplace(walk.row().order, seconds(walk.row().sample));
        const auto effects = walk.effects();
        if (std::ranges::any_of(effects, [](const RowEffect& effect) {
                return effect.value == cues::kEndOfShow;
            })) {
            times.end = seconds(walk.row().sample);
            return times;
        }
    }
    times.end = seconds(walk.samples());
    return times;
}

std::string colour(unsigned value)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%06x", value);
    return text.data();
}

// The scenes that the show can start with; the first is its beginning.
std::string sceneList(const Times& times)
{
    std::string list;
    for (const cues::Scene& scene : cues::kScenes) {
        const bool isBeginning = scene.number == cues::kOpening;
        if (!isBeginning && !scene.startOrder) {
            continue;
        }
        const double begins = isBeginning ? 0.0 : times.ofOrder.at(*scene.startOrder);
        list += (list.empty() ? "\n" : ",\n") + std::string(R"(        {"start": )") +
                std::to_string(isBeginning ? 0 : scene.number + 1) + R"(, "scene": )" +
                std::to_string(scene.number) + R"(, "name": ")" + scene.name + R"(", "colour": ")" +
                colour(scene.colour) + R"(", "seconds": )" + number(begins) + "}";
    }
    return list;
}

void packShow(const fs::path& data, const fs::path& folder)
{
    std::vector<fs::path> paths;
    for (const fs::directory_entry& entry : fs::directory_iterator(data)) {
        if (entry.path().extension() != ".md") {
            paths.push_back(entry.path());
        }
    }
    std::ranges::sort(paths);

    Bytes all;
    std::string files;
    for (const fs::path& path : paths) {
        const Bytes packed = pack(readFile(path));
        if (!unpack(packed)) {
            throw std::runtime_error("packing has damaged " + path.string());
        }
        files += (files.empty() ? "\n" : ",\n") + std::string(R"(        {"name": ")") +
                 path.filename().string() + R"(", "first": )" + std::to_string(all.size()) +
                 R"(, "length": )" + std::to_string(packed.size()) + "}";
        all.insert(all.end(), packed.begin(), packed.end());
    }

    const Times times = readTimes(data / fs::path(cues::kModulePath).filename());
    const std::string json = "{\n    \"seconds\": " + number(times.end) + ",\n    \"scenes\": [" +
                             sceneList(times) +
                             "\n    ],\n    \"bytes\": " + std::to_string(all.size()) +
                             ",\n    \"files\": [" + files + "\n    ]\n}\n";
    writeFile(folder / "show.pack", reinterpret_cast<const char*>(all.data()), all.size());
    writeFile(folder / "show.json", json.data(), json.size());
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3) {
        std::fputs("usage: pack DATA FOLDER\n", stderr);
        return 2;
    }
    try {
        packShow(arguments[1], arguments[2]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kso: %s\n", error.what());
        return 1;
    }
}
