#include "bench/rows.h"
#include "image/bitmap.h"
#include "reference/plain_bitmap.h"
#include "reference/plain_line_set.h"
#include "render/line_set.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#ifdef KSO_BENCH_SDL_GFX
#include <SDL_gfxPrimitives.h>
#endif

namespace {

constexpr int kVertices = 600;
constexpr std::size_t kFrames = 64;

struct Frame {
    std::array<float, 3> angles;
    std::array<float, 3> position;
};

// What a scene does with the figure: a style, a size, a thickness and a run of frames.
struct Staging {
    std::string name;
    int width;
    int height;
    int style;
    int thickness;
    float colourScale;
    std::vector<Frame> frames;
};

// The opening scene after its events: trembling, turned further at every frame.
std::vector<Frame> openingFrames(float firstDepth, float lastDepth)
{
    std::vector<Frame> frames(kFrames);
    for (std::size_t i = 0; i < kFrames; ++i) {
        const float t = 20.0F + static_cast<float>(i) / 60.0F;
        const float kick = std::pow(0.85F, static_cast<float>(i % 16));
        const float turn = std::sin(kick) * t;
        const float along = static_cast<float>(i) / static_cast<float>(kFrames - 1);
        frames[i].angles = {turn, 0.05F * t * std::sin(7.0F * t), turn};
        frames[i].position = {0.05F * std::sin(13213.13F * t), 0.05F * std::sin(23332.23F * t),
                              firstDepth + (lastDepth - firstDepth) * along};
    }
    return frames;
}

std::vector<Frame> closingFrames()
{
    std::vector<Frame> frames(kFrames);
    for (std::size_t i = 0; i < kFrames; ++i) {
        const float phase = 0.11F * static_cast<float>(i);
        frames[i].angles = {0.0F, 0.7F * phase, phase};
        frames[i].position = {0.0F, 0.0F, -2.5F * (0.5F * std::sin(0.5F * phase) + 0.5F) - 2.0F};
    }
    return frames;
}

// A staging with everything it is drawn with. The canvases are not cleared between frames: neither
// form looks at what a pixel holds.
struct Stage {
    explicit Stage(Staging s) : staging{std::move(s)}
    {
        lines.create(kVertices);
        lines.generate(staging.style);
        lines.setThickness(staging.thickness);
        for (Bitmap* bitmap : {&canvas, &plainCanvas}) {
            bitmap->create(static_cast<unsigned>(staging.width),
                           static_cast<unsigned>(staging.height), 32);
            bitmap->clear();
        }
        lines.setTarget(canvas.getPixels(), staging.width, staging.height);
        plain = std::make_unique<PlainFigure>(plainCurve(kVertices, staging.style));
        plainBitmap = {plainCanvas.getPixels(), plainCanvas.getWidth(), plainCanvas.getHeight()};
    }

    const Frame& nextFrame() { return staging.frames[next++ % kFrames]; }

    void place(const Frame& frame)
    {
        lines.setAngleX(frame.angles[0]);
        lines.setAngleY(frame.angles[1]);
        lines.setAngleZ(frame.angles[2]);
        lines.setPosition(frame.position[0], frame.position[1], frame.position[2]);
        lines.transform();
        lines.scaleColours(staging.colourScale);
    }

    void draw(const Frame& frame)
    {
        place(frame);
        lines.draw();
    }

    void drawPlain(const Frame& frame)
    {
        plain->transform(frame.angles, frame.position);
        plain->scaleColours(staging.colourScale);
        plain->draw({plainCanvas.getPixels(), staging.width, staging.height}, staging.thickness);
    }

    [[nodiscard]] std::size_t bytes() const
    {
        return std::size_t{canvas.getWidth()} * canvas.getHeight() * 4;
    }

    Staging staging;
    LineSet lines;
    std::unique_ptr<PlainFigure> plain;
    Bitmap canvas;
    Bitmap plainCanvas;
    PlainBitmap plainBitmap{}; // the plain canvas again
    std::size_t next = 0;
};

using SharedStage = std::shared_ptr<Stage>;

void checkSame(Stage& stage)
{
    for (const Frame& frame : stage.staging.frames) {
        stage.canvas.clear();
        stage.draw(frame);
        stage.plainCanvas.clear();
        stage.drawPlain(frame);
        requireSame(std::memcmp(stage.canvas.getPixels(), stage.plainCanvas.getPixels(),
                                stage.bytes()) == 0,
                    stage.staging.name.c_str());
    }
}

// The same segments as strokes that add, without antialiasing.
class CairoFigure {
public:
    explicit CairoFigure(SharedStage stage)
        : stage_{std::move(stage)}, surface_{cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                                        stage_->staging.width,
                                                                        stage_->staging.height)},
          context_{cairo_create(surface_)}
    {
        cairo_set_operator(context_, CAIRO_OPERATOR_ADD);
        cairo_set_antialias(context_, CAIRO_ANTIALIAS_NONE);
        cairo_set_line_width(context_, stage_->staging.thickness);
    }
    CairoFigure(const CairoFigure&) = delete;
    CairoFigure& operator=(const CairoFigure&) = delete;
    ~CairoFigure()
    {
        cairo_destroy(context_);
        cairo_surface_destroy(surface_);
    }

