#include "tools/record/progress.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds kOnTerminal{200};
constexpr std::chrono::seconds kElsewhere{10};

std::string decimalText(double number, int decimals)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, number);
    return text.data();
}

} // namespace

Progress::Progress(FrameRate rate, std::uint64_t first, std::optional<std::uint64_t> end)
    : rate_(rate), first_(first), end_(end), isTerminal_(::isatty(STDERR_FILENO) == 1),
      start_(Clock::now()), due_(start_ + (isTerminal_ ? kOnTerminal : kElsewhere))
{
}

void Progress::enter(const char* stage)
{
    isSkipping_ = true;
    begin_ = 0;
    if (isTerminal_) {
        print(stage);
    }
}

void Progress::show(const char* stage, std::uint64_t frames)
{
    const bool skips = frames < first_;
    if (begin_ == 0 || isSkipping_ != skips) {
        isSkipping_ = skips;
        begin_ = frames;
        beginTime_ = Clock::now();
    }
    if (frames == begin_ || Clock::now() < due_) {
        return;
    }
    due_ = Clock::now() + (isTerminal_ ? kOnTerminal : kElsewhere);
    print(textOf(stage, frames));
}

std::string Progress::textOf(const char* stage, std::uint64_t frames) const
{
    const auto secondsOf = [&](std::uint64_t count) {
        return static_cast<double>(count * rate_.seconds) / static_cast<double>(rate_.frames);
    };
    const double elapsed = std::chrono::duration<double>(Clock::now() - beginTime_).count();
    const double speed = secondsOf(frames - begin_) / elapsed;
    const std::optional<std::uint64_t> end = isSkipping_ ? first_ : end_;
    std::string line = isSkipping_ ? "skipping to " + clockText(secondsOf(first_), 1) : stage;
    line += ": frame " + std::to_string(frames) + ", " + clockText(secondsOf(frames), 1);
    line += ", " + decimalText(speed, 1) + " times real time";
    if (end && frames < *end && speed > 0.0) {
        line += ", " + clockText(secondsOf(*end - frames) / speed, 0) + " left";
        line += isSkipping_ ? " until then" : "";
    }
    return line;
}

void Progress::print(const std::string& line)
{
    std::fprintf(stderr, isTerminal_ ? "\r\033[K%s" : "%s\n", line.c_str());
    isShown_ = isTerminal_;
}

void Progress::clear()
{
    if (isShown_) {
        std::fputs("\r\033[K", stderr);
        isShown_ = false;
    }
}

double Progress::elapsedSeconds() const
{
    return std::chrono::duration<double>(Clock::now() - start_).count();
}

std::string clockText(double seconds, int decimals)
{
    const double rounded = std::round(seconds * std::pow(10, decimals)) / std::pow(10, decimals);
    const int minutes = static_cast<int>(rounded / 60.0);
    const double rest = rounded - minutes * 60.0;
    return std::to_string(minutes) + (rest < 10.0 ? ":0" : ":") + decimalText(rest, decimals);
}
