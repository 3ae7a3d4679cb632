#include "tests/whole_show/model/drawing.h"

#include "reference/plain_grid_warp.h"

#include <cmath>

namespace model {
namespace {

constexpr float kAspect = static_cast<float>(kViewWidth) / kViewHeight;
constexpr int kColumns = 80; // of the grid
constexpr int kRows = 34;

std::vector<float> gridTexCoords;
float gridAlpha;

// Of the 60 degrees from bottom to top, with the show's constant for pi.
float visibleHeight(float depth)
{
    const double half = single(30.0 / 360.0 * 3.1415926 * 2.0);
    return single(2.0 * std::tan(half) * depth);
}

} // namespace

void Canvas::makeOpaque()
{
    for (std::uint32_t& pixel : pixels) {
        pixel |= 0xFF000000U;
    }
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

void upload(GLuint texture, const Canvas& canvas)
{
    upload(texture, canvas.width, canvas.height, canvas.pixels.data());
}

void turn(double x, double y, double z)
{
    glRotatef(single(x), 1.0F, 0.0F, 0.0F);
    glRotatef(single(y), 0.0F, 1.0F, 0.0F);
    glRotatef(single(z), 0.0F, 0.0F, 1.0F);
}

void draw(const Quad& quad)
{
    const float height = visibleHeight(quad.depth);
    const double width = static_cast<double>(kAspect) * height;
    const double left = single(-0.5 * width) + width * quad.x / kViewWidth;
    const double right = left + width * (static_cast<float>(quad.width) / kViewWidth);
    const float top = 0.5F * height - height * static_cast<float>(quad.y) / kViewHeight;
    const float bottom = top - height * (static_cast<float>(quad.height) / kViewHeight);
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

void drawOverView(GLuint texture)
{
    draw({texture, 0, 0, kViewWidth, kViewHeight});
}

void resetGrid()
{
    gridTexCoords.assign(std::size_t{kRows} * 4 * (kColumns + 2), 0.0F);
    gridAlpha = 1.0F;
}

void setGridAlpha(float alpha)
{
    gridAlpha = alpha;
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

} // namespace model
