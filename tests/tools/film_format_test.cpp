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
