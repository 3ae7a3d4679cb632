#include "base/window_and_view.h"
#include "bench/rows.h"
#include "reference/plain_bump_tube.h"
#include "reference/plain_grid_warp.h"
#include "reference/plain_twister.h"
#include "reference/plain_zoom_blur.h"
#include "render/bump_tube.h"
#include "render/grid_mesh.h"
#include "render/grid_warp.h"
#include "render/line_set.h"
#include "render/twister.h"
#include "render/zoom_blur.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#ifdef KSO_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace {

// One frame after the other, over and over.
class FrameTimes {
public:
    float next()
    {
        frame_ = (frame_ + 1) % 600;
        return 20.0F + static_cast<float>(frame_) / 60.0F;
    }

private:
    int frame_ = 0;
};

void addWarpRow()
{
    constexpr const char* kRow = "warp 80x34";
    constexpr int kColumns = 80;
    constexpr int kRows = 34;
    struct Stage {
        GridMesh grid;
        GridWarp warp;
        std::vector<float> plainCoords;
        PlainGrid plain{};
        FrameTimes times;
    };
    auto stage = std::make_shared<Stage>();
    stage->grid.setProjection(kViewWidth, kViewHeight, kFieldOfView);
    stage->grid.build(0, 0, kViewWidth, kViewHeight, kColumns, kRows, 10.0F);
    stage->warp.setGrid(&stage->grid);
    const auto floats = static_cast<std::size_t>(kRows * stage->grid.stripStride());
    std::fill_n(stage->grid.texCoords(), floats, 0.0F);
    stage->plainCoords.assign(floats, 0.0F);
    stage->plain = {kColumns, kRows, stage->plainCoords.data()};

    stage->warp.apply(23.45F);
    plainWarp(stage->plain, 23.45F);
    requireSame(
        std::equal(stage->plainCoords.begin(), stage->plainCoords.end(), stage->grid.texCoords()),
        kRow);
    addForm(kRow, "kso", [stage] { stage->warp.apply(stage->times.next()); });
    addForm(kRow, "plain", [stage] { plainWarp(stage->plain, stage->times.next()); });
}

void addTwisterRow()
{
    constexpr const char* kRow = "twister, 256 rows of 512";
    constexpr int kWidth = 512;
    constexpr int kRows = 256;
    struct Stage {
        Twister twister;
        std::vector<std::uint32_t> source = std::vector<std::uint32_t>(std::size_t{256} * 256);
        std::vector<std::uint32_t> target = std::vector<std::uint32_t>(std::size_t{kWidth} * kRows);
        std::vector<std::uint32_t> plainTarget =
            std::vector<std::uint32_t>(std::size_t{kWidth} * kRows);
        FrameTimes times;
    };
    auto stage = std::make_shared<Stage>();
    std::mt19937 random{1};
    std::generate(stage->source.begin(), stage->source.end(), random);
    stage->twister.setWidth(kWidth);
    stage->twister.setHeight(kRows);
    stage->twister.setTarget(stage->target.data());
    stage->twister.setSource(stage->source.data());

    // As the twister scene does it.
    const auto eachRow = [](float t, const auto& draw) {
        for (int row = 0; row < kRows; ++row) {
            const auto i = static_cast<float>(row);
            draw(static_cast<int>(125.0F + 45.0F * std::sin(4.5F * t + 0.05F * i)),
                 static_cast<int>(256.0F + 90.0F * std::sin(t + 0.02F * i)), row,
                 3.0F * t + 0.02F * i);
        }
    };
    const auto own = [stage, eachRow](float t) {
        eachRow(t, [&](int radius, int centre, int row, float angle) {
            stage->twister.setRadius(radius);
            stage->twister.drawRow(centre, row, angle);
        });
    };
    const auto plain = [stage, eachRow](float t) {
        eachRow(t, [&](int radius, int centre, int row, float angle) {
            plainTwisterRow(
                {stage->plainTarget.data(), kWidth, kRows, stage->source.data(), radius}, centre,
                row, angle);
        });
    };
    own(23.45F);
    plain(23.45F);
    requireSame(stage->target == stage->plainTarget, kRow);
    addForm(kRow, "kso", [stage, own] { own(stage->times.next()); });
    addForm(kRow, "plain", [stage, plain] { plain(stage->times.next()); });
}

