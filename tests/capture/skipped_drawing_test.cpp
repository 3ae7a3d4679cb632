#include "tools/capture/skipped_drawing.h"

#include <GL/gl.h>
#include <gtest/gtest.h>
#include <optional>
#include <string_view>

namespace {

constexpr GLsizei kLength = 8;

void upload(GLuint texture, GLsizei width)
{
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, kLength, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
}

// A letter is a call: frames begin with "[" if they are drawn and with "(" if not.
void call(char letter, std::uint64_t& frame)
{
    constexpr GLuint kTexture = 1;
    constexpr GLuint kOther = 2;
    switch (letter) {
    case '[':
        beginFrame(frame++, true);
        break;
    case '(':
        beginFrame(frame++, false);
        break;
    case 'c':
        glClear(GL_COLOR_BUFFER_BIT);
        break;
    case 'z':
        glClear(GL_DEPTH_BUFFER_BIT);
        break;
    case 'd':
        glBegin(GL_POINTS);
        glEnd();
        break;
    case 'a':
        glDrawArrays(GL_POINTS, 0, 0);
        break;
    case 'u':
        upload(kTexture, kLength);
        break;
    case 'h':
        upload(kTexture, kLength / 2);
        break;
    case 'n':
        glTexImage2D(GL_TEXTURE_2D, 0, 4, 8, 8, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        break;
    case 'b':
        glBindTexture(GL_TEXTURE_2D, kTexture);
        break;
    case 'o':
        glBindTexture(GL_TEXTURE_2D, kOther);
        break;
    case 'T':
        glEnable(GL_TEXTURE_2D);
        break;
    case 't':
        glDisable(GL_TEXTURE_2D);
        break;
    case 'D':
        glEnable(GL_DEPTH_TEST);
        break;
    case 'e':
        glDisable(GL_DEPTH_TEST);
        break;
    case 'L':
        glDepthFunc(GL_LEQUAL);
        break;
    case 'A':
        glDepthFunc(GL_ALWAYS);
        break;
    default:
        break;
    }
}

struct Row {
    const char* calls;
    std::optional<MissingFrame> missing;
};

constexpr bool kIsHeld = true;

constexpr Row kRows[] = {
    {"[cd",           {}                       },
    {"(cd [",         MissingFrame{0, kIsHeld} }, // what stands still was not drawn
    {"(cd (cd [",     MissingFrame{1, kIsHeld} }, // the latest of them
    {"(cd ( [",       MissingFrame{0, kIsHeld} }, // or the latest that drew
    {"(cd [d",        MissingFrame{0, !kIsHeld}}, // drawn over it
    {"(cd [zd",       MissingFrame{0, !kIsHeld}}, // the colours are still there
    {"(cd [cd",       {}                       },
    {"(cd [cd (cd [", MissingFrame{2, kIsHeld} },
    {"[cd ( [",       {}                       }, // the frame between drew nothing
    {"(DLzd [cd",     MissingFrame{0, !kIsHeld}}, // tested with depths of a frame that was not drawn
    {"(DLzd [cza",    {}                       },
    {"(DLzd [cAd",    {}                       },
    {"(DLzd [ecd",    {}                       },
    {"(eTu [cd",      MissingFrame{0, !kIsHeld}}, // a texture of that frame
    {"(eTu [ca",      MissingFrame{0, !kIsHeld}},
    {"(eTu (u [cd",   MissingFrame{1, !kIsHeld}},
    {"(eTu [cud",     {}                       },
    {"(eTu [chd",     MissingFrame{0, !kIsHeld}}, // of which a part is new
    {"(eTu [cnd",     {}                       },
    {"(eTu [cod",     {}                       },
    {"(eTu [cobd",    MissingFrame{0, !kIsHeld}},
    {"(eTu [ctd",     {}                       },
    {"(eTu [cd [cd",  MissingFrame{0, !kIsHeld}}, // the second frame has it too
    {"(eTu [cd [cod", {}                       },
};

} // namespace

// Each row begins as a program does, with a whole frame and without textures or depths.
TEST(SkippedDrawing, TellsWhatAPictureLacks)
{
    for (const Row& row : kRows) {
        std::uint64_t frame = 1000;
        for (const char letter : std::string_view("[btenczAd")) {
            call(letter, frame);
        }
        frame = 0;
        for (const char letter : std::string_view(row.calls)) {
            call(letter, frame);
        }
        EXPECT_TRUE(missingFrame() == row.missing) << row.calls;
    }
}
