#include "tools/record/record_options.h"

#include "packaging/places.h"
#include "tools/record/record_error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <string_view>
#include <system_error>

const char* const kRecordHelp =
    R"(Records the show, exactly: every frame and every sample, the same each time, at any frame rate.

  ./record [OPTION...] [-- ARGUMENT OF THE SHOW...]

  -o FILE           the film (kso.mp4). Its name says what it is: .mp4, .mov, .mkv and .webm with
                    sound, .gif or frames-%05d.png without, .wav or .flac the sound alone
  --fps RATE        frames a second (60): a number like 25 or 59.94, or a fraction like 60000/1001
  --size WxH        pixels, both even, up to 3840x2160 (the show's window). The picture is enlarged
                    until it touches two sides, and keeps its shape: 1280x544 leaves no black bars.
                    All that OpenGL draws is drawn larger, so edges and lines are sharp; what the
                    show draws pixel by pixel (the wire figures, the column, the fire) keeps its
                    resolution
  --from SECONDS    begin with the first frame at this moment of the show or after it
  --to SECONDS      end before the first frame at this moment or after it
  --crf N           quality of .mp4, .mov, .mkv and .webm: 0 is the best, 51 the smallest (18)
  --encoder NAME    what makes the pictures of such a film smaller, if this machine has it: x264 (the
                    usual one), x265, av1, vp9 (the usual one of .webm), vaapi, nvenc
  --jobs N          draw with N processes side by side (1); the recording is the same, to the bit
  --part K/N        record only the K-th of N parts, as kso.K-of-N.mkv for kso.mp4
  --join            join the parts that stand beside the film into it; they stay
  --stills FOLDER   with --at: single frames as FOLDER/TIME.png; without -o, no film is made
  --at TIME,...     the moments of the stills, in seconds
  --hashes FILE     a line for each frame: its number, a hash of its picture, a hash of its sound;
                    without -o, no film is made
  --pixels FILE     the pictures as they are, one after the other: red, green and blue of each pixel,
                    a byte each, top row first; FILE may be a pipe; without -o, no film is made
  --show FOLDER     play the music and pictures of FOLDER/data
  --help            this text

The show's arguments are those of ./play; -nosound is ignored, since events come with the sound.
)";

