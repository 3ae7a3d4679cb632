#include "render/cube_mesh.h"
#include "tests/render/on_display.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

namespace {

class Cube : public OnDisplay {
protected:
    Cube()
    {
        glEnable(GL_DEPTH_TEST);
        cube.build(0.5F);
        cube.setPosition(0.0F, 0.0F, -10.0F);
        cube.setScale(4.0F, 4.0F, 4.0F); // the front at -8, 59 pixels from its middle to its edges
        cube.setRotation(0.0F, 0.0F, 0.0F);
    }
    ~Cube() override { glDisable(GL_DEPTH_TEST); }

    Pixel drawnAt(int right, int down) // from the middle of the view
    {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        cube.draw();
        return pixelAt(kViewWidth / 2 + right, kViewHeight / 2 + down);
    }

    CubeMesh cube;
};

} // namespace

TEST_F(Cube, HasAColourForEachFaceAndTurnsAboutXLast)
{
    struct View {
        float x, y, z; // degrees
        Pixel colour;
    };
    constexpr View kViews[] = {
        {0.0F,   0.0F,   0.0F,  {51, 0, 51, 255}    },
        {0.0F,   180.0F, 0.0F,  {102, 51, 51, 255}  },
        {90.0F,  0.0F,   0.0F,  {0, 51, 153, 255}   },
        {-90.0F, 0.0F,   0.0F,  {0, 204, 51, 255}   },
        {0.0F,   90.0F,  0.0F,  {179, 179, 26, 255} },
        {0.0F,   -90.0F, 0.0F,  {230, 230, 230, 255}},
        {90.0F,  90.0F,  90.0F, {230, 230, 230, 255}},
    };
    cube.setDrawMode(1);
    for (const View& view : kViews) {
        cube.setRotation(view.x, view.y, view.z);
        for (const int channel : {0, 1, 2}) {
            const auto i = static_cast<std::size_t>(channel);
            EXPECT_NEAR(drawnAt(55, 55)[i], view.colour[i], 1)
                << channel << " of " << view.x << " " << view.y << " " << view.z;
        }
        EXPECT_EQ(drawnAt(63, 0)[2], 0);
    }
}

TEST_F(Cube, ShowsEdgesAndDiagonalsOrItsTextureOrNothing)
{
    cube.setDrawMode(2);
    cube.setLineWidth(5.0F);
    cube.setLineColour(1.0F, 1.0F, 1.0F);
    cube.setAlpha(1.0F);
    EXPECT_EQ(drawnAt(59, 20), kWhite);  // an edge
    EXPECT_EQ(drawnAt(30, -30), kWhite); // the front's diagonal
    EXPECT_EQ(drawnAt(0, 52)[0], 0);

    makeFourColours(24);
    cube.setTexture(bitmap.getTextureName());
    cube.setDrawMode(3);
    EXPECT_EQ(drawnAt(-30, -30), kRed);
    EXPECT_EQ(drawnAt(30, -30), kGreen);
    EXPECT_EQ(drawnAt(-30, 30), kBlue);
    glDisable(GL_TEXTURE_2D);

    for (const int mode : {0, 4}) {
        cube.setDrawMode(mode);
        EXPECT_EQ(drawnAt(0, 0)[0], 0);
    }
}
