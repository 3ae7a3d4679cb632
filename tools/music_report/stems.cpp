#include "tools/music_report/stems.h"

#include "art/music/synth/signal.h"
#include "tools/music_report/loudness.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <fstream>
#include <functional>
#include <future>
#include <span>
#include <stdexcept>
#include <thread>

namespace {

// Calls work(0) to work(count - 1), as many at a time as there are processors.
void sideBySide(int count, const std::function<void(int)>& work)
{
    std::atomic<int> next = 0;
    std::vector<std::future<void>> workers;
    for (unsigned i = 0; i < std::max(std::thread::hardware_concurrency(), 1U); ++i) {
        workers.push_back(std::async(std::launch::async, [&] {
            for (int mine = next++; mine < count; mine = next++) {
                work(mine);
            }
        }));
    }
    for (std::future<void>& worker : workers) {
        worker.get();
    }
}

// The power of kAttackSamples from a frame on, of what lies over `hertz`.
double powerFrom(std::int64_t frame, double hertz, const std::function<double(std::size_t)>& sound,
                 std::int64_t frames)
{
    constexpr std::int64_t kSettling = 441; // samples that the filter is given before
    double power = 0.0;
    for (std::size_t channel = 0; channel < kSoundChannels; ++channel) {
        Filter filter(kSamplesPerSecond);
        const std::int64_t end = std::min(frame + kAttackSamples, frames);
        for (std::int64_t i = std::max<std::int64_t>(frame - kSettling, 0); i < end; ++i) {
            const double value = sound(static_cast<std::size_t>(i) * kSoundChannels + channel);
            const double heard = hertz > 0.0 ? filter.high(value, hertz) : value;
            power += i >= frame ? heard * heard : 0.0;
        }
    }
    return power;
}

Attack attackOf(const PlayedNote& note, const Sound& own, const Sound& all)
{
    const auto frames = static_cast<std::int64_t>(own.size() / kSoundChannels);
    const auto mine = [&](std::size_t i) { return static_cast<double>(own[i]); };
    const auto others = [&](std::size_t i) { return static_cast<double>(all[i] - own[i]); };
    return {powerFrom(note.begin, 0.0, mine, frames), powerFrom(note.begin, 0.0, others, frames),
            powerFrom(note.begin, kClickHz, mine, frames),
            powerFrom(note.begin, kClickHz, others, frames)};
}

using Bytes = std::vector<char>;

void put(Bytes& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
}

// A WAV file with 16 bits.
Bytes waveFile(std::span<const float> sound)
{
    constexpr std::uint32_t kHeaderBytes = 36;
    constexpr std::uint32_t kFrameBytes = 2 * kSoundChannels;
    const auto soundBytes = static_cast<std::uint32_t>(2 * sound.size());
    Bytes bytes;
    const auto name = [&bytes](const char* four) { bytes.insert(bytes.end(), four, four + 4); };
    name("RIFF");
    put(bytes, kHeaderBytes + soundBytes, 4);
    name("WAVE");
    name("fmt ");
    put(bytes, 16, 4);
    put(bytes, 1, 2);
    put(bytes, kSoundChannels, 2);
    put(bytes, kSamplesPerSecond, 4);
    put(bytes, kSamplesPerSecond * kFrameBytes, 4);
    put(bytes, kFrameBytes, 2);
    put(bytes, 16, 2);
    name("data");
    put(bytes, soundBytes, 4);
    for (const float sample : sound) {
        const long value = std::lround(std::clamp(sample, -1.0F, 1.0F) * 32767.0F);
        put(bytes, static_cast<std::uint32_t>(value), 2);
    }
    return bytes;
}

} // namespace

Stems playStems(const Performance& performance, const Sound& all)
{
    const auto count = static_cast<int>(performance.channels().size());
    const std::vector<PlayedNote>& notes = performance.notes();
    Stems stems;
    stems.powers.resize(performance.channels().size());
    stems.attacks.resize(notes.size());
    sideBySide(count, [&](int channel) {
        const Sound own = performance.playChannel(channel);
        stems.powers[static_cast<std::size_t>(channel)] = weightedPowers(own);
        for (std::size_t i = 0; i < notes.size(); ++i) {
            if (notes[i].channel == channel) {
                stems.attacks[i] = attackOf(notes[i], own, all);
            }
        }
    });
    return stems;
}

void writeStems(const Performance& performance, const std::filesystem::path& folder,
                std::int64_t begin, std::int64_t end)
{
    std::filesystem::create_directories(folder);
    sideBySide(static_cast<int>(performance.channels().size()), [&](int channel) {
        const bool sounds = std::ranges::any_of(performance.notes(), [&](const PlayedNote& note) {
            return note.channel == channel && note.begin < end && note.end > begin;
        });
        if (!sounds) {
            return;
        }
        const Sound sound = performance.playChannel(channel);
        const Bytes bytes = waveFile(
            std::span(sound).subspan(static_cast<std::size_t>(begin) * kSoundChannels,
                                     static_cast<std::size_t>(end - begin) * kSoundChannels));
        const std::string& name = performance.channels()[static_cast<std::size_t>(channel)];
        const std::string number = std::to_string(channel + 1);
        const std::filesystem::path path =
            folder / (std::string(2 - std::min<std::size_t>(number.size(), 2), '0') + number + "-" +
                      name + ".wav");
        std::ofstream file(path, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + path.string());
        }
    });
}
