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
    std::optional<std::uint64_t> missing;
};

constexpr Row kRows[] = {
    {"[cd",           {}},
    {"(cd [",         0 }, // what stands still was not drawn
    {"(cd (cd [",     1 }, // the latest of them
    {"(cd ( [",       0 }, // or the latest that drew
    {"(cd [d",        0 }, // drawn over it
    {"(cd [zd",       0 }, // the colours are still there
    {"(cd [cd",       {}},
    {"(cd [cd (cd [", 2 },
    {"[cd ( [",       {}}, // the frame between drew nothing
    {"(DLzd [cd",     0 }, // tested with depths of a frame that was not drawn
    {"(DLzd [cza",    {}},
    {"(DLzd [cAd",    {}},
    {"(DLzd [ecd",    {}},
    {"(eTu [cd",      0 }, // a texture of that frame
    {"(eTu [ca",      0 },
    {"(eTu (u [cd",   1 },
    {"(eTu [cud",     {}},
    {"(eTu [chd",     0 }, // of which a part is new
    {"(eTu [cnd",     {}},
    {"(eTu [cod",     {}},
    {"(eTu [cobd",    0 },
    {"(eTu [ctd",     {}},
    {"(eTu [cd [cd",  0 }, // the second frame has it too
    {"(eTu [cd [cod", {}},
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
        EXPECT_EQ(missingFrame(), row.missing) << row.calls;
    }
}
