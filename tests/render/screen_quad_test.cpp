// What OpenGL draws, read back from a real display.
#include "image/bitmap.h"
#include "render/screen_quad.h"
#include "runtime/display.h"
#include "runtime/options.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr int kWindowWidth = 640;
constexpr int kWindowHeight = 480;
constexpr int kViewHeight = 272;

using Pixel = std::array<std::uint8_t, 4>; // red, green, blue, alpha
constexpr Pixel kRed = {255, 0, 0, 255};
constexpr Pixel kGreen = {0, 255, 0, 255};
constexpr Pixel kBlue = {0, 0, 255, 255};
constexpr Pixel kWhite = {255, 255, 255, 255};

struct Rectangle {
    int x, y, width, height; // from the viewport's top left corner
};

// One display for all tests.
class Quad : public ::testing::Test {
protected:
    Quad()
    {
        if (displayMetrics.viewportWidth == 0) {
            options.fullscreen = 0;
            initVideo(kWindowWidth, kWindowHeight);
            initGL(kWindowWidth, kWindowHeight, kWindowWidth, kViewHeight);
        }
        glClear(GL_COLOR_BUFFER_BIT);
        quad.init(20.0F);
    }

    // Draws the quad and looks whether, in the whole window, it lights exactly the part of a
    // rectangle that is within the viewport.
    void expectDrawn(const Rectangle& r)
    {
        std::vector<Pixel> pixels(std::size_t{kWindowWidth} * kWindowHeight); // lowest row first
        glClear(GL_COLOR_BUFFER_BIT);
        quad.draw();
        glReadPixels(0, 0, kWindowWidth, kWindowHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        for (int i = 0; i < kWindowWidth * kWindowHeight; ++i) {
            const int x = i % kWindowWidth;
            const int y = displayMetrics.viewportY + kViewHeight - 1 - i / kWindowWidth;
            const bool inside = y >= 0 && y < kViewHeight && x >= r.x && x < r.x + r.width &&
                                y >= r.y && y < r.y + r.height;
            ASSERT_EQ(pixels[static_cast<std::size_t>(i)][0] != 0, inside)
                << x << ", " << y << " of the quad at " << r.x << ", " << r.y;
        }
    }

    // Draws the quad and tells what is then at this place of the viewport.
    Pixel drawnAt(int x, int y)
    {
        Pixel pixel{};
        quad.draw();
        glReadPixels(x, displayMetrics.viewportY + kViewHeight - 1 - y, 1, 1, GL_RGBA,
                     GL_UNSIGNED_BYTE, pixel.data());
        return pixel;
    }

    // Puts a texture on the quad: red and green on top, blue and white below.
    void showFourColours(unsigned bpp)
    {
        constexpr std::array kColours = {kRed, kGreen, kBlue, kWhite};
        bitmap.create(64, 32, bpp);
        std::uint8_t* byte = bitmap.getPixels();
        for (unsigned i = 0; i < 64 * 32; ++i) {
            byte = std::copy_n(kColours[i / 1024 * 2 + i / 32 % 2].begin(), bpp / 8, byte);
        }
        bitmap.makeTexture();
        quad.setTexture(bitmap.getTextureName());
    }

    Bitmap bitmap;
    ScreenQuad quad;
};

} // namespace

TEST_F(Quad, CoversExactlyItsPixelsAtEveryDepth)
{
    constexpr Rectangle kRectangles[] = {
        {0,   176, 128, 32 },
        {383, 219, 257, 53 },
        {1,   1,   1,   1  },
        {-50, -20, 100, 50 },
        {600, 250, 100, 100},
        {320, 0,   0,   0  },
    };
    for (const Rectangle& r : kRectangles) {
        for (const float depth : {0.5F, 10.0F, 20.0F, 300.0F}) {
            quad.place(r.x, r.y, r.width, r.height);
            quad.setDepth(depth); // keeps the rectangle
            expectDrawn(r);
        }
    }
}

TEST_F(Quad, ShowsATextureUprightAndAsOftenAsTold)
{
    for (const unsigned bpp : {24U, 32U}) {
        showFourColours(bpp);
        quad.init(20.0F); // keeps the texture
        EXPECT_EQ(drawnAt(160, 68), kRed);
        EXPECT_EQ(drawnAt(480, 68), kGreen);
        EXPECT_EQ(drawnAt(160, 204), kBlue);
        EXPECT_EQ(drawnAt(480, 204), kWhite);
        quad.setTexRepeat(2.0F);
        EXPECT_EQ(drawnAt(240, 34), kGreen);
        EXPECT_EQ(drawnAt(400, 170), kRed);
        quad.setTexCoords(0.6F, 0.6F, 0.9F, 0.9F); // only the lower right quarter
        EXPECT_EQ(drawnAt(5, 5), kWhite);
        quad.setTexRepeatU(-1.0F); // mirrored
        quad.setTexRepeatV(1.0F);
        EXPECT_EQ(drawnAt(160, 68), kGreen);

        // New pixels in the old texture.
        std::fill_n(bitmap.getPixels(), 64U * 32U * (bpp / 8), std::uint8_t{255});
        bitmap.updateTexture();
        EXPECT_EQ(drawnAt(160, 68), kWhite);
    }
}

TEST_F(Quad, BlendsByItsAlphaAndTheTextures)
{
    quad.setAlpha(0.0F);
    EXPECT_EQ(drawnAt(320, 136)[0], 0);
    quad.setAlpha(0.5F);
    EXPECT_NEAR(drawnAt(320, 136)[0], 128, 2);

    quad.setAlpha(1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    showFourColours(32);
    bitmap.setColourKeyAlpha(255, 0, 0, 0);
    bitmap.updateTexture();
    EXPECT_EQ(drawnAt(160, 68)[0], 0);
    EXPECT_EQ(drawnAt(480, 68)[1], 255);
}

TEST_F(Quad, MovesAndTurnsAboutTheMiddleOfTheView)
{
    quad.place(100, 100, 50, 50);
    quad.setRotationX(180.0F);
    expectDrawn({100, 122, 50, 50});
    quad.setRotationX(0.0F);
    quad.setRotationY(180.0F);
    expectDrawn({490, 100, 50, 50});
    quad.place(300, 36, 40, 100);
    quad.setRotationZ(90.0F);
    expectDrawn({320, 116, 100, 40}); // about z first
    quad.setRotationY(0.0F);
    expectDrawn({220, 116, 100, 40});

    constexpr float kUnitsPerPixel = 2.0F * 27.169426F / kWindowWidth; // at depth 20
    quad.setRotationZ(0.0F);
    quad.setPositionX(30.0F * kUnitsPerPixel);
    quad.setPositionY(10.0F * kUnitsPerPixel);
    expectDrawn({330, 26, 40, 100});
}

TEST_F(Quad, LeavesOpenGlAsPromised)
{
    showFourColours(32);
    quad.setAlpha(0.25F);
    quad.draw(); // the matrix is seen in every test that draws twice

    std::array<float, 4> colour{};
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_EQ(colour, (std::array{1.0F, 1.0F, 1.0F, 0.25F}));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
