#include "reference/plain_twister.h"
#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"
#include "tests/whole_show/pictures.h"

#include <array>
#include <cmath>

namespace model {
namespace {

struct Twister : Scene {
    std::vector<std::uint8_t> column = pixelsOf("texture2.tga");
    std::array<bool, 5> shown{};
    Quad last{kNone, 0, 0, 0, 0};
    float flash = 0.0F, before = 0.0F;

    void hear(int event) override
    {
        if (event >= 128 && event <= 137) {
            shown.at(static_cast<std::size_t>(event - 128) / 2) = event % 2 == 0;
            flash = 1.0F;
        }
    }

    void frame(float t) override
    {
        constexpr Quad kTitles[] = {
            {kTitleThe,       0,  176, 128, 32 },
            {kTitleEnd,       0,  208, 256, 64 },
            {kTitleKso,       0,  0,   256, 128},
            {kTitleBy,        60, 70,  64,  32 },
            {kTitleVelmorant, 80, 80,  512, 64 }
        };
        glClear(GL_COLOR_BUFFER_BIT);
        drawOverView(kLandscape);
        last = {last.texture, 0, 0, 0, 0};
        for (std::size_t i = 0; i < shown.size(); ++i) {
            if (shown[i]) {
                last = kTitles[i];
                draw(last);
            }
        }
        flash = before > 0.0F ? single(flash * 0.55) : flash;
        before = t;
        Canvas canvas(512, 256);
        const auto* source = reinterpret_cast<const std::uint32_t*>(column.data());
        for (int i = 0; i < canvas.height; ++i) {
            const int radius = truncated(125.0 + 45.0 * std::sin(4.5 * t + 0.05 * i));
            const int centre = truncated(256.0 + 90.0 * std::sin(t + 0.02 * i));
            plainTwisterRow({canvas.pixels.data(), canvas.width, canvas.height, source, radius},
                            centre, i, single(3.0 * t + 2.24 * flash + 0.02 * i));
        }
        upload(kTwisterCanvas, canvas);
        draw({kTwisterCanvas, 320, 0, 320, kViewHeight});
        draw(last);
    }
};

} // namespace

std::unique_ptr<Scene> makeTwister()
{
    return std::make_unique<Twister>();
}

} // namespace model