    void draw()
    {
        stage_->place(stage_->nextFrame());
        stage_->lines.perspectiveDivide();
        const auto vertices = stage_->lines.transformed();
        const double hw = stage_->staging.width / 2.0;
        const double hh = stage_->staging.height / 2.0;
        for (std::size_t i = 0; i < vertices.size(); i += 2) {
            const auto& [blue, green, red] = vertices[i].colour;
            cairo_set_source_rgb(context_, red / 255.0, green / 255.0, blue / 255.0);
            cairo_move_to(context_, vertices[i].x * hw + hw, vertices[i].y * hh + hh);
            cairo_line_to(context_, vertices[i + 1].x * hw + hw, vertices[i + 1].y * hh + hh);
            cairo_stroke(context_);
        }
    }

private:
    SharedStage stage_;
    cairo_surface_t* surface_;
    cairo_t* context_;
};

void addCairo(const SharedStage& stage)
{
    auto figure = std::make_shared<CairoFigure>(stage);
    addForm(stage->staging.name, "cairo", [figure] { figure->draw(); });
}

#ifdef KSO_BENCH_SDL_GFX

// The same segments drawn over each other: this library has no adding lines.
class SdlGfxFigure {
public:
    explicit SdlGfxFigure(SharedStage stage)
        : stage_{std::move(stage)}, surface_{
                                        SDL_CreateRGBSurface(SDL_SWSURFACE, stage_->staging.width,
                                                             stage_->staging.height, 32, 0x000000ff,
                                                             0x0000ff00, 0x00ff0000, 0)}
    {
    }
    SdlGfxFigure(const SdlGfxFigure&) = delete;
    SdlGfxFigure& operator=(const SdlGfxFigure&) = delete;
    ~SdlGfxFigure() { SDL_FreeSurface(surface_); }

    // Coordinates here have 16 bits, which is too little near the eye.
    [[nodiscard]] bool works()
    {
        const auto fits = [](float position, float half) {
            return std::fabs(position * half + half) < 30000.0F;
        };
        bool allFit = surface_ != nullptr;
        for (const Frame& frame : stage_->staging.frames) {
            stage_->place(frame);
            stage_->lines.perspectiveDivide();
            for (const LineVertex& v : stage_->lines.transformed()) {
                allFit = allFit && fits(v.x, halfWidth_) && fits(v.y, halfHeight_);
            }
        }
        return allFit;
    }

    void draw()
    {
        stage_->place(stage_->nextFrame());
        stage_->lines.perspectiveDivide();
        const auto vertices = stage_->lines.transformed();
        for (std::size_t i = 0; i < vertices.size(); i += 2) {
            const auto& [blue, green, red] = vertices[i].colour;
            thickLineRGBA(surface_, pixel(vertices[i].x, halfWidth_),
                          pixel(vertices[i].y, halfHeight_), pixel(vertices[i + 1].x, halfWidth_),
                          pixel(vertices[i + 1].y, halfHeight_),
                          static_cast<Uint8>(stage_->staging.thickness), static_cast<Uint8>(red),
                          static_cast<Uint8>(green), static_cast<Uint8>(blue), 255);
        }
    }

private:
    static Sint16 pixel(float position, float half)
    {
        return static_cast<Sint16>(position * half + half);
    }

    SharedStage stage_;
    float halfWidth_ = static_cast<float>(stage_->staging.width) / 2.0F;
    float halfHeight_ = static_cast<float>(stage_->staging.height) / 2.0F;
    SDL_Surface* surface_;
};

void addSdlGfx(const SharedStage& stage)
{
    auto figure = std::make_shared<SdlGfxFigure>(stage);
    if (figure->works()) {
        addForm(stage->staging.name, "sdl_gfx", [figure] { figure->draw(); });
    }
}

#else

