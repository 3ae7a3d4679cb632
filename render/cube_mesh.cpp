#include "render/cube_mesh.h"

#include <GL/gl.h>
#include <array>
#include <cstddef>
#include <cstdint>

namespace {

// The corners of a cube of half size 1: four of the front face, the same four of the back.
struct UnitCorner {
    float x, y, z;
    float u, v;
};

constexpr std::array kUnitCorners = {
    UnitCorner{-1.0F, -1.0F, 1.0F,  0.0F, 1.0F},
    UnitCorner{1.0F,  -1.0F, 1.0F,  1.0F, 1.0F},
    UnitCorner{1.0F,  1.0F,  1.0F,  1.0F, 0.0F},
    UnitCorner{-1.0F, 1.0F,  1.0F,  0.0F, 0.0F},
    UnitCorner{-1.0F, -1.0F, -1.0F, 0.0F, 0.0F},
    UnitCorner{1.0F,  -1.0F, -1.0F, 1.0F, 0.0F},
    UnitCorner{1.0F,  1.0F,  -1.0F, 1.0F, 1.0F},
    UnitCorner{-1.0F, 1.0F,  -1.0F, 0.0F, 1.0F},
};

// Two triangles make a face, of one colour: front, back, top, bottom, left, right.
struct Face {
    std::array<std::uint32_t, 3> first;
    std::array<std::uint32_t, 3> second;
    std::array<float, 3> colour;
};

constexpr std::array kFaces = {
    Face{{0, 1, 2}, {2, 3, 0}, {0.2F, 0.0F, 0.2F}},
    Face{{5, 4, 7}, {7, 6, 5}, {0.4F, 0.2F, 0.2F}},
    Face{{3, 2, 6}, {6, 7, 3}, {0.0F, 0.2F, 0.6F}},
    Face{{4, 5, 1}, {1, 0, 4}, {0.0F, 0.8F, 0.2F}},
    Face{{4, 0, 3}, {3, 7, 4}, {0.7F, 0.7F, 0.1F}},
    Face{{1, 5, 6}, {6, 2, 1}, {0.9F, 0.9F, 0.9F}},
};

} // namespace

void CubeMesh::build(float halfSize)
{
    for (std::size_t i = 0; i < corners_.size(); ++i) {
        const UnitCorner& unit = kUnitCorners[i];
        corners_[i] = {
            {unit.x * halfSize, unit.y * halfSize, unit.z * halfSize},
            {unit.u,                 unit.v                            }
        };
    }
    for (std::size_t face = 0; face < kFaces.size(); ++face) {
        const auto& [first, second, colour] = kFaces[face];
        triangles_[2 * face] = first;
        triangles_[2 * face + 1] = second;
        triangleColours_[2 * face] = colour;
        triangleColours_[2 * face + 1] = colour;
    }
}

void CubeMesh::draw() const
{
    glPushMatrix();
    glTranslatef(position_[0], position_[1], position_[2]);
    glScalef(scale_[0], scale_[1], scale_[2]);
    glRotatef(rotation_[0], 1.0F, 0.0F, 0.0F);
    glRotatef(rotation_[1], 0.0F, 1.0F, 0.0F);
    glRotatef(rotation_[2], 0.0F, 0.0F, 1.0F);
    glColor3f(1.0F, 1.0F, 1.0F);

    switch (drawMode_) {
    case kColoured:
        drawColoured();
        break;
    case kWire:
        drawWire();
        break;
    case kTextured:
        drawTextured();
        break;
    default:
        break;
    }

    glPopMatrix();
}

void CubeMesh::bindTexture() const
{
    if (texture_ != 0) {
        glEnable(GL_TEXTURE_2D);
        glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glBindTexture(GL_TEXTURE_2D, texture_);
    }
}

void CubeMesh::drawColoured() const
{
    bindTexture();
    glBegin(GL_TRIANGLES);
    for (std::size_t i = 0; i < triangles_.size(); ++i) {
        const Vector& colour = triangleColours_[i];
        glColor3f(colour[0], colour[1], colour[2]);
        for (const std::uint32_t corner : triangles_[i]) {
            glVertex3fv(corners_[corner].position.data());
        }
    }
    glEnd();
}

void CubeMesh::drawWire() const
{
    glLineWidth(lineWidth_);
    glColor4f(lineColour_[0], lineColour_[1], lineColour_[2], alpha_);
    glBegin(GL_LINES);
    for (const auto& [a, b, c] : triangles_) {
        for (const std::uint32_t corner : {a, b, a, c, b, c}) {
            glVertex3fv(corners_[corner].position.data());
        }
    }
    glEnd();
}

void CubeMesh::drawTextured() const
{
    bindTexture();
    glBegin(GL_TRIANGLES);
    for (const auto& triangle : triangles_) {
        for (const std::uint32_t corner : triangle) {
            glTexCoord2fv(corners_[corner].texCoord.data());
            glVertex3fv(corners_[corner].position.data());
        }
    }
    glEnd();
}
