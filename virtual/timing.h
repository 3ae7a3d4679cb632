// Row -> sample -> frame: when what the music does is seen.
//
//   row -> sample    a row begins with a sample, which RowWalk (virtual/row_walk.h) finds
//   sample -> frame  it is heard by FrameRate::firstFrameHearing, the first frame whose moment is
//                    not before it
//   frame -> sample  a frame's moment is FrameRate::samplesBefore
//
// Everything is counted from the first frame with whole numbers, so nothing adds up over time.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::uint64_t kSamplesPerSecond = 44100; // audio frames: each has a left and a right one
constexpr std::size_t kSoundChannels = 2;
constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;

// The time of day at the first frame, in seconds since 1970: it seeds the show's random numbers.
constexpr std::uint64_t kFirstTimeOfDay = 1'000'000'000;

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
        return firstFrameFrom(microseconds, kMicrosecondsPerSecond);
    }
    // The first frame that has heard this sample: a frame hears its own moment's too.
    [[nodiscard]] constexpr std::uint64_t firstFrameHearing(std::uint64_t sample) const
    {
        return firstFrameFrom(sample, kSamplesPerSecond);
    }

private:
    [[nodiscard]] constexpr std::uint64_t firstFrameFrom(std::uint64_t moment,
                                                         std::uint64_t perSecond) const
    {
        const std::uint64_t unit = seconds * perSecond;
        return (moment * frames + unit - 1) / unit;
    }
};