void addSdlGfx(const SharedStage& /*stage*/)
{
}

#endif

// The figure as a scene draws it: transform, colours, draw.
void addFigureRow(const Staging& staging)
{
    auto stage = std::make_shared<Stage>(staging);
    checkSame(*stage);
    addForm(staging.name, "kso", [stage] { stage->draw(stage->nextFrame()); });
    addForm(staging.name, "plain", [stage] { stage->drawPlain(stage->nextFrame()); });
    addCairo(stage);
    addSdlGfx(stage);
}

// All of the opening scene's work on the processor in one frame.
void addFrameRow(Staging staging)
{
    staging.name = "opening frame, " + staging.name;
    auto stage = std::make_shared<Stage>(staging);
    addForm(staging.name, "kso", [stage] {
        stage->canvas.clear();
        stage->draw(stage->nextFrame());
        stage->canvas.setAlpha(1.0F);
    });
    addForm(staging.name, "plain", [stage] {
        stage->plainCanvas.clear();
        stage->drawPlain(stage->nextFrame());
        stage->plainBitmap.setAlpha(1.0F);
    });
}

void addTransformRow(const Staging& staging)
{
    constexpr const char* kName = "transform 600 vertices";
    auto stage = std::make_shared<Stage>(staging);
    stage->place(staging.frames[1]);
    stage->plain->transform(staging.frames[1].angles, staging.frames[1].position);
    const auto samePlace = [](const LineVertex& a, const PlainVertex& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    };
    const auto own = stage->lines.transformed();
    requireSame(std::equal(own.begin(), own.end(), stage->plain->transformed().begin(), samePlace),
                kName);
    addForm(kName, "kso", [stage] { stage->lines.transform(); });
    addForm(kName, "plain", [stage] {
        const Frame& frame = stage->staging.frames[1];
        stage->plain->transform(frame.angles, frame.position);
    });
}

struct Ends {
    float x0, y0, x1, y1;
};

void addLineRow(int thickness)
{
    constexpr int kWidth = 512;
    constexpr int kHeight = 256;
    const std::string name = "drawLine, 256 lines of thickness " + std::to_string(thickness);
    const auto stage = std::make_shared<Stage>(
        Staging{name, kWidth, kHeight, 2, thickness, 1.0F, openingFrames(-4.0F, -4.0F)});
    std::mt19937 random{7};
    std::uniform_real_distribution<float> acrossX{0.0F, kWidth};
    std::uniform_real_distribution<float> acrossY{0.0F, kHeight};
    std::vector<Ends> segments(256);
    for (Ends& s : segments) {
        s = {acrossX(random), acrossY(random), acrossX(random), acrossY(random)};
    }
    const auto own = [stage, segments, thickness] {
        for (const Ends& s : segments) {
            stage->lines.drawLine(s.x0, s.y0, s.x1, s.y1, 7, 42, 63, stage->canvas.getPixels(),
                                  thickness);
        }
    };
    const auto plain = [stage, segments, thickness] {
        const PlainCanvas canvas = {stage->plainCanvas.getPixels(), kWidth, kHeight};
        for (const Ends& s : segments) {
            plainDrawLine(canvas, s.x0, s.y0, s.x1, s.y1, 7, 42, 63, thickness);
        }
    };
    own();
    plain();
    requireSame(
        std::memcmp(stage->canvas.getPixels(), stage->plainCanvas.getPixels(), stage->bytes()) == 0,
        name.c_str());
    addForm(name, "kso", own);
    addForm(name, "plain", plain);
}

} // namespace

void addLineSetRows()
{
    const std::vector<Frame> close = openingFrames(-4.0F, -4.0F);
    const std::vector<Frame> nearEye = openingFrames(-0.5F, -0.01F);
    const Staging pulse = {"figure 512x256, thickness 7", 512, 256, 2, 7, 1.0F, close};
    const Staging eye = {"figure 512x256, thickness 3 near the eye", 512, 256, 2, 3, 1.0F, nearEye};

    addTransformRow(pulse);
    for (const int thickness : {3, 7, 10}) {
        addLineRow(thickness);
    }
    addFigureRow(pulse);
    addFigureRow({"figure 512x256, thickness 7 far away", 512, 256, 2, 7, 1.0F,
                  openingFrames(-15.0F, -15.0F)});
    addFigureRow(eye);
    addFigureRow({"figure 256x128, thickness 10", 256, 128, 1, 10, 0.02F, closingFrames()});
    addFrameRow(pulse);
    addFrameRow(eye);
}
