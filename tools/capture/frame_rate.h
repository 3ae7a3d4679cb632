// A frame rate and what follows from it: when each frame is shown, and how much sound lies before
// it.
//
// Everything is counted from the first frame with whole numbers, so nothing adds up over time.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::uint64_t kSamplesPerSecond = 44100; // each of them left and right
constexpr std::size_t kSoundChannels = 2;
constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;

// `frames` frames in every `seconds` seconds, so 59.94 is 60000 in 1001.
struct FrameRate {
    std::uint64_t frames = 60;
    std::uint64_t seconds = 1;

    bool operator==(const FrameRate&) const = default;

    // The moment of a frame, in units of which there are `perSecond`, rounded down.
    [[nodiscard]] constexpr std::uint64_t momentOf(std::uint64_t frame,
                                                   std::uint64_t perSecond) const
    {
        return frame * seconds * perSecond / frames;
    }
    [[nodiscard]] constexpr std::uint64_t samplesBefore(std::uint64_t frame) const
    {
        return momentOf(frame, kSamplesPerSecond);
    }

    // The frame on screen at a moment.
    [[nodiscard]] constexpr std::uint64_t frameAt(std::uint64_t microseconds) const
    {
        return microseconds * frames / (seconds * kMicrosecondsPerSecond);
    }
    // The first frame that is shown at a moment or after it.
    [[nodiscard]] constexpr std::uint64_t firstFrameFrom(std::uint64_t microseconds) const
    {
        const std::uint64_t unit = seconds * kMicrosecondsPerSecond;
        return (microseconds * frames + unit - 1) / unit;
    }
};
