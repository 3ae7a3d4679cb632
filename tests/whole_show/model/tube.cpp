#include "reference/plain_bump_tube.h"
#include "tests/whole_show/gl_log.h"
#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"
#include "tests/whole_show/pictures.h"
#include "virtual/timing.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace model {
namespace {

struct Tube : Scene {
    PlainTube tube{64, 64, 1.0F, 40.0F};
    std::vector<std::uint8_t> heights = pixelsOf("muljumap.tga");
    std::array<Quad, 10> lines{};

    Tube()
    {
        std::srand(kFirstTimeOfDay);
        const std::array scroll = {std::rand(), std::rand(), std::rand(), std::rand()};
        tube.setScroll(scroll);
        for (Quad& line : lines) {
            const int x = std::rand() % 384;
            line = {kGreetings, x, std::rand() % 220, 256, 51, 0.0F, 10.0F};
        }
    }

    void hear(int event) override
    {
        if (event >= 128 && event < 138) {
            lines.at(static_cast<std::size_t>(event - 128)).alpha = 1.0F;
        }
    }

    void frame(float t) override
    {
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        tube.bulge(t, heights.data(), heights.data());
        glPushMatrix();
        turn(25.0 * std::sin(double(t)), 0.0, 80.0 * t);
        glTranslatef(0.0F, 0.0F, 2.0F);
        glColor3f(1.0F, 1.0F, 1.0F);
        for (int c = 0; c < 64; ++c) {
            drawStrip(c, t, false);
            drawStrip(c, t, true);
        }
        glPopMatrix();
        glDepthFunc(GL_ALWAYS);
        blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        float k = 0.0F;
        for (Quad& line : lines) {
            line.top = k * 0.099609375F;
            k += 1.0F;
            line.bottom = k * 0.099609375F;
            if (line.alpha > 0.0F) {
                draw(line);
                line.alpha = single(line.alpha * 0.98);
                line.alpha = line.alpha < 0.001 ? 0.0F : line.alpha;
            }
        }
    }

    void drawStrip(int c, float t, bool lit) const
    {
        use(lit ? kLight : kBalls);
        blend(lit ? GL_DST_COLOR : GL_ONE, GL_ZERO);
        glBegin(GL_TRIANGLE_STRIP);
        for (int i = 0; i < 2 * 65; ++i) {
            const std::size_t at = tube.index(c + i % 2, i / 2);
            const PlainTubeVertex& vertex = tube.bulged()[at];
            const PlainTubeVertex& rest = tube.rest()[at];
            glTexCoord2f(lit ? vertex.s : rest.s, lit ? vertex.t : PlainTube::baseT(rest.t, t));
            glVertex3fv(&vertex.x);
        }
        glEnd();
    }
};

} // namespace

std::unique_ptr<Scene> makeTube()
{
    return std::make_unique<Tube>();
}

} // namespace model
