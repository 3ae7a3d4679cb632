#include "reference/plain_line_set.h"
#include "reference/plain_zoom_blur.h"
#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"

#include <cmath>

namespace model {
namespace {

struct Closing : Scene {
    PlainFigure figure = PlainFigure(plainCurve(600, 1));
    PlainBlur blur{256, 128};
    float phase = 0.0F;

    void frame(float /*t*/) override
    {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDepthFunc(GL_ALWAYS);
        blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        Canvas lines(256, 128);
        figure.transform({0.0F, single(0.7 * phase), phase},
                         {0.0F, 0.0F, single(-2.5 * (0.5 * std::sin(0.5 * phase) + 0.5) - 2.0)});
        figure.scaleColours(0.02F);
        figure.draw({lines.bytes(), lines.width, lines.height}, 10);
        phase = single(phase + 0.11);
        Canvas burst(lines.width, lines.height);
        blur.render(lines.bytes(), burst.pixels.data(), 10);
        burst.makeOpaque();
        upload(kBurst, burst);
        drawOverView(kBurst);
        blend(GL_ZERO, GL_ONE_MINUS_SRC_COLOR);
        draw({kLastTitle, 192, 60, 256, 128});
    }
};

} // namespace

std::unique_ptr<Scene> makeClosing()
{
    return std::make_unique<Closing>();
}

} // namespace model
