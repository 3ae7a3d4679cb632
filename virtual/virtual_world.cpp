#include "virtual/virtual_world.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr std::uint64_t kMillisecondsPerSecond = 1000;

} // namespace

VirtualWorld::VirtualWorld(WorldSettings settings, Sink& sink)
    : settings_(std::move(settings)), sink_(sink)
{
}

std::uint32_t VirtualWorld::look()
{
    if (!lastWasShown_) {
        sink_.picture(frame_ - 1);
        lastWasShown_ = true;
    }
    // The first frame cannot be told from what comes before it, so each look until it is over
    // hears one sample, and the last one's counts.
    if (frame_ == 0) {
        heard_ = 0;
    }
    hearUntil(settings_.rate.samplesBefore(frame_) + 1);
    const std::uint64_t elapsed = settings_.rate.momentOf(frame_, kMillisecondsPerSecond);
    return settings_.firstTicks + delayed_ + static_cast<std::uint32_t>(elapsed);
}

std::time_t VirtualWorld::timeOfDay() const
{
    return static_cast<std::time_t>(kFirstTimeOfDay + settings_.rate.momentOf(frame_, 1));
}

void VirtualWorld::sleep(std::uint32_t milliseconds)
{
    delayed_ += frame_ == 0 ? milliseconds : 0;
}

bool VirtualWorld::openAudio(const SDL_AudioSpec& wanted)
{
    if (wanted.freq != static_cast<int>(kSamplesPerSecond) || wanted.format != AUDIO_S16SYS ||
        wanted.channels != kSoundChannels) {
        std::fputs("kso: only 44100 Hz, 16 bits and stereo can be recorded\n", stderr);
        return false;
    }
    audio_ = wanted;
    audioPlays_ = false;
    return true;
}

void VirtualWorld::swap()
{
    if (!isShown_) {
        sink_.picture(frame_);
        isShown_ = true;
    }
}

std::optional<Uint8> VirtualWorld::nextEvent()
{
    if (closesNow()) {
        hearUntil(settings_.rate.samplesBefore(*settings_.end));
        isClosed_ = true;
        return settings_.closingEvent;
    }
    const auto next = settings_.events.begin();
    if (next != settings_.events.end() && next->first <= frame_) {
        return settings_.events.extract(next).mapped();
    }
    endPass();
    return std::nullopt;
}

bool VirtualWorld::closesNow() const
{
    const bool isLast = frame_ + 1 == settings_.end && isShown_;
    return settings_.end && (isLast || frame_ >= *settings_.end) && !isClosed_;
}

void VirtualWorld::endPass()
{
    sink_.passEnds(frame_);
    lastWasShown_ = isShown_;
    isShown_ = false;
    ++frame_;
}

// Plays the sound on, to this many samples after the first frame's moment.
void VirtualWorld::hearUntil(std::uint64_t sample)
{
    if (sample <= heard_) {
        return;
    }
    samples_.assign((sample - heard_) * kSoundChannels, 0);
    if (audio_ && audioPlays_) {
        std::span<std::int16_t> rest = samples_;
        const std::uint64_t exactFrom = std::clamp(settings_.exactSoundFrom, heard_, sample);
        ask(rest.first((exactFrom - heard_) * kSoundChannels));
        rest = rest.subspan((exactFrom - heard_) * kSoundChannels);
        for (; !rest.empty(); rest = rest.subspan(kSoundChannels)) {
            ask(rest.first(kSoundChannels));
        }
    }
    sink_.sound(heard_, samples_);
    heard_ = sample;
}

void VirtualWorld::ask(std::span<std::int16_t> samples)
{
    if (!samples.empty()) {
        audio_->callback(audio_->userdata, reinterpret_cast<Uint8*>(samples.data()),
                         static_cast<int>(samples.size_bytes()));
    }
}
