#include "tests/whole_show/gl_log.h"
#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"

#include <cstdlib>

namespace model {
namespace {

struct LogoAndJitter : Scene {
    float ahead = 0.0F;

    void hear(int event) override { ahead += event == 131 ? 2.0F : 0.0F; }

    void frame(float t) override
    {
        glClear(GL_COLOR_BUFFER_BIT);
        blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        drawGrid(t + ahead);
        draw({kLogo, 0, 176, 256, 128});
        blend(GL_DST_COLOR, GL_ONE);
        draw({kDog, 128, 30, 512, 256});
        const int a = std::rand() & 7;
        const int b = std::rand() & 7;
        draw({kDog, 125 + a, 27 + b, 512, 256});
        const int c = std::rand() & 15;
        const int d = std::rand() & 15;
        draw({kDog, 121 + c, 23 + d, 512, 256});
        blend(GL_SRC_ALPHA, GL_ONE);
    }
};

} // namespace

std::unique_ptr<Scene> makeLogoAndJitter()
{
    return std::make_unique<LogoAndJitter>();
}

} // namespace model