void addTubeRow()
{
    constexpr const char* kRow = "tube 64x64, vertices";
    struct Stage {
        std::vector<std::uint8_t> map = std::vector<std::uint8_t>(std::size_t{1024} * 1024);
        BumpTube tube;
        PlainTube plain{64, 64, 1.0F, 40.0F};
        FrameTimes times;
    };
    auto stage = std::make_shared<Stage>();
    std::mt19937 random{1};
    std::generate(stage->map.begin(), stage->map.end(),
                  [&] { return static_cast<std::uint8_t>(random()); });
    stage->tube.build(64, 64, 1.0F, 40.0F);
    stage->tube.setHeightMaps(stage->map.data(), stage->map.data());

    // The first frame is at random places; the second is where the first left the maps.
    const auto own = [stage](float t) { stage->tube.update(t); };
    const auto plain = [stage](float t) {
        stage->plain.bulge(t, stage->map.data(), stage->map.data());
    };
    for (const float t : {23.45F, 23.46F}) {
        own(t);
        plain(t);
    }
    const auto same = [](const BumpTube::Vertex& a, const PlainTubeVertex& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z && a.s == b.s && a.t == b.t;
    };
    const auto vertices = stage->tube.vertices();
    requireSame(std::equal(vertices.begin(), vertices.end(), stage->plain.bulged().begin(),
                           stage->plain.bulged().end(), same),
                kRow);
    addForm(kRow, "kso", [stage, own] { own(stage->times.next()); });
    addForm(kRow, "plain", [stage, plain] { plain(stage->times.next()); });
}

// The same idea with the library's own means: pictures shrunk toward the centre, averaged. What is
// outside counts as black here, so the borders differ.
void addOpenCvBlur([[maybe_unused]] const char* row,
                   [[maybe_unused]] const std::vector<std::uint8_t>& pixels,
                   [[maybe_unused]] int width, [[maybe_unused]] int height,
                   [[maybe_unused]] int levels)
{
#ifdef KSO_BENCH_OPENCV
    const cv::Mat source =
        cv::Mat(height, width, CV_8UC4, const_cast<std::uint8_t*>(pixels.data())).clone();
    addForm(row, "opencv",
            [source, levels, zoomed = cv::Mat(), sum = cv::Mat(), blurred = cv::Mat()]() mutable {
                sum.create(source.size(), CV_16UC4);
                sum.setTo(0);
                const double x = source.cols / 2.0;
                const double y = source.rows / 2.0;
                for (int level = 0; level < levels; ++level) {
                    const double scale = 1.0 + 0.1 * level;
                    const cv::Matx23d place = {scale, 0.0,   x - x * scale,
                                               0.0,   scale, y - y * scale};
                    cv::warpAffine(source, zoomed, place, source.size(),
                                   cv::INTER_NEAREST | cv::WARP_INVERSE_MAP);
                    cv::add(sum, zoomed, sum, cv::noArray(), CV_16U);
                }
                sum.convertTo(blurred, CV_8U, 1.0 / levels);
            });
#endif
}

void addBlurRow()
{
    constexpr int kWidth = 256;
    constexpr int kHeight = 128;
    constexpr int kLevels = 10;
    constexpr const char* kRow = "zoom blur 256x128, 10 levels";
    struct Stage {
        std::vector<std::uint8_t> source =
            std::vector<std::uint8_t>(std::size_t{kWidth} * kHeight * 4);
        std::vector<std::uint32_t> target =
            std::vector<std::uint32_t>(std::size_t{kWidth} * kHeight);
        std::vector<std::uint32_t> plainTarget =
            std::vector<std::uint32_t>(std::size_t{kWidth} * kHeight);
        ZoomBlur blur;
        PlainBlur plain{kWidth, kHeight};
    };
    auto stage = std::make_shared<Stage>();
    LineSet lines;
    lines.create(600);
    lines.generate(1);
    lines.setTarget(stage->source.data(), kWidth, kHeight);
    lines.setThickness(10);
    lines.setPosition(0.0F, 0.0F, -3.25F);
    lines.transform();
    lines.draw();
    stage->blur.build(kWidth, kHeight);
    stage->blur.setSource(stage->source.data());
    stage->blur.setTarget(stage->target.data());

    const auto own = [stage] { stage->blur.render(kLevels); };
    const auto plain = [stage] {
        stage->plain.render(stage->source.data(), stage->plainTarget.data(), kLevels);
    };
    own();
    plain();
    requireSame(stage->target == stage->plainTarget, kRow);
    addForm(kRow, "kso", own);
    addForm(kRow, "plain", plain);
    addOpenCvBlur(kRow, stage->source, kWidth, kHeight, kLevels);
}

} // namespace

void addEffectRows()
{
    addWarpRow();
    addTwisterRow();
    addTubeRow();
    addBlurRow();
}
