#include "tools/record/record_error.h"
#include "tools/record/record_options.h"

#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace {

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
    if (options.part) {
        text << " part " << options.part->number << '/' << options.part->count;
    }
    text << (options.joinsParts ? " join" : "");
    for (const StillTime& still : options.stills) {
        text << ' ' << options.stillsFolder.string() << '/' << still.time << '='
             << options.frameOf(still);
    }
    for (const std::string& argument : options.programArguments) {
        text << " -- " << argument;
    }
    return text.str();
}

} // namespace

TEST(RecordOptions, AreReadAsTheyAreMeant)
{
    struct Row {
        const char* line;
        const char* options; // film, rate, size, frames, stills, the show's arguments
    };
    constexpr Row kRows[] = {
        {"",                                      "kso.mp4 60/1 640x480 0-"                 },
        {"-o a.gif --size 3840x16 --fps 1000",    "a.gif 1000/1 3840x16 0-"                 },
        {"--fps 59.94 --from 1 --to 2",           "kso.mp4 60000/1001 640x480 60-120"       },
        {"--fps 23.976 --to 86400",               "kso.mp4 24000/1001 640x480 0-2071529"    },
        {"--fps 60000/1001 --crf 0",              "kso.mp4 60000/1001 640x480 0-"           },
        {"--fps 12.5 --from 0.000001 --to 0.24",  "kso.mp4 25/2 640x480 1-3"                },
        {"--hashes list",                         " 60/1 640x480 0-"                        },
        {"--pixels list",                         " 60/1 640x480 0-"                        },
        {"--stills s --at 1.999,0.5",             " 60/1 640x480 0-120 s/1.999=119 s/0.5=30"},
        {"--hashes /dev/null --pixels /dev/null", " 60/1 640x480 0-"                        },
        {"--stills s --at 1 -o a.wav",            "a.wav 60/1 640x480 0- s/1=60"            },
        {"--to 1 -- 5 --to",                      "kso.mp4 60/1 640x480 0-60 -- 5 -- --to"  },
        {"--part 2/3 -o a.gif --jobs 2 -- 5",     "a.gif 60/1 640x480 0- part 2/3 -- 5"     },
        {"--join --hashes list --encoder av1",    "kso.mp4 60/1 640x480 0- join"            },
        {"--join --stills s --at 9",              "kso.mp4 60/1 640x480 0- join s/9=540"    },
        {"-- -nosound 4",                         "kso.mp4 60/1 640x480 0- -- -sound -- 4"  },
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(textOf(read(row.line)), row.options) << row.line;
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
        "|--show nowhere|-o|--fps|film.mp4|-x|--FPS 60|--hashes list --crf 18"
        "|--part 0/1|--part 2/1|--part 1|--part 1/1000|--part 1/2 --crf 1|--join --part 1/2"
        "|--join --fps 60|--join -- 3|--stills s --at 1 --encoder x264"
        "|-o a.mp4 --hashes ./a.mp4|--hashes a --pixels b/../a|--stills s --at 1.5 --hashes "
        "s/1.5.png");
    for (std::string line; std::getline(lines, line, '|');) {
        EXPECT_THROW(read(line), UsageError) << line;
    }
    const std::vector<const char*> empty = {"-o", ""};
    EXPECT_THROW(readRecordOptions(empty), UsageError);
}
