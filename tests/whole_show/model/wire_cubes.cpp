#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"

#include <cmath>

namespace model {
namespace {

struct Corner {
    float x, y, z;
};

constexpr Corner kCorners[] = {
    {-1, -1, 1 },
    {1,  -1, 1 },
    {1,  1,  1 },
    {-1, 1,  1 },
    {-1, -1, -1},
    {1,  -1, -1},
    {1,  1,  -1},
    {-1, 1,  -1},
};

// Three of the corners above. All sides of all triangles are drawn, so every edge twice.
struct Triangle {
    int a, b, c;
};

constexpr Triangle kTriangles[] = {
    {0, 1, 2},
    {2, 3, 0},
    {5, 4, 7},
    {7, 6, 5},
    {3, 2, 6},
    {6, 7, 3},
    {4, 5, 1},
    {1, 0, 4},
    {4, 0, 3},
    {3, 7, 4},
    {1, 5, 6},
    {6, 2, 1},
};

struct WireCubes : Scene {
    bool resets = false, pushes = false, bursts = false;
    float spread = 0.5F, z = -0.5F, alpha = 0.25F;

    void hear(int event) override
    {
        resets = resets || event == 128 || event == 131;
        pushes = pushes || event == 129;
        bursts = bursts || event == 130;
    }

    void frame(float t) override
    {
        glDisable(GL_DEPTH_TEST);
        glClear(GL_COLOR_BUFFER_BIT);
        z = resets ? -0.5F : single(z - 0.1);
        alpha = resets ? 1.0F : alpha;
        alpha = alpha - 0.03 > 0.5 ? single(alpha - 0.03) : alpha;
        spread = spread > 1.0F ? single(spread - 0.05) : spread;
        spread += pushes ? 1.25F : 0.0F;
        spread += bursts ? 3.75F : 0.0F;
        resets = pushes = bursts = false;
        blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        setGridAlpha(alpha);
        drawGrid(t);
        blend(GL_DST_COLOR, GL_ONE);
        glLineWidth(5.0F);
        const double s = std::sin(double(t));
        for (int i = 0; i < 25; ++i) {
            const float x = single(spread * std::sin(123.32 * t * i));
            const float y = single(spread * std::sin(1133.23 * t * i + 234.324));
            const float jz = single(spread * std::sin(1123.4 * t * i + 234.324));
            glColor4f(0.0875F, 0.1125F, 0.2375F, 0.1F);
            drawCube(t, single(4.5 * s) + x, single(2.0 * s) + y, z + jz);
            glColor4f(0.1875F, 0.0875F, 0.05F, 0.1F);
            drawCube(t, single(-4.5 * s) + x, single(2.0 * s) + y, z + jz);
            glColor4f(0.1375F, 0.0875F, 0.1875F, 0.1F);
            drawCube(t, x, single(-4.5 * s) + y, z + jz);
        }
    }

    static void drawCube(float t, float x, float y, float atZ)
    {
        glPushMatrix();
        glTranslatef(x, y, atZ);
        glScalef(2.0F, 2.0F, 2.0F);
        turn(375.5 * t, 365.75 * t, 335.7 * t);
        glBegin(GL_LINES);
        for (const Triangle& triangle : kTriangles) {
            for (const int corner :
                 {triangle.a, triangle.b, triangle.a, triangle.c, triangle.b, triangle.c}) {
                const Corner& at = kCorners[corner];
                glVertex3f(at.x, at.y, at.z);
            }
        }
        glEnd();
        glPopMatrix();
    }
};

} // namespace

std::unique_ptr<Scene> makeWireCubes()
{
    return std::make_unique<WireCubes>();
}

} // namespace model