namespace {

using Text = std::string_view;

constexpr std::uint64_t kMaxFramesPerSecond = 1000;
// Of both numbers of a rate, so that a day's moments fit into 64 bits.
constexpr std::uint64_t kMaxRateNumber = 1'000'000;
constexpr std::array<std::uint64_t, 6> kTelevisionRates = {24, 30, 48, 60, 120, 240};
constexpr std::uint64_t kRateRounding = 5000; // millionths
constexpr std::uint64_t kMaxSeconds = 24ULL * 60 * 60;
constexpr int kMaxWidth = 3840;
constexpr int kMaxHeight = 2160;
constexpr int kMinLength = 16;
constexpr int kMaxCrf = 51;
constexpr int kMaxJobs = 64;
constexpr int kMaxParts = 999;
constexpr std::size_t kMaxDecimals = 6;

[[noreturn]] void complain(Text option, Text value, Text wanted)
{
    throw UsageError(std::string(option) + " needs " + std::string(wanted) + ", not \"" +
                     std::string(value) + "\"");
}

// `text` as a decimal number; nothing if anything else is in it.
template <typename Number>
std::optional<Number> toNumber(Text text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

// A number like "12" or "12.5", times a million.
std::optional<std::uint64_t> toMillionths(Text text)
{
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string decimals(text.substr(std::min(point + 1, text.size())));
    if (decimals.size() > kMaxDecimals || (point < text.size() && decimals.empty())) {
        return std::nullopt;
    }
    decimals.resize(kMaxDecimals, '0');
    const auto whole = toNumber<std::uint32_t>(text.substr(0, point));
    const auto millionths = toNumber<std::uint32_t>(decimals);
    if (!whole || !millionths) {
        return std::nullopt;
    }
    return *whole * kMicrosecondsPerSecond + *millionths;
}

std::optional<FrameRate> toRate(Text text)
{
    if (const std::size_t slash = text.find('/'); slash != Text::npos) {
        const auto frames = toNumber<std::uint32_t>(text.substr(0, slash));
        const auto seconds = toNumber<std::uint32_t>(text.substr(slash + 1));
        return frames && seconds ? std::optional(FrameRate{*frames, *seconds}) : std::nullopt;
    }
    // Television's rates are a whole number times 1000 / 1001 and written with two or three
    // decimals.
    for (const std::uint64_t whole : kTelevisionRates) {
        const std::uint64_t exact = whole * 1000 * kMicrosecondsPerSecond / 1001;
        const auto written = toMillionths(text);
        if (written && *written % kMicrosecondsPerSecond != 0 && *written + kRateRounding > exact &&
            *written < exact + kRateRounding) {
            return FrameRate{whole * 1000, 1001};
        }
    }
    if (const auto millionths = toMillionths(text)) {
        const std::uint64_t common = std::gcd(*millionths, kMicrosecondsPerSecond);
        return FrameRate{*millionths / common, kMicrosecondsPerSecond / common};
    }
    return std::nullopt;
}

FrameRate readRate(Text option, Text value)
{
    const std::optional<FrameRate> rate = toRate(value);
    if (!rate || rate->seconds == 0 || rate->frames < rate->seconds ||
        rate->frames > kMaxFramesPerSecond * rate->seconds || rate->frames > kMaxRateNumber) {
        complain(option, value, "a frame rate from 1 to 1000, like 60, 59.94 or 60000/1001");
    }
    return *rate;
}

PictureSize readSize(Text option, Text value)
{
    const std::size_t cross = value.find('x');
    const auto length = [&](Text text, int maximum) {
        const std::optional<int> pixels = toNumber<int>(text);
        if (!pixels || *pixels < kMinLength || *pixels > maximum || *pixels % 2 != 0) {
            complain(option, value,
                     "a size like 1280x720, both numbers even, from 16x16 to 3840x2160");
        }
        return *pixels;
    };
    const Text height = cross == Text::npos ? Text() : value.substr(cross + 1);
    return {length(value.substr(0, cross), kMaxWidth), length(height, kMaxHeight)};
}

std::uint64_t readTime(Text option, Text value)
{
    const std::optional<std::uint64_t> time = toMillionths(value);
    if (!time || *time > kMaxSeconds * kMicrosecondsPerSecond) {
        complain(option, value, "a number of seconds like 12.5, at most a day");
    }
    return *time;
}

std::vector<StillTime> readStills(Text option, Text value)
{
    std::vector<StillTime> stills;
    for (std::size_t begin = 0; begin <= value.size();) {
        const std::size_t end = std::min(value.find(',', begin), value.size());
        const Text time = value.substr(begin, end - begin);
        stills.push_back({std::string(time), readTime(option, time)});
        begin = end + 1;
    }
    return stills;
}

int readCrf(Text option, Text value)
{
    const std::optional<int> crf = toNumber<int>(value);
    if (!crf || *crf < 0 || *crf > kMaxCrf) {
        complain(option, value, "a number from 0 to 51");
    }
    return *crf;
}

PartNumber readPart(Text option, Text value)
{
    const std::size_t slash = std::min(value.find('/'), value.size());
    const auto number = toNumber<int>(value.substr(0, slash));
    const auto count = toNumber<int>(value.substr(std::min(slash + 1, value.size())));
    if (!number || !count || *number < 1 || *number > *count || *count > kMaxParts) {
        complain(option, value, "a part like 2/3, of at most 999");
    }
    return {*number, *count};
}

int readJobs(Text option, Text value)
{
    const std::optional<int> jobs = toNumber<int>(value);
    if (!jobs || *jobs < 1 || *jobs > kMaxJobs) {
        complain(option, value, "a number from 1 to 64");
    }
    return *jobs;
}

struct Option {
    Text name;
    void (*read)(RecordOptions& options, Text option, Text value);
};

constexpr std::array kOptions = {
    Option{"-o",        [](auto& all, Text,      Text value) { all.film = value; }                      },
    Option{"--fps",     [](auto& all, Text name, Text value) { all.rate = readRate(name, value); }      },
    Option{"--size",    [](auto& all, Text name, Text value) { all.size = readSize(name, value); }      },
    Option{"--from",    [](auto& all, Text name, Text value) { all.from = readTime(name, value); }      },
    Option{"--to",      [](auto& all, Text name, Text value) { all.to = readTime(name, value); }        },
    Option{"--crf",
           [](auto& all,              Text name, Text value) { all.quality.crf = readCrf(name, value); }},
    Option{"--encoder", [](auto& all, Text,      Text value) { all.quality.encoder = value; }           },
    Option{"--part",    [](auto& all, Text name, Text value) { all.part = readPart(name, value); }      },
    Option{"--jobs",    [](auto& all, Text name, Text value) { all.jobs = readJobs(name, value); }      },
    Option{"--stills",  [](auto& all, Text,      Text value) { all.stillsFolder = value; }              },
    Option{"--at",      [](auto& all, Text name, Text value) { all.stills = readStills(name, value); }  },
    Option{"--hashes",  [](auto& all, Text,      Text value) { all.hashes = value; }                    },
    Option{"--pixels",  [](auto& all, Text,      Text value) { all.pixels = value; }                    },
    Option{"--show",    [](auto& all, Text,      Text value) { all.show = value; }                      },
};

bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other)
{
    std::error_code ignored;
    if (std::filesystem::is_character_file(one, ignored)) {
        return false; // devices take all
    }
    const auto whole = [&](const std::filesystem::path& file) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(file, ignored), ignored);
    };
    return whole(one) == whole(other) || std::filesystem::equivalent(one, other, ignored);
}

