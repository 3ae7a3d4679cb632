#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"
#include "tests/whole_show/pictures.h"

#include <cmath>

namespace model {
namespace {

struct ImageTrail : Scene {
    std::vector<std::uint8_t> image = pixelsOf("additiivinen_aivo.tga");
    float step = 5.0F, ahead = 0.0F;

    void hear(int event) override
    {
        step = event == 128 ? 2.5F : event == 129 ? 10.0F : event == 130 ? 20.0F : step;
        ahead += event == 131 ? 2.0F : 0.0F;
    }

    void frame(float t) override
    {
        glClear(GL_COLOR_BUFFER_BIT);
        drawGrid(t + ahead);
        blend(GL_SRC_ALPHA, GL_ONE);
        upload(kBrain, 64, 64, image.data());
        const double flicker =
            0.5 * (std::sin(15.0 * t) + 1.0) + 0.5 * (std::sin(30.0 * t + 23423.23) + 1.0);
        Quad copy = {kBrain, 192, 0, 255, 255, single(0.3 * flicker + 0.05), 20.0F, 0.7F};
        for (int i = 0; i < 25; ++i) {
            const double p = 7.25 * t * i;
            const double reach = 2.0 + step;
            copy.x += truncated(std::sin(50.203 * t * i) * std::sin(p) * reach);
            copy.y += truncated(std::sin(2340.33 * t * i) * std::sin(p + 21234.32) * reach);
            draw(copy);
        }
        draw(copy);
    }
};

} // namespace

std::unique_ptr<Scene> makeImageTrail()
{
    return std::make_unique<ImageTrail>();
}

} // namespace model
