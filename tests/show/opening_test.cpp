// The opening scene against its description: the frames that the real program uploads are the ones
// that this reading of the scene, with the plain line figure, makes at the same times.

#include "bench/plain_line_set.h"
#include "tests/show/fnv1a.h"
#include "tests/show/stage.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace {

constexpr int kWidth = 512;
constexpr int kHeight = 256;

constexpr float kAsItWas = -1.0F;

struct Kick {
    int event;
    float pulse, spin, zoom; // 1 is a full kick
    float zooming;           // 1 on, 0 off
    float base;              // depth
};

constexpr Kick kKicks[] = {
    {128, 1.0F, 1.0F,     kAsItWas, 0.0F,     kAsItWas},
    {129, 0.0F, kAsItWas, 1.0F,     1.0F,     kAsItWas},
    {130, 1.0F, kAsItWas, 1.0F,     1.0F,     kAsItWas},
    {131, 1.0F, 1.0F,     kAsItWas, kAsItWas, -7.5F   },
    {132, 1.0F, 1.0F,     kAsItWas, kAsItWas, -4.0F   },
};

class Opening {
public:
    void hear(int event)
    {
        const auto set = [](float& field, float value) {
            field = value == kAsItWas ? field : value;
        };
        for (const Kick& kick : kKicks) {
            if (kick.event == event) {
                set(pulse_, kick.pulse);
                set(spin_, kick.spin);
                set(zoom_, kick.zoom);
                set(zooming_, kick.zooming);
                set(base_, kick.base);
            }
        }
    }

    // The fingerprint of the canvas at time t.
    std::uint64_t frame(float t)
    {
        const double u = 7.0 * t;
        const double ax = std::sin(double(spin_)) + 0.05 * std::sin(u + 34.32);
        const double ay = 0.05 * std::sin(u + 73.23);
        const double az = std::sin(double(spin_)) + 0.05 * std::sin(u + 3.12);
        const int thickness = static_cast<int>(4.0 * pulse_ + 3.0);
        const float z = zooming_ > 0.0F ? static_cast<float>(base_ + 4.0 * (1.0F - zoom_)) : base_;
        const auto x = static_cast<float>(0.05 * std::sin(13213.13 * t));
        const auto y = static_cast<float>(0.05 * std::sin(23332.23 * t));
        if (before_ > 0.0F) {
            spin_ = static_cast<float>(spin_ * 0.85);
            zoom_ = static_cast<float>(zoom_ * 0.88);
            pulse_ = static_cast<float>(pulse_ * 0.95);
        }
        before_ = t;

        pixels_.assign(pixels_.size(), 0);
        figure_.transform(
            {static_cast<float>(t * ax), static_cast<float>(t * ay), static_cast<float>(t * az)},
            {x, y, z});
        figure_.draw({pixels_.data(), kWidth, kHeight}, thickness);
        for (std::size_t i = 3; i < pixels_.size(); i += 4) {
            pixels_[i] = 255;
        }
        return fnv1a(pixels_.data(), pixels_.size());
    }

private:
    static PlainFigure coolFigure()
    {
        LineSet lines;
        lines.create(600);
        lines.generate(2);
        return PlainFigure(lines.vertices());
    }

    PlainFigure figure_ = coolFigure();
    std::vector<std::uint8_t> pixels_ =
        std::vector<std::uint8_t>(std::size_t{kWidth} * kHeight * 4);
    float pulse_ = 0.0F;
    float spin_ = 0.0F;
    float zoom_ = 0.0F;
    float zooming_ = 0.0F;
    float base_ = -15.0F;
    float before_ = 0.0F;
};

// What one frame asks of OpenGL: the canvas with this fingerprint, upright over the whole viewport.
std::vector<std::string> expectedFrame(std::uint64_t fingerprint)
{
    std::array<char, 17> hash{};
    std::snprintf(hash.data(), hash.size(), "%016llx",
                  static_cast<unsigned long long>(fingerprint));
    return {
        "glClear 0x4000",
        "glBindTexture 0xde1 1",
        std::string("glTexSubImage2D 0xde1 0 0 0 512 256 0x1908 0x1401 ") + hash.data(),
        "glEnable 0xde1",
        "glTexEnvf 0x2300 0x2200 0x2100",
        "glBindTexture 0xde1 1",
        "glPushMatrix",
        "glTranslatef 0 0 -20",
        "glRotatef 0 1 0 0",
        "glRotatef 0 0 1 0",
        "glRotatef 0 0 0 1",
        "glColor4f 1 1 1 1",
        "glBegin 0x5",
        "glTexCoord2fv 1 0",
        "glVertex3fv 27.169426 11.5470057 0",
        "glTexCoord2fv 0 0",
        "glVertex3fv -27.169426 11.5470057 0",
        "glTexCoord2fv 1 1",
        "glVertex3fv 27.169426 -11.5470057 0",
        "glTexCoord2fv 0 1",
        "glVertex3fv -27.169426 -11.5470057 0",
        "glEnd",
        "glFlush",
        "glPopMatrix",
        "glDisable 0xde1",
        "SDL_GL_SwapBuffers",
    };
}

} // namespace

TEST(OpeningScene, DrawsItsDescriptionAtEveryFrameRate)
{
    // Every event in every state that matters, several in one frame, and some that mean nothing.
    // From row 26 to 30 first the empty scene is on, then none, and the events there are not heard;
    // the one that comes with the return is.
    // clang-format off
    const std::vector<Cue> cues = {
        {0, 2, 0, 128},  {0, 5, 0, 129},  {0, 9, 1, 130},  {0, 12, 2, 128}, {0, 14, 0, 127},
        {0, 15, 0, 133}, {0, 16, 3, 131}, {0, 18, 0, 130}, {0, 22, 0, 132}, {0, 22, 1, 130},
        {0, 24, 0, 255}, {0, 26, 0, 7},   {0, 27, 0, 131}, {0, 28, 0, 9},   {0, 29, 0, 128},
        {0, 30, 0, 130}, {0, 30, 1, 0},   {0, 32, 0, 129}, {0, 33, 0, 132}, {0, 35, 0, 128},
        {0, 35, 1, 129}, {0, 35, 2, 130}, {0, 36, 0, 64},  {0, 40, 0, 8},
    };
    // clang-format on
    for (const int framesPerSecond : {30, 60, 144}) {
        const Outcome outcome =
            perform({.module = scriptedModule(1, cues), .framesPerSecond = framesPerSecond});

        std::multimap<int, int> events; // by frame
        for (const Cue& cue : cues) {
            events.emplace(frameThatHears(cue.order, cue.row, framesPerSecond), cue.value);
        }
        const int end = frameThatHears(0, 40, framesPerSecond);
        ASSERT_EQ(static_cast<int>(outcome.frames.size()), end);

        Opening opening;
        int scene = 0;
        for (int number = 1; number < end; ++number) {
            const auto [first, last] = events.equal_range(number);
            for (auto event = first; event != last; ++event) {
                if (event->second < 64) {
                    scene = event->second;
                }
            }
            if (scene != 0) {
                continue;
            }
            for (auto event = first; event != last; ++event) {
                opening.hear(event->second);
            }
            const int milliseconds = (number - 1) * 1000 / framesPerSecond;
            const auto seconds = static_cast<float>(milliseconds / 1000.0);
            ASSERT_EQ(outcome.frames[static_cast<std::size_t>(number - 1)],
                      expectedFrame(opening.frame(seconds)))
                << "frame " << number << " at " << framesPerSecond;
        }
    }
}
