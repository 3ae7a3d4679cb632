#include "tools/record/film_format.h"
#include "tools/record/record_error.h"

#include <gtest/gtest.h>

// A % in a name is a number of pictures only where pictures are files of their own.
TEST(FilmFormat, FollowsFromTheName)
{
    struct Row {
        const char* name;
        const char* holds; // pictures, sound, many files
    };
    constexpr Row kRows[] = {
        {"kso.mp4",         "ps" },
        {"kso.MKV",         "ps" },
        {"kso.gif",         "p"  },
        {"kso.flac",        "s"  },
        {"kso.m3u8",        "psm"},
        {"kso.nut",         "ps" },
        {"at-%05d.png",     "pm" },
        {"at-%d.gif",       "pm" },
        {"take%d.mp4",      "ps" },
        {"100%.webm",       "ps" },
        {"take%d.wav",      "s"  },
        {"take%d.nut",      "ps" },
        {"%d folder/a.gif", "p"  },
    };
    for (const auto& [name, holds] : kRows) {
        const FilmFormat format = filmFormat(name, {});
        EXPECT_EQ(std::string(format.pictures ? "p" : "") + (format.sound ? "s" : "") +
                      (format.isManyFiles ? "m" : ""),
                  holds)
            << name;
    }
    for (const char* refused : {"kso.png", "100%.png", "take%d.m3u8"}) {
        EXPECT_THROW(filmFormat(refused, {}), UsageError) << refused;
    }
}

TEST(FilmFormat, HasTheEncodersThatItsFilesMayHold)
{
    struct Row {
        const char* name;
        const char* encoder;
        const char* options; // among them; empty: refused
    };
    constexpr Row kRows[] = {
        {"a.mp4",  "",          "libx264 -preset veryfast"   },
        {"a.mp4",  "x265",      "-crf 7 -tag:v hvc1"         },
        {"a.mkv",  "x265",      "bt709 -crf 7"               },
        {"a.webm", "",          "libvpx-vp9"                 },
        {"a.webm", "av1",       "libsvtav1 -preset 8"        },
        {"a.mkv",  "vaapi",     "format=nv12,hwupload -vaapi"},
        {"a.mp4",  "nvenc",     "-cq 7"                      },
        {"a.mov",  "av1",       ""                           },
        {"a.webm", "x264",      ""                           },
        {"a.mp4",  "x264 x265", ""                           },
        {"a.gif",  "x264",      ""                           },
        {"a.nut",  "x264",      ""                           },
    };
    for (const auto& [name, encoder, options] : kRows) {
        if (*options == 0) {
            EXPECT_THROW(filmFormat(name, {{}, encoder}), UsageError) << name << encoder;
            continue;
        }
        std::string all;
        for (const std::string& word : filmFormat(name, {7, encoder}).pictureOptions) {
            all += word + ' ';
        }
        EXPECT_NE(all.find(std::string(options) + (options[0] == '-' ? " " : "")),
                  std::string::npos)
            << all;
    }
}
