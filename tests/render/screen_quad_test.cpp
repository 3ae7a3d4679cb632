#include "image/bitmap.h"
#include "render/screen_quad.h"
#include "runtime/display.h"
#include "tests/render/gl_stage.h"

#include <GL/gl.h>
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr Pixel kRed = {255, 0, 0, 255};
constexpr Pixel kGreen = {0, 255, 0, 255};
constexpr Pixel kBlue = {0, 0, 255, 255};
constexpr Pixel kWhite = {255, 255, 255, 255};

struct Rectangle {
    int x, y, width, height;

    [[nodiscard]] bool holds(int px, int py) const
    {
        return px >= x && px < x + width && py >= y && py < y + height;
    }
};

// Empty when exactly the rectangle's pixels are lit, else where the first wrong one is.
std::string difference(const Rectangle& rectangle)
{
    const Picture picture = lookAtViewport();
    for (int y = 0; y < 272; ++y) {
        for (int x = 0; x < 640; ++x) {
            if ((picture.at(x, y)[0] != 0) != rectangle.holds(x, y)) {
                return std::to_string(x) + ", " + std::to_string(y);
            }
        }
    }
    return pixelsOutsideViewport() == 0 ? "" : "outside the viewport";
}

// Red and green on top, blue and white below.
void paintFourColours(Bitmap& bitmap, unsigned bpp)
{
    const std::array<Pixel, 4> colours = {kRed, kGreen, kBlue, kWhite};
    bitmap.create(64, 32, bpp);
    std::uint8_t* byte = bitmap.getPixels();
    for (unsigned y = 0; y < 32; ++y) {
        for (unsigned x = 0; x < 64; ++x) {
            const Pixel& colour = colours[y / 16 * 2 + x / 32];
            byte = std::copy_n(colour.begin(), bpp / 8, byte);
        }
    }
}

class Quad : public ::testing::Test {
protected:
    void SetUp() override
    {
        raiseCurtain();
        quad.init(20.0F);
    }

    ScreenQuad quad;
};

} // namespace

TEST_F(Quad, CoversExactlyItsPixelsAtEveryDepth)
{
    constexpr Rectangle kRectangles[] = {
        {0,   0,   640, 272},
        {160, 68,  320, 136},
        {0,   176, 128, 32 },
        {60,  70,  64,  32 },
        {383, 219, 257, 53 },
        {1,   1,   1,   1  },
        {-50, -20, 100, 50 },
        {600, 250, 100, 100},
        {320, 0,   0,   0  },
        {-10, -10, 660, 292},
    };
    for (const Rectangle& r : kRectangles) {
        for (const float depth : {0.5F, 10.0F, 20.0F, 300.0F}) {
            raiseCurtain();
            quad.place(r.x, r.y, r.width, r.height);
            quad.setDepth(depth); // keeps the rectangle
            quad.draw();
            EXPECT_EQ(difference(r), "") << r.x << " " << r.y << " at depth " << depth;
            EXPECT_EQ(quad.positionZ(), -depth);
        }
    }
}

TEST_F(Quad, ShowsATextureUprightAndAsOftenAsTold)
{
    for (const unsigned bpp : {24U, 32U}) {
        Bitmap bitmap;
        paintFourColours(bitmap, bpp);
        bitmap.makeTexture();
        quad.init(20.0F);
        quad.setTexture(bitmap.getTextureName());
        quad.draw();
        Picture picture = lookAtViewport();
        EXPECT_EQ(picture.at(160, 68), kRed);
        EXPECT_EQ(picture.at(480, 68), kGreen);
        EXPECT_EQ(picture.at(160, 204), kBlue);
        EXPECT_EQ(picture.at(480, 204), kWhite);

        quad.setTexRepeat(2.0F);
        quad.draw();
        picture = lookAtViewport();
        EXPECT_EQ(picture.at(240, 34), kGreen);
        EXPECT_EQ(picture.at(400, 170), kRed);

        // Only the lower right quarter, then mirrored.
        quad.setTexCoords(0.6F, 0.6F, 0.9F, 0.9F);
        quad.draw();
        EXPECT_EQ(lookAtViewport().at(5, 5), kWhite);
        quad.setTexRepeatU(-1.0F);
        quad.setTexRepeatV(1.0F);
        quad.draw();
        EXPECT_EQ(lookAtViewport().at(160, 68), kGreen);

        // New pixels in the old texture.
        std::fill_n(bitmap.getPixels(), 64U * 32U * (bpp / 8), std::uint8_t{255});
        bitmap.updateTexture();
        quad.draw();
        EXPECT_EQ(lookAtViewport().at(160, 68), kWhite);
    }
}

TEST_F(Quad, BlendsByItsAlphaAndTheTextures)
{
    quad.setAlpha(0.0F);
    quad.draw();
    EXPECT_EQ(lookAtViewport().at(320, 136)[0], 0);
    quad.setAlpha(0.5F);
    quad.draw();
    EXPECT_NEAR(lookAtViewport().at(320, 136)[0], 128, 2);

    raiseCurtain();
    Bitmap bitmap;
    paintFourColours(bitmap, 32);
    bitmap.setColourKeyAlpha(255, 0, 0, 0);
    bitmap.makeTexture();
    quad.setTexture(bitmap.getTextureName());
    quad.setAlpha(1.0F);
    quad.draw();
    EXPECT_EQ(lookAtViewport().at(160, 68)[0], 0);
    EXPECT_EQ(lookAtViewport().at(480, 68)[1], 255);
}

TEST_F(Quad, TurnsAboutTheViewAxisAndMoves)
{
    quad.place(280, 36, 80, 200); // centred: its middle is on the axis
    quad.setRotationZ(90.0F);
    quad.draw();
    EXPECT_EQ(difference({220, 96, 200, 80}), "");

    raiseCurtain();
    quad.init(20.0F);
    quad.place(100, 100, 50, 50);
    quad.setRotationY(180.0F); // to the other side, and back to front
    quad.draw();
    EXPECT_EQ(difference({490, 100, 50, 50}), "");

    raiseCurtain();
    quad.setRotationX(180.0F);
    quad.draw();
    EXPECT_EQ(difference({490, 122, 50, 50}), "");

    raiseCurtain();
    quad.init(20.0F);
    quad.place(100, 100, 50, 50);
    const float unitsPerPixel = 2.0F * 27.169426F / 640.0F;
    quad.setPositionX(30.0F * unitsPerPixel);
    quad.setPositionY(10.0F * unitsPerPixel);
    quad.draw();
    EXPECT_EQ(difference({130, 90, 50, 50}), "");
}

TEST_F(Quad, LeavesOpenGlAsPromised)
{
    Bitmap bitmap;
    paintFourColours(bitmap, 32);
    bitmap.makeTexture();
    quad.setTexture(bitmap.getTextureName());
    quad.setAlpha(0.25F);
    quad.setRotationZ(33.0F);
    quad.draw();

    std::array<float, 16> matrix{};
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix.data());
    for (std::size_t i = 0; i < matrix.size(); ++i) {
        EXPECT_EQ(matrix[i], i % 5 == 0 ? 1.0F : 0.0F);
    }
    std::array<float, 4> colour{};
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_EQ(colour[3], 0.25F);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
