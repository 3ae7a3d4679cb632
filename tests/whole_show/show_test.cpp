// The whole program from outside: what it asks of SDL and OpenGL, in which order, and how it ends.

#include "tests/whole_show/fnv1a.h"
#include "tests/whole_show/gl_log.h"
#include "tests/whole_show/pictures.h"
#include "tests/whole_show/stage.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace {

using Calls = std::vector<std::string>;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kNoModeText = "\nError swithing to 640x480! Please make sure you"
                                    "\nHave 640x480 mode defined in your XF86Config!\n\n";

const Calls kBlackFrame = {"glClear 0x4000", "SDL_GL_SwapBuffers"};

Calls words(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

bool isDrawn(const Calls& frame)
{
    return std::find(frame.begin(), frame.end(), "SDL_GL_SwapBuffers") != frame.end();
}

} // namespace

TEST(Show, StartsUpInOrder)
{
    // clang-format off
    std::vector<::testing::Matcher<std::string>> wanted = {
        "SDL_Init 0x20", "SDL_GL_SetAttribute 5 1", "SDL_SetVideoMode 640 480 16 0x2",
        "SDL_ShowCursor 0", "glClearColor 0 0 0 0", "glShadeModel 0x1d01",
        "glViewport 0 104 640 272", "glMatrixMode 0x1701", "glLoadIdentity",
        "gluPerspective 60 2.35294127 0.1 400", "glMatrixMode 0x1700", "glLoadIdentity",
        "glEnable 0xbe2", "glBlendFunc 0x302 0x303", "glHint 0xc50 0x1102",
        "glHint 0xc51 0x1102", "SDL_OpenAudio 44100 32784 2 512", "SDL_PauseAudio 0",
        "SDL_Delay 1000",
    };
    // clang-format on
    unsigned name = 0;
    for (const Loaded& loaded : kAllLoaded) {
        if ((loaded.how & kGrey) == 0) {
            wanted.emplace_back("glGenTextures 1");
            wanted.emplace_back(text("glBindTexture 0xde1 %u", ++name));
            for (const char* parameter :
                 {"2802 0x2901", "2803 0x2901", "2800 0x2601", "2801 0x2601"}) {
                wanted.emplace_back(text("glTexParameteri 0xde1 0x%s", parameter));
            }
            // What a canvas begins with does not matter.
            const std::vector<std::uint8_t> pixels = pixelsOf(loaded);
            const unsigned long long hash = fnv1a(pixels.data(), pixels.size());
            wanted.emplace_back(
                StartsWith(text("glTexImage2D 0xde1 0 0x1908 %d %d 0 0x1908 0x1401 ", loaded.width,
                                loaded.height) +
                           (loaded.file.empty() ? "" : text("%016llx", hash))));
        }
        if ((loaded.how & kThenSeeds) != 0) {
            wanted.emplace_back("time");
            wanted.emplace_back("srand 1000000000");
        }
    }
    const Outcome outcome = perform({.frameCount = 1});
    EXPECT_THAT(outcome.startUp, ::testing::ElementsAreArray(wanted));
    EXPECT_EQ(outcome.frames.size(), 1);
    EXPECT_THAT(outcome.shutDown, ElementsAre("SDL_CloseAudio", "SDL_Quit"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output + outcome.errors, "");
}

// By then those before it have their textures, and no others.
TEST(Show, EndsAtAMissingPicture)
{
    std::set<std::string> seen = {""};
    long textures = 0;
    for (const Loaded& loaded : kAllLoaded) {
        if (seen.insert(loaded.file).second) {
            const Outcome outcome = perform({.frameCount = 1, .missingPicture = loaded.file});
            EXPECT_EQ(outcome.errors, "\n\nError opening data/" + loaded.file + "!\n\n");
            EXPECT_EQ(outcome.status, 0);
            EXPECT_THAT(outcome.frames, IsEmpty());
            const Calls& calls = outcome.shutDown;
            EXPECT_EQ(std::count(calls.begin(), calls.end(), "glGenTextures 1"), textures)
                << loaded.file;
        }
        textures += (loaded.how & kGrey) == 0 ? 1 : 0;
    }
}

// Two pictures are read by effects that know their size and depth.
TEST(Show, EndsAtAPictureThatAnEffectCannotRead)
{
    const std::pair<const char*, const char*> rows[] = {
        {"texture2.tga", "\n\nError! data/texture2.tga must have 256 x 256 pixels!!\n\n"},
        {"muljumap.tga", "\nError! Can't convert to 8bpp!!\n\n"                         },
    };
    for (const auto& [file, errors] : rows) {
        const Outcome outcome = perform({.frameCount = 1, .wrongPicture = file});
        EXPECT_EQ(outcome.errors, errors);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.frames, IsEmpty());
    }
}

