#include "render/grid_mesh.h"

#include "base/fatal.h"
#include "render/angles.h"

#include <GL/gl.h>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace {

// Allocates `perSlot` floats for each slot of each row.
Array<float> allocateFloats(int rows, int columns, int perSlot)
{
    const std::int64_t rowSlots = 2 * (std::int64_t{columns} + 2);
    auto floats = allocateArray<float>({rows, rowSlots, perSlot});
    if (floats == nullptr) {
        fatal(stdout, 1, "\n\nError!!!\n\n");
    }
    return floats;
}

} // namespace

void GridMesh::setProjection(int viewportWidth, int viewportHeight, float fovDegrees)
{
    viewportWidth_ = viewportWidth;
    viewportHeight_ = viewportHeight;
    fovDegrees_ = fovDegrees;
    aspect_ = static_cast<float>(viewportWidth) / static_cast<float>(viewportHeight);
}

void GridMesh::build(int x, int y, int width, int height, int columns, int rows, float depth)
{
    columns_ = columns;
    rows_ = rows;
    offsetX_ = 0.0F;
    offsetY_ = 0.0F;
    offsetZ_ = -depth;

    const auto viewportWidth = static_cast<float>(viewportWidth_);
    const auto viewportHeight = static_cast<float>(viewportHeight_);
    const double halfFieldOfView = degToRad(fovDegrees_ * 0.5F);
    const auto visibleHeight = static_cast<float>(2.0 * std::tan(halfFieldOfView) * depth);
    const float visibleWidth = aspect_ * visibleHeight;
    const float gridWidth = visibleWidth * (static_cast<float>(width) / viewportWidth);
    const float gridHeight = visibleHeight * (static_cast<float>(height) / viewportHeight);
    const float left = -visibleWidth / 2.0F + visibleWidth * static_cast<float>(x) / viewportWidth;
    const float top = visibleHeight / 2.0F - visibleHeight * static_cast<float>(y) / viewportHeight;

    vertices_ = allocateFloats(rows, columns, 3);
    texCoords_ = allocateFloats(rows, columns, 2);

    const auto columnCount = static_cast<float>(columns);
    const auto rowCount = static_cast<float>(rows);
    const auto putPoint = [&](std::ptrdiff_t slot, int r, int c) {
        const auto row = static_cast<float>(r);
        const auto column = static_cast<float>(c);
        float* const vertex = vertices_.get() + 3 * slot;
        vertex[0] = left + column * gridWidth / columnCount;
        vertex[1] = top - row * gridHeight / rowCount;
        vertex[2] = 0.0F;
        float* const texCoord = texCoords_.get() + 2 * slot;
        texCoord[0] = column / columnCount;
        texCoord[1] = row / rowCount;
    };
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c <= columns; ++c) {
            const std::ptrdiff_t topSlot = r * (stripStride() / 2) + 2 * std::ptrdiff_t{c};
            putPoint(topSlot, r, c);
            putPoint(topSlot + 1, r + 1, c);
        }
    }
}

void GridMesh::release()
{
    vertices_.reset();
    texCoords_.reset();
}

void GridMesh::draw() const
{
    if (texture_ != 0) {
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, texture_);
        glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    }

    glPushMatrix();
    glTranslatef(offsetX_, offsetY_, offsetZ_);
    glColor4f(1.0F, 1.0F, 1.0F, alpha_);

    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, vertices_.get());
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, texCoords_.get());
    for (int r = 0; r < rows_; ++r) {
        glDrawArrays(GL_TRIANGLE_STRIP, r * (2 * columns_ + 4), 2 * columns_ + 2);
    }

    if (texture_ != 0) {
        glDisable(GL_TEXTURE_2D);
    }
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    glPopMatrix();
}
