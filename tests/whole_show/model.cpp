#include "tests/whole_show/model.h"

#include "reference/plain_bump_tube.h"
#include "reference/plain_grid_warp.h"
#include "reference/plain_line_set.h"
#include "reference/plain_twister.h"
#include "reference/plain_zoom_blur.h"
#include "tests/whole_show/gl_log.h"
#include "tests/whole_show/pictures.h"
#include "virtual/timing.h"

#include <GL/gl.h>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

// The textures' names.
enum Texture : GLuint {
    // clang-format off
    kNone, kLineCanvas, kTitleKso, kTitleBy, kTitleVelmorant, kTitleThe, kTitleEnd, kLandscape,
    kTwisterCanvas, kColumn, kBrain, kLogo, kDog, kLight, kBalls, kGreetings, kBurstLines, kBurst,
    kLastTitle, kGround
    // clang-format on
};

using Words = std::vector<std::uint32_t>; // pixels: red in the lowest byte, alpha in the highest

constexpr float kAspect = 640.0F / 272.0F;
constexpr int kColumns = 80; // of the grid
constexpr int kRows = 34;

std::vector<float> gridTexCoords;
float gridAlpha;
Calls calls; // what the log has told since the pass began

// What a float field keeps of a formula.
float single(double value)
{
    return static_cast<float>(value);
}

int trunc(double value)
{
    return static_cast<int>(value);
}

std::uint8_t* bytes(Words& words)
{
    return reinterpret_cast<std::uint8_t*>(words.data());
}

// Of the 60 degrees from bottom to top, with the show's constant for pi.
float visibleHeight(float depth)
{
    const double half = single(30.0 / 360.0 * 3.1415926 * 2.0);
    return single(2.0 * std::tan(half) * depth);
}

void blend(GLenum source, GLenum target)
{
    glEnable(GL_BLEND);
    glBlendFunc(source, target);
}

void use(GLuint texture)
{
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

void upload(GLuint texture, int width, int height, const void* pixels)
{
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
}

void makeOpaque(Words& pixels)
{
    for (std::uint32_t& pixel : pixels) {
        pixel |= 0xFF000000U;
    }
}

void turn(double x, double y, double z)
{
    glRotatef(single(x), 1.0F, 0.0F, 0.0F);
    glRotatef(single(y), 0.0F, 1.0F, 0.0F);
    glRotatef(single(z), 0.0F, 0.0F, 1.0F);
}

struct Quad {
    GLuint texture;
    int x, y, width, height; // pixels of the viewport
    float alpha = 1.0F;
    float depth = 20.0F;
    float turnX = 0.0F;              // degrees
    float top = 0.0F, bottom = 1.0F; // of the texture
};

void draw(const Quad& quad)
{
    const float height = visibleHeight(quad.depth);
    const double width = static_cast<double>(kAspect) * height;
    const double left = single(-0.5 * width) + width * quad.x / 640;
    const double right = left + width * (static_cast<float>(quad.width) / 640.0F);
    const float top = 0.5F * height - height * static_cast<float>(quad.y) / 272.0F;
    const float bottom = top - height * (static_cast<float>(quad.height) / 272.0F);
    if (quad.texture != kNone) {
        use(quad.texture);
    }
    glPushMatrix();
    glTranslatef(0.0F, 0.0F, -quad.depth);
    turn(quad.turnX, 0.0, 0.0);
    glColor4f(1.0F, 1.0F, 1.0F, quad.alpha);
    glBegin(GL_TRIANGLE_STRIP);
    for (const bool upper : {true, false}) {
        for (const float s : {1.0F, 0.0F}) {
            glTexCoord2f(s, upper ? quad.top : quad.bottom);
            glVertex3f(single(s > 0.0F ? right : left), upper ? top : bottom, 0.0F);
        }
    }
    glEnd();
    glPopMatrix();
    if (quad.texture != kNone) {
        glDisable(GL_TEXTURE_2D);
    }
}

void drawGrid(float warpTime)
{
    plainWarp({kColumns, kRows, gridTexCoords.data()}, warpTime);
    const float height = visibleHeight(10.0F);
    const float width = kAspect * height;
    use(kGround);
    glPushMatrix();
    glTranslatef(0.0F, 0.0F, -10.0F);
    glColor4f(1.0F, 1.0F, 1.0F, gridAlpha);
    const float* next = gridTexCoords.data();
    for (int r = 0; r < kRows; ++r) {
        glBegin(GL_TRIANGLE_STRIP);
        for (int i = 0; i < 2 * (kColumns + 1); ++i, next += 2) {
            const int column = i / 2;
            const auto row = static_cast<float>(r + i % 2);
            glTexCoord2fv(next);
            glVertex3f(-width / 2 + static_cast<float>(column) * width / kColumns,
                       height / 2 - row * height / kRows, 0.0F);
        }
        next += 4; // never drawn
        glEnd();
    }
    glPopMatrix();
    glDisable(GL_TEXTURE_2D);
}

// A scene as the scheduler sees it; this one is empty.
struct Scene {
    virtual ~Scene() = default;
    virtual void hear(int /*event*/) {}
    virtual void frame(float /*t*/) { glClear(GL_COLOR_BUFFER_BIT); }
};

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
        const int thickness = trunc(4.0 * pulse + 3.0);
        const float z = zooming ? single(depth + 4.0 * (1.0F - zoomKick)) : depth;
        if (before > 0.0F) {
            spin = single(spin * 0.85);
            zoomKick = single(zoomKick * 0.88);
            pulse = single(pulse * 0.95);
        }
        before = t;
        glClear(GL_COLOR_BUFFER_BIT);
        Words canvas(std::size_t{512} * 256);
        figure.transform(
            {single(t * (turned + 0.05 * std::sin(u + 34.32))),
             single(t * (0.05 * std::sin(u + 73.23))),
             single(t * (turned + 0.05 * std::sin(u + 3.12)))},
            {single(0.05 * std::sin(13213.13 * t)), single(0.05 * std::sin(23332.23 * t)), z});
        figure.draw({bytes(canvas), 512, 256}, thickness);
        makeOpaque(canvas);
        upload(kLineCanvas, 512, 256, canvas.data());
        draw({kLineCanvas, 0, 0, 640, 272});
    }
};