TEST(Show, OpensFullScreenOrSilentlyAsTold)
{
    struct Row {
        const char* arguments;
        const char* videoMode;
        bool sound;
    };
    constexpr Row kRows[] = {
        {"",                     "SDL_SetVideoMode 640 480 16 0x80000002", true },
        {"-nosound",             "SDL_SetVideoMode 640 480 16 0x80000002", false},
        {"-window -nosound",     "SDL_SetVideoMode 640 480 16 0x2",        false},
        {"-window -nosound 3 4", "SDL_SetVideoMode 640 480 16 0x80000002", true },
    };
    for (const Row& row : kRows) {
        const Outcome outcome = perform({.arguments = words(row.arguments), .frameCount = 1});
        EXPECT_THAT(outcome.startUp, ::testing::Contains(row.videoMode));
        EXPECT_EQ(outcome.shutDown.front() == "SDL_CloseAudio", row.sound);
        EXPECT_EQ(outcome.status, 1);
    }
}

// Order n ends the show at its row n, so the number of frames tells where the music began.
TEST(Show, BeginsWhereTheStartSceneIs)
{
    struct Row {
        const char* arguments;
        int order;
    };
    constexpr Row kRows[] = {
        {"-window",     0 },
        {"2",           3 },
        {"3",           6 },
        {"-window 4",   10},
        {"5",           13},
        {"-window 6",   18},
        {"7",           26},
        {"8",           0 },
        {"-window 2 7", 26},
        {"1",           0 },
    };
    std::vector<Cue> cues;
    for (int order = 0; order < 27; ++order) {
        cues.push_back({order, order + 1, 3, 8});
    }
    const XmModule module = scriptedModule(27, cues);
    for (const Row& row : kRows) {
        const Outcome outcome =
            perform({.arguments = words(row.arguments), .module = module, .framesPerSecond = 20});
        // The pass that hears the end draws nothing.
        EXPECT_EQ(outcome.frames.size(), frameThatHears(0, row.order + 1, {20, 1}) + 1)
            << row.arguments;
        EXPECT_EQ(outcome.status, 1);
        EXPECT_FALSE(isDrawn(outcome.frames.back()));
        EXPECT_THAT(outcome.shutDown, ElementsAre("SDL_CloseAudio", "SDL_Quit"));
    }
}

TEST(Show, EndsAtAKeyOrAClosedWindowAfterAWholeFrame)
{
    struct Row {
        const char* events;
        std::size_t frames;
    };
    // 2 a key goes down, 3 one comes up, 4 the mouse moves, 5 and 6 its button, 12 the window
    // closes.
    constexpr Row kRows[] = {
        {"0:2",                     1},
        {"4:12",                    5},
        {"1:3,2:4,2:5,3:6,6:2,6:4", 7}
    };
    for (const Row& row : kRows) {
        const Outcome outcome = perform({.events = row.events});
        EXPECT_EQ(outcome.frames.size(), row.frames) << row.events;
        EXPECT_TRUE(isDrawn(outcome.frames.back()));
        EXPECT_EQ(outcome.status, 1);
    }
}

TEST(Show, PlaysSilentlyInRealTime)
{
    const XmModule module = scriptedModule(1, {
                                                  {0, 1,  0, 7},
                                                  {0, 12, 0, 8}
    });
    const Outcome outcome = perform({.arguments = {"-nosound"}, .module = module});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.frames, ::testing::Contains(kBlackFrame));
    EXPECT_THAT(outcome.shutDown, ElementsAre("SDL_Quit"));
}

TEST(Show, FailsWithItsMessageAndStatusZero)
{
    constexpr const char* kNoDeviceText = "Error!\nError initializing output device.\n";

    struct Row {
        const char* failingCall;
        const char* module; // the file's bytes; "" is no file
        const char* output;
        const char* errors;
    };
    constexpr Row kRows[] = {
        {"SDL_Init",         "any",                  "",                              "\nError initializing SDL!\n\n"},
        {"SDL_SetVideoMode", "any",                  "",                              kNoModeText                    },
        {"SDL_OpenAudio",    "any",                  kNoDeviceText,                   ""                             },
        {"",                 "",                     "Error!\nFile not found\n",      ""                             },
        {"",                 "no module at all",     "Error!\nUnknown file format\n", ""                             },
        {"",                 "Extended Module: cut", "Error!\nError loading file\n",  ""                             },
    };
    for (const Row& row : kRows) {
        const Outcome outcome = perform(
            {.module = std::nullopt, .failingCall = row.failingCall, .moduleBytes = row.module});
        EXPECT_EQ(outcome.status, 0) << row.output << row.errors;
        EXPECT_EQ(outcome.output, row.output);
        EXPECT_EQ(outcome.errors, row.errors);
        EXPECT_THAT(outcome.frames, IsEmpty()) << row.output << row.errors;
    }
}

// Xlib does that where a server has no OpenGL. Elsewhere the status is the other library's.
TEST(Show, ReportsTheModeInWhichALibraryEndsIt)
{
    const Outcome inMode = perform({.exitingCall = "SDL_SetVideoMode"});
    EXPECT_EQ(inMode.status, 0);
    EXPECT_EQ(inMode.errors, kNoModeText);
    for (const char* call : {"SDL_Init", "SDL_ShowCursor", "SDL_OpenAudio"}) {
        const Outcome outcome = perform({.exitingCall = call});
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_EQ(outcome.errors, "") << call;
    }
}
