#include "tools/record/frames.h"
#include "tools/record/record_error.h"
#include "tools/record/record_options.h"

#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace {

constexpr std::uint64_t kSecond = kMicrosecondsPerSecond;

RecordOptions read(const std::string& line)
{
    std::istringstream text(line);
    const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    std::vector<const char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
    }
    return readRecordOptions(arguments);
}

std::string textOf(const RecordOptions& options)
{
    std::ostringstream text;
    text << options.film.string() << ' ' << options.rate.frames << '/' << options.rate.seconds
         << ' ' << options.size.width << 'x' << options.size.height << ' ' << options.firstFrame()
         << '-';
    if (const auto end = options.endFrame()) {
        text << *end;
    }
    for (const StillWish& still : options.stills) {
        text << ' ' << options.stillsFolder.string() << '/' << still.time << '='
             << options.frameOf(still);
    }
    for (const std::string& argument : options.programArguments) {
        text << " -- " << argument;
    }
    return text.str();
}

// Takes frames down as "0:paabb ": number, picture, and the letters of its sound, left and right.
struct Assembly {
    std::string text;
    FrameAssembler assembler;

    Assembly(FrameRate rate, std::uint64_t first)
        : assembler(rate, first, [this](const Frame& frame) {
              text += std::to_string(frame.number) + ':' +
                      std::string(frame.picture.begin(), frame.picture.end());
              for (const std::int16_t sample : frame.sound) {
                  text += sample == 0 ? '0' : static_cast<char>(sample);
              }
              text += ' ';
          })
    {
    }
    void picture(std::uint64_t frame) { assembler.add({PacketKind::picture, 1, frame}, {'p'}); }
    void sound(std::uint64_t position, const std::string& pairs)
    {
        std::vector<std::uint8_t> bytes;
        for (const char letter : pairs) {
            const auto byte = static_cast<std::uint8_t>(letter);
            bytes.insert(bytes.end(), {byte, 0, byte, 0});
        }
        assembler.add({PacketKind::sound, static_cast<std::uint32_t>(bytes.size()), position},
                      bytes);
    }
};

} // namespace

