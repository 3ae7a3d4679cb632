#include "web/page_api.h"

#include "base/window_and_view.h"
#include "show/display.h"
#include "show/music.h"
#include "show/scheduler.h"
#include "show/world.h"
#include "sound/ahead_output.h"
#include "virtual/timing.h"
#include "web/pack/packed_file.h"
#include "web/page_world.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr float kFullScale = 32768.0F;
constexpr double kMillisecondsPerSecond = 1000.0;
constexpr FrameRate kVirtualRate{60, 1};

std::uint64_t virtualFrame = 0; // the next one's number
std::vector<std::int16_t> mixed;
std::vector<float> channels; // left, then right
FrameList list;
Bytes unpacked;

const float* toChannels()
{
    const std::size_t count = mixed.size() / kMixChannels;
    channels.resize(mixed.size());
    for (std::size_t i = 0; i < count; ++i) {
        channels[i] = static_cast<float>(mixed[2 * i]) / kFullScale;
        channels[count + i] = static_cast<float>(mixed[2 * i + 1]) / kFullScale;
    }
    return channels.data();
}

// A page has one swap a frame at most.
int shows()
{
    const bool isShown = pageWorld.isShown;
    pageWorld.isShown = false;
    return isShown ? 1 : 0;
}

int drawFrame(std::int64_t audioFrame)
{
    pageWorld.output->hear(audioFrame);
    runFrame();
    return shows();
}

} // namespace

PageWorld pageWorld;

extern "C" {

void pageStart(int startScene, int isVirtual)
{
    pageWorld.timeOfDay = isVirtual != 0 ? static_cast<std::int64_t>(kFirstTimeOfDay) : -1;
    initVideo(kWindowWidth, kWindowHeight);
    initGL(kWindowWidth, kWindowHeight, kViewWidth, kViewHeight);
    initMusic();
    buildWorld();
    startMusic(startScene);
}

const float* pageMix(int audioFrames)
{
    mixed.resize(static_cast<std::size_t>(std::max(audioFrames, 0)) * kMixChannels);
    pageWorld.output->mix(mixed);
    return toChannels();
}

double pageMixed()
{
    return static_cast<double>(pageWorld.output->mixed());
}

double pageLatestEvent()
{
    return static_cast<double>(pageWorld.output->latestPerformed());
}

int pageFrame(double seconds, double audioFrame)
{
    pageWorld.ticks = static_cast<std::uint32_t>(std::max(seconds, 0.0) * kMillisecondsPerSecond);
    return drawFrame(static_cast<std::int64_t>(std::floor(audioFrame)));
}

int pageVirtualFrame()
{
    const std::uint64_t moment = kVirtualRate.samplesBefore(virtualFrame);
    const auto due =
        static_cast<std::size_t>(moment + 1) - static_cast<std::size_t>(pageWorld.output->mixed());
    mixed.resize(due * kMixChannels);
    for (std::size_t i = 0; i < due; ++i) {
        pageWorld.output->mix(std::span(mixed).subspan(i * kMixChannels, kMixChannels));
    }
    pageWorld.ticks = static_cast<std::uint32_t>(kVirtualRate.momentOf(virtualFrame, 1000));
    pageWorld.timeOfDay =
        static_cast<std::int64_t>(kFirstTimeOfDay + kVirtualRate.momentOf(virtualFrame, 1));
    ++virtualFrame;
    return drawFrame(static_cast<std::int64_t>(moment));
}

const float* pageVirtualSound()
{
    return toChannels();
}

int pageVirtualSoundLength()
{
    return static_cast<int>(mixed.size() / kMixChannels);
}

const FrameList* pageFrameList()
{
    list = frameList();
    return &list;
}

int pageUnpack(const std::uint8_t* packed, int length)
{
    std::optional<Bytes> file = unpack({packed, static_cast<std::size_t>(length)});
    unpacked = file ? std::move(*file) : Bytes{};
    return file ? static_cast<int>(unpacked.size()) : -1;
}

const std::uint8_t* pageUnpacked()
{
    return unpacked.data();
}

int pageScene()
{
    return currentScene.load(std::memory_order_relaxed);
}

int pageHasEnded()
{
    return quitRequested;
}

} // extern "C"
