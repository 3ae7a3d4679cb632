#include "render/grid_mesh.h"
#include "tests/render/on_display.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

namespace {

class Grid : public OnDisplay {
protected:
    void build(const Rectangle& r)
    {
        grid.setProjection(kViewWidth, kViewHeight, kFieldOfView);
        grid.build(r.x, r.y, r.width, r.height, 16, 9, 10.0F);
    }

    GridMesh grid;
};

} // namespace

TEST_F(Grid, CoversExactlyItsPixels)
{
    for (const Rectangle& r : {
             Rectangle{0,   0,   kViewWidth, kViewHeight},
             {128, 34,  320,        204        },
             {-64, -34, 160,        102        }
    }) {
        build(r);
        grid.setAlpha(1.0F);
        expectLit(r, [this] { grid.draw(); });
    }
}

TEST_F(Grid, ShowsItsTextureUprightAndFadedByItsAlpha)
{
    build({0, 0, kViewWidth, kViewHeight});
    makeFourColours(32);
    grid.setTexture(bitmap.getTextureName());
    grid.draw();
    EXPECT_EQ(pixelAt(160, 68)[0], 0); // no alpha yet
    grid.setAlpha(1.0F);
    grid.draw();
    EXPECT_EQ(pixelAt(160, 68), kRed);
    EXPECT_EQ(pixelAt(480, 68), kGreen);
    EXPECT_EQ(pixelAt(160, 204), kBlue);
    EXPECT_EQ(pixelAt(480, 204), kWhite);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_COORD_ARRAY));
}

TEST(GridDeathTest, EndsWhenThereIsNoMemory)
{
    for (const int rows : {1 << 28, 1 << 30, -3}) {
        EXPECT_EXIT(GridMesh{}.build(0, 0, 1, 1, 1 << 30, rows, 1.0F), testing::ExitedWithCode(1),
                    "");
    }
}
