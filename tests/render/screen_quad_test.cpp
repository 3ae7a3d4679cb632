#include "render/screen_quad.h"
#include "tests/render/on_display.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>

namespace {

class Quad : public OnDisplay {
protected:
    Quad() { quad.init(20.0F); }

    void expectDrawn(const Rectangle& r)
    {
        expectLit(r, [this] { quad.draw(); });
    }

    // Draws the quad and tells what is then at this place of the viewport.
    Pixel drawnAt(int x, int y)
    {
        quad.draw();
        return pixelAt(x, y);
    }

    void showFourColours(unsigned bpp)
    {
        makeFourColours(bpp);
        quad.setTexture(bitmap.getTextureName());
    }

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

    constexpr float kUnitsPerPixel = 2.0F * 27.169426F / kViewWidth; // at depth 20
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