struct TwisterScene : Scene {
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
        draw({kLandscape, 0, 0, 640, 272});
        last = {last.texture, 0, 0, 0, 0};
        for (std::size_t i = 0; i < shown.size(); ++i) {
            if (shown[i]) {
                last = kTitles[i];
                draw(last);
            }
        }
        flash = before > 0.0F ? single(flash * 0.55) : flash;
        before = t;
        Words canvas(std::size_t{512} * 256);
        const auto* source = reinterpret_cast<const std::uint32_t*>(column.data());
        for (int i = 0; i < 256; ++i) {
            const int radius = trunc(125.0 + 45.0 * std::sin(4.5 * t + 0.05 * i));
            const int centre = trunc(256.0 + 90.0 * std::sin(t + 0.02 * i));
            plainTwisterRow({canvas.data(), 512, 256, source, radius}, centre, i,
                            single(3.0 * t + 2.24 * flash + 0.02 * i));
        }
        upload(kTwisterCanvas, 512, 256, canvas.data());
        draw({kTwisterCanvas, 320, 0, 320, 272});
        draw(last);
    }
};

struct TrailScene : Scene {
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
            copy.x += trunc(std::sin(50.203 * t * i) * std::sin(p) * reach);
            copy.y += trunc(std::sin(2340.33 * t * i) * std::sin(p + 21234.32) * reach);
            draw(copy);
        }
        draw(copy);
    }
};

struct LogoScene : Scene {
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

struct CubeScene : Scene {
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
        gridAlpha = alpha;
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
        constexpr std::string_view kTriangles = "012230547765326673451104403374156621";
        glPushMatrix();
        glTranslatef(x, y, atZ);
        glScalef(2.0F, 2.0F, 2.0F);
        turn(375.5 * t, 365.75 * t, 335.7 * t);
        glBegin(GL_LINES);
        for (std::size_t triangle = 0; triangle < kTriangles.size(); triangle += 3) {
            for (const std::size_t end : {0U, 1U, 0U, 2U, 1U, 2U}) {
                const int corner = kTriangles[triangle + end] - '0';
                glVertex3f((corner + 1) / 2 % 2 == 1 ? 1.0F : -1.0F,
                           corner / 2 % 2 == 1 ? 1.0F : -1.0F, corner < 4 ? 1.0F : -1.0F);
            }
        }
        glEnd();
        glPopMatrix();
    }
};

struct TubeScene : Scene {
    PlainTube tube{64, 64, 1.0F, 40.0F};
    std::vector<std::uint8_t> heights = pixelsOf("muljumap.tga");
    std::array<Quad, 10> lines{};

    TubeScene()
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

struct ClosingScene : Scene {
    PlainFigure figure = PlainFigure(plainCurve(600, 1));
    PlainBlur blur{256, 128};
    float phase = 0.0F;

    void frame(float /*t*/) override
    {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDepthFunc(GL_ALWAYS);
        blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        Words lines(std::size_t{256} * 128);
        figure.transform({0.0F, single(0.7 * phase), phase},
                         {0.0F, 0.0F, single(-2.5 * (0.5 * std::sin(0.5 * phase) + 0.5) - 2.0)});
        figure.scaleColours(0.02F);
        figure.draw({bytes(lines), 256, 128}, 10);
        phase = single(phase + 0.11);
        Words burst(lines.size());
        blur.render(bytes(lines), burst.data(), 10);
        makeOpaque(burst);
        upload(kBurst, 256, 128, burst.data());
        draw({kBurst, 0, 0, 640, 272});
        blend(GL_ZERO, GL_ONE_MINUS_SRC_COLOR);
        draw({kLastTitle, 192, 60, 256, 128});
    }
};

std::array<std::unique_ptr<Scene>, 8> scenes;
std::size_t current;

} // namespace

void beginModel()
{
    scenes = {std::make_unique<Opening>(),      std::make_unique<TwisterScene>(),
              std::make_unique<TrailScene>(),   std::make_unique<LogoScene>(),
              std::make_unique<CubeScene>(),    std::make_unique<TubeScene>(),
              std::make_unique<ClosingScene>(), std::make_unique<Scene>()};
    current = 0;
    gridTexCoords.assign(std::size_t{kRows} * 4 * (kColumns + 2), 0.0F);
    gridAlpha = 1.0F;
    std::srand(kFirstTimeOfDay);
    resetGl();
    glClear(GL_COLOR_BUFFER_BIT); // what is told from here on is frames
    blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

Calls modelPass(const std::vector<int>& heard, float t)
{
    std::vector<int> queue;
    for (const int value : heard) {
        if (value < 64) {
            current = static_cast<std::size_t>(value);
        } else if (queue.size() < 64) {
            queue.push_back(value);
        }
    }
    calls.clear();
    if (current < scenes.size()) {
        for (const int event : queue) {
            scenes[current]->hear(event);
        }
        scenes[current]->frame(t);
        tell("SDL_GL_SwapBuffers");
    }
    return calls;
}

void tell(const std::string& line)
{
    calls.push_back(line);
}
