// Loaded before SDL (LD_PRELOAD), takes its place: the program draws into memory and lives in the
// virtual world (virtual/virtual_world.h), and every frame and every sample goes to the recorder,
// through a pipe.

#include "tools/capture/offscreen.h"
#include "tools/capture/packets.h"
#include "tools/capture/settings.h"
#include "tools/capture/skipped_drawing.h"
#include "tools/capture/skipped_sound.h"
#include "virtual/environment.h"
#include "virtual/timing.h"
#include "virtual/virtual_world.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

// Of frames that are neither seen nor heard, one in so many is told of: that the show goes on.
constexpr std::uint64_t kUnheardFrames = 64;

using Frames = std::set<std::uint64_t>;

// A list of frames, or none for "all".
std::optional<Frames> readFrames(const char* list)
{
    if (std::string_view(list) == "all") {
        return std::nullopt;
    }
    Frames frames;
    unsigned long frame = 0;
    int used = 0;
    while (std::sscanf(list, "%lu%n", &frame, &used) == 1) {
        frames.insert(frame);
        list += used;
        list += *list == ',' ? 1 : 0;
    }
    return frames;
}

PictureSize readSize(const char* text)
{
    PictureSize size;
    std::sscanf(text, "%dx%d", &size.width, &size.height);
    return size;
}

FrameRate readRate(const char* text)
{
    unsigned long frames = 0;
    unsigned long seconds = 0;
    const bool isRate = std::sscanf(text, "%lu/%lu", &frames, &seconds) == 2;
    return isRate ? FrameRate{frames, seconds} : FrameRate{};
}

// Of frames that several programs draw by turns, those of this one.
struct Turn {
    std::uint64_t first = 0;
    std::uint64_t every = 1;
};

Turn readTurn(const char* text)
{
    unsigned long first = 0;
    unsigned long every = 0;
    const bool isTurn = std::sscanf(text, "%lu/%lu", &first, &every) == 2;
    return isTurn ? Turn{first, every} : Turn{};
}

// What the recorder wants; its settings are taken for well-formed.
struct Settings {
    int pipe = static_cast<int>(environmentNumber(setting::kPipe, 0));
    FrameRate rate = readRate(environmentText(setting::kRate));
    PictureSize size = readSize(environmentText(setting::kSize));
    std::uint64_t from = environmentNumber(setting::kFrom, 0);
    std::uint64_t to = environmentNumber(setting::kTo, kNever);
    std::optional<Frames> pictures = readFrames(environmentText(setting::kWanted)); // none: all
    Turn turn = readTurn(environmentText(setting::kTurn));
    std::optional<Frames> drawn = readFrames(environmentText(setting::kDrawn)); // none: all
    bool wantsSound = *environmentText(setting::kSound) != '\0';

    [[nodiscard]] bool wantsPicture(std::uint64_t frame) const
    {
        return frame >= from && frame < to && (!pictures || pictures->contains(frame)) &&
               frame % turn.every == turn.first;
    }
    [[nodiscard]] bool draws(std::uint64_t frame) const
    {
        return wantsPicture(frame) || !drawn || drawn->contains(frame);
    }
    // A second before the first sample that is wanted: until then, what a player carries over, like
    // the last of a note that has ended, has died away.
    [[nodiscard]] std::uint64_t exactSoundFrom() const
    {
        const std::uint64_t first = rate.samplesBefore(from);
        return wantsSound ? first - std::min(first, kSamplesPerSecond) : kNever;
    }
};

WorldSettings worldSettings(const Settings& wanted)
{
    WorldSettings settings;
    settings.rate = wanted.rate;
    if (wanted.to != kNever) {
        settings.end = wanted.to;
    }
    settings.closingEvent = static_cast<Uint8>(environmentNumber(setting::kClose, SDL_QUIT));
    settings.exactSoundFrom = wanted.exactSoundFrom();
    return settings;
}

// Sends all that happens through the pipe.
class PacketPipe : public Sink {
public:
    explicit PacketPipe(Settings settings) : settings_(std::move(settings)) {}

    bool openWindow(int width, int height) override
    {
        if (!openOffscreen({width, height}, settings_.size)) {
            return false;
        }
        beginFrame(0, settings_.draws(0));
        const std::string renderer = rendererName();
        send(PacketKind::started, 0, renderer.data(), renderer.size());
        return true;
    }

    void picture(std::uint64_t frame) override
    {
        if (frame >= settings_.to) {
            return; // the show may need one more pass to hear that it is over
        }
        if (!settings_.wantsPicture(frame)) {
            if (isHeard(frame) || frame % kUnheardFrames == 0) {
                send(PacketKind::unseen, frame, nullptr, 0);
            }
        } else if (const auto missing = missingFrame()) {
            const MissingPicture picture{missing->frame, missing->isHeld};
            send(PacketKind::missing, frame, &picture, sizeof picture);
        } else {
            readPicture(pixels_);
            send(PacketKind::picture, frame, pixels_.data(), pixels_.size());
        }
    }

    void sound(std::uint64_t first, std::span<const std::int16_t> samples) override
    {
        const std::uint64_t begin = settings_.rate.samplesBefore(settings_.from);
        const std::uint64_t end = first + samples.size() / kSoundChannels;
        if (settings_.wantsSound && end > begin) {
            const std::uint64_t unwanted = begin - std::min(begin, first);
            const auto wanted = samples.subspan(unwanted * kSoundChannels);
            send(PacketKind::sound, first + unwanted, wanted.data(), wanted.size_bytes());
        }
    }

    void passEnds(std::uint64_t frame) override
    {
        const std::uint64_t next = frame + 1;
        beginFrame(next, settings_.draws(next));
        skipSound(settings_.rate.samplesBefore(next) < settings_.exactSoundFrom());
    }

private:
    [[nodiscard]] bool isHeard(std::uint64_t frame) const
    {
        return settings_.wantsSound && frame >= settings_.from;
    }

    void send(PacketKind kind, std::uint64_t position, const void* bytes, std::size_t count) const
    {
        const PacketHeader header{kind, static_cast<std::uint32_t>(count), position};
        writeAll(&header, sizeof header);
        writeAll(bytes, count);
    }

    // A program whose recorder is gone ends like any writer into a closed pipe: by SIGPIPE.
    void writeAll(const void* bytes, std::size_t count) const
    {
        const auto* next = static_cast<const std::byte*>(bytes);
        while (count > 0) {
            const ssize_t written = ::write(settings_.pipe, next, count);
            if (written < 0 && errno != EINTR) {
                std::_Exit(EXIT_FAILURE);
            }
            next += std::max<ssize_t>(written, 0);
            count -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
        }
    }

    Settings settings_;
    std::vector<std::uint8_t> pixels_;
};

} // namespace

VirtualWorld& world()
{
    // Neither is ever taken down: the program calls to its very end.
    static auto* const kWorld = [] {
        const Settings settings;
        return new VirtualWorld(worldSettings(settings), *new PacketPipe(settings));
    }();
    return *kWorld;
}