TEST(FrameRate, CountsFromTheFirstFrame)
{
    struct Row {
        FrameRate rate;
        std::uint64_t frame; // the one at a time or after it,
        std::uint64_t microseconds;
        std::uint64_t samples; // before it, and
        std::uint64_t frameAt; // the one on screen at the time
    };
    constexpr std::uint64_t kDay = 86'400;
    // clang-format off
    constexpr Row kRows[] = {
        {{24, 1},       0,               0,                     0,                       0},
        {{24, 1},       1,               1,                     1837,                    0},
        {{24, 1},       3,               125'000,               5512,                    3},
        {{60000, 1001}, 1,               16'683,                735,                     0},
        {{60000, 1001}, 2,               16'684,                1471,                    1},
        {{60000, 1001}, 60000,           1001 * kSecond,        44'144'100,              60000},
        {{60, 1},       7,               116'666,               5145,                    6},
        {{60, 1},       8,               116'667,               5880,                    7},
        {{144, 1},      144,             kSecond,               44'100,                  144},
        {{144, 1},      145,             kSecond + 1,           44'406,                  144},
        {{24, 1},       24 * kDay,       kDay * kSecond,        44'100 * kDay,           24 * kDay},
        {{60000, 1001}, 5'178'822,       kDay * kSecond,        44'100 * kDay + 604,     5'178'821},
        {{144, 1},      144 * kDay + 1,  kDay * kSecond + 6944, 44'100 * kDay + 306,     144 * kDay},
    };
    // clang-format on
    for (const Row& row : kRows) {
        EXPECT_EQ(row.rate.firstFrameFrom(row.microseconds), row.frame) << row.microseconds;
        EXPECT_EQ(row.rate.samplesBefore(row.frame), row.samples) << row.microseconds;
        EXPECT_EQ(row.rate.frameAt(row.microseconds), row.frameAt) << row.microseconds;
        // The moment itself is heard, and the sample after it a frame later.
        EXPECT_EQ(row.rate.firstFrameHearing(row.samples), row.frame) << row.samples;
        EXPECT_EQ(row.rate.firstFrameHearing(row.samples + 1), row.frame + 1) << row.samples;
    }
}

TEST(RecordOptions, AreReadAsTheyAreMeant)
{
    struct Row {
        const char* line;
        const char* wishes; // film, rate, size, frames, stills, the show's arguments
    };
    constexpr Row kRows[] = {
        {"",                                     "kso.mp4 60/1 640x480 0-"                 },
        {"-o a.gif --size 3840x16 --fps 1000",   "a.gif 1000/1 3840x16 0-"                 },
        {"--fps 59.94 --from 1 --to 2",          "kso.mp4 60000/1001 640x480 60-120"       },
        {"--fps 23.976 --to 86400",              "kso.mp4 24000/1001 640x480 0-2071529"    },
        {"--fps 60000/1001 --crf 0",             "kso.mp4 60000/1001 640x480 0-"           },
        {"--fps 12.5 --from 0.000001 --to 0.24", "kso.mp4 25/2 640x480 1-3"                },
        {"--hashes list",                        " 60/1 640x480 0-"                        },
        {"--stills s --at 1.999,0.5",            " 60/1 640x480 0-120 s/1.999=119 s/0.5=30"},
        {"--stills s --at 1 -o a.wav",           "a.wav 60/1 640x480 0- s/1=60"            },
        {"--to 1 -- 5 --to",                     "kso.mp4 60/1 640x480 0-60 -- 5 -- --to"  },
        {"-- -nosound 4",                        "kso.mp4 60/1 640x480 0- -- -sound -- 4"  },
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(textOf(read(row.line)), row.wishes) << row.line;
    }
    EXPECT_TRUE(read("--help --no-such-thing").help);
}

TEST(RecordOptions, AreRefusedWhenTheyAreWrong)
{
    std::istringstream lines(
        "--fps 0|--fps 0.5|--fps 1001|--fps 60/0|--fps 60/|--fps 1000001/1001|--fps 60fps"
        "|--fps -60|--fps 1e2|--size 640|--size 640x|--size 641x480|--size 14x480"
        "|--size 3842x480|--size 640x2162|--size 640x480x3|--from -1|--from 1.|--from .5"
        "|--from 1.0000001|--to 86401|--to 99999999999|--to nan|--to 0|--from 2 --to 2"
        "|--from 0.001 --to 0.002|--crf 52|--crf -1|--crf x|--stills s|--at 1"
        "|--stills s --at 1,|--stills s --at 2 --to 2|--stills s --at 1 --from 2"
        "|--show nowhere|-o|--fps|film.mp4|-x|--FPS 60|--hashes list --crf 18");
    for (std::string line; std::getline(lines, line, '|');) {
        EXPECT_THROW(read(line), UsageError) << line;
    }
    const std::vector<const char*> empty = {"-o", ""};
    EXPECT_THROW(readRecordOptions(empty), UsageError);
}

// At 17640 frames a second a frame has two and a half pairs of samples.
TEST(FrameAssembler, GivesEachFrameExactlyItsSound)
{
    Assembly assembly({17640, 1}, 1);
    assembly.picture(0);
    assembly.sound(0, "x");
    assembly.sound(0, "abc"); // heard again, and ahead
    EXPECT_EQ(assembly.text, "");
    EXPECT_EQ(assembly.assembler.seen(), 1);
    assembly.sound(3, "defgh");
    assembly.picture(1);
    EXPECT_EQ(assembly.text, "1:pccddee ");
    assembly.assembler.add({PacketKind::unseen, 0, 2}, {});
    assembly.picture(3);
    assembly.sound(8, "i");
    EXPECT_EQ(assembly.text, "1:pccddee 2:ffgg ");
    assembly.assembler.finish();
    assembly.assembler.finish();
    EXPECT_EQ(assembly.text, "1:pccddee 2:ffgg 3:phhii00 ");
    EXPECT_EQ(assembly.assembler.seen(), 4);
}
