// Loaded before SDL (LD_PRELOAD), takes its place: the program draws into memory and lives in the
// virtual world (virtual/virtual_world.h), and every frame and every sample goes to the recorder,
// through a pipe.

#include "tools/capture/offscreen.h"
#include "tools/capture/packets.h"
#include "tools/capture/settings.h"
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
#include <vector>

namespace {

constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

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

// What the recorder wants; its settings are taken for well-formed.
struct Settings {
    int pipe = static_cast<int>(environmentNumber(setting::kPipe, 0));
    PictureSize size = readSize(environmentText(setting::kSize));
    std::uint64_t from = environmentNumber(setting::kFrom, 0);
    std::uint64_t to = environmentNumber(setting::kTo, kNever);
    std::optional<Frames> pictures = readFrames(environmentText(setting::kWanted)); // none: all

    [[nodiscard]] bool wantsPicture(std::uint64_t frame) const
    {
        return frame >= from && frame < to && (!pictures || pictures->contains(frame));
    }
};

WorldSettings worldSettings()
{
    WorldSettings settings;
    settings.rate = readRate(environmentText(setting::kRate));
    if (const std::uint64_t end = environmentNumber(setting::kTo, kNever); end != kNever) {
        settings.end = end;
    }
    settings.closingEvent = static_cast<Uint8>(environmentNumber(setting::kClose, SDL_QUIT));
    return settings;
}

// Sends all that happens through the pipe.
class PacketPipe : public Sink {
public:
    bool openWindow(int width, int height) override
    {
        if (!openOffscreen({width, height}, settings_.size)) {
            return false;
        }
        const std::string renderer = rendererName();
        send(PacketKind::started, 0, renderer.data(), renderer.size());
        return true;
    }

    void picture(std::uint64_t frame) override
    {
        if (frame >= settings_.to) {
            return; // the show may need one more pass to hear that it is over
        }
        if (settings_.wantsPicture(frame)) {
            readPicture(pixels_);
            send(PacketKind::picture, frame, pixels_.data(), pixels_.size());
        } else {
            send(PacketKind::unseen, frame, nullptr, 0);
        }
    }

    void sound(std::uint64_t first, std::span<const std::int16_t> samples) override
    {
        send(PacketKind::sound, first, samples.data(), samples.size_bytes());
    }

private:
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
    static auto* const kWorld = new VirtualWorld(worldSettings(), *new PacketPipe);
    return *kWorld;
}