// Each part takes what is asked of the whole, and the rest is made when they are joined.
void checkSharing(const RecordOptions& options, const std::vector<Text>& given)
{
    const auto refuse = [&](Text option, std::initializer_list<Text> others, Text why) {
        for (const Text other : others) {
            if (std::ranges::find(given, other) != given.end()) {
                throw UsageError(std::string(other) + " is not for " + std::string(option) +
                                 std::string(why));
            }
        }
    };
    if (options.part) {
        refuse("--part", {"--join", "--crf", "--encoder", "--stills", "--hashes", "--pixels"},
               ": it is for the recording that joins the parts");
    }
    if (options.joinsParts) {
        refuse("--join", {"--fps", "--size", "--from", "--to", "--jobs", "--show", "--"},
               ": the parts have it already");
    }
}

// Of two outputs with one name, one would be lost.
void checkNames(const RecordOptions& options)
{
    std::vector<std::filesystem::path> others;
    for (const StillTime& still : options.stills) {
        others.push_back(options.stillsFolder / still.fileName());
    }
    for (const auto& file : {options.film, options.hashes, options.pixels}) {
        if (file.empty()) {
            continue;
        }
        if (std::ranges::any_of(others, [&](const auto& each) { return isSameFile(file, each); })) {
            throw UsageError("two outputs have the name " + file.string());
        }
        others.push_back(file);
    }
}

// Sets the film's default name, and checks options that depend on each other.
void check(RecordOptions& options)
{
    if (options.stillsFolder.empty() != options.stills.empty()) {
        throw UsageError("--stills and --at need each other");
    }
    if (options.film.empty() &&
        (options.joinsParts || (options.onlyStills() && options.stills.empty()))) {
        options.film = "kso.mp4";
    }
    if (options.film.empty() && (options.quality.crf || !options.quality.encoder.empty())) {
        throw UsageError(std::string(options.quality.crf ? "--crf" : "--encoder") +
                         " is for a film; name one with -o");
    }
    checkNames(options);
    const std::uint64_t first = options.firstFrame();
    const std::optional<std::uint64_t> end = options.endFrame();
    if (end && *end <= first) {
        throw UsageError("there is no frame between --from and --to");
    }
    for (const StillTime& still : options.stills) {
        const std::uint64_t frame = options.frameOf(still);
        if (!options.joinsParts && (frame < first || (end && frame >= *end))) {
            throw UsageError("the still at " + still.time + " is not between --from and --to");
        }
    }
    if (!std::filesystem::is_directory(options.show)) {
        throw UsageError("there is no folder \"" + options.show.string() + "\"");
    }
    // With -nosound, the show plays its music by the real clock, not by the recording's. A word
    // that means nothing to the show takes its place, so that the other arguments keep their
    // positions.
    std::ranges::replace(options.programArguments, std::string("-nosound"), std::string("-sound"));
}

} // namespace

std::optional<std::uint64_t> RecordOptions::endFrame() const
{
    if (frames) {
        return frames->end;
    }
    if (to) {
        return rate.firstFrameFrom(*to);
    }
    if (onlyStills()) {
        return frameOf(std::ranges::max(stills, {}, &StillTime::microseconds)) + 1;
    }
    return std::nullopt;
}

RecordOptions readRecordOptions(std::span<const char* const> arguments)
{
    RecordOptions options;
    options.show = findPlaces().folder;
    std::vector<Text> given;
    while (!arguments.empty()) {
        const Text name = arguments.front();
        arguments = arguments.subspan(1);
        given.push_back(name);
        if (name == "--join") {
            options.joinsParts = true;
            continue;
        }
        if (name == "--") {
            options.programArguments.assign(arguments.begin(), arguments.end());
            break;
        }
        if (name == "--help" || name == "-h") {
            options.help = true;
            return options;
        }
        const auto* const option = std::ranges::find(kOptions, name, &Option::name);
        if (option == kOptions.end()) {
            throw UsageError("there is no option \"" + std::string(name) + "\"; --help lists them");
        }
        if (arguments.empty() || Text(arguments.front()).empty()) {
            throw UsageError(std::string(name) + " needs a value");
        }
        option->read(options, name, arguments.front());
        arguments = arguments.subspan(1);
    }
    checkSharing(options, given);
    check(options);
    return options;
}
