#include "reference/plain_line_set.h"
#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"

#include <cmath>

namespace model {
namespace {

struct Opening : Scene {
    PlainFigure figure = PlainFigure(plainCurve(600, 2));
    float pulse = 0.0F, spin = 0.0F, zoomKick = 0.0F, depth = -15.0F, before = 0.0F;
    bool zooming = false;

    void hear(int event) override
    {
        const bool spins = event == 128 || event == 131 || event == 132;
        const bool zooms = event == 129 || event == 130;
        pulse = event == 129 ? 0.0F : spins || zooms ? 1.0F : pulse;
        spin = spins ? 1.0F : spin;
        zoomKick = zooms ? 1.0F : zoomKick;
        zooming = zooms || (zooming && event != 128);
        depth = event == 131 ? -7.5F : event == 132 ? -4.0F : depth;
    }

    void frame(float t) override
    {
        const double u = 7.0 * t;
        const double turned = std::sin(double(spin));
        const int thickness = truncated(4.0 * pulse + 3.0);
        const float z = zooming ? single(depth + 4.0 * (1.0F - zoomKick)) : depth;
        if (before > 0.0F) {
            spin = single(spin * 0.85);
            zoomKick = single(zoomKick * 0.88);
            pulse = single(pulse * 0.95);
        }
        before = t;
        glClear(GL_COLOR_BUFFER_BIT);
        Canvas canvas(512, 256);
        figure.transform(
            {single(t * (turned + 0.05 * std::sin(u + 34.32))),
             single(t * (0.05 * std::sin(u + 73.23))),
             single(t * (turned + 0.05 * std::sin(u + 3.12)))},
            {single(0.05 * std::sin(13213.13 * t)), single(0.05 * std::sin(23332.23 * t)), z});
        figure.draw({canvas.bytes(), canvas.width, canvas.height}, thickness);
        canvas.makeOpaque();
        upload(kLineCanvas, canvas);
        drawOverView(kLineCanvas);
    }
};

} // namespace

std::unique_ptr<Scene> makeOpening()
{
    return std::make_unique<Opening>();
}

} // namespace model
