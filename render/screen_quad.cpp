#include "render/screen_quad.h"

#include "render/angles.h"
#include "render/projection.h"

#include <GL/gl.h>
#include <cmath>
#include <cstddef>

void ScreenQuad::init(float depth)
{
    rotX_ = 0.0F;
    rotY_ = 0.0F;
    rotZ_ = 0.0F;
    posX_ = 0.0F;
    posY_ = 0.0F;
    posZ_ = -depth;
    alpha_ = 1.0F;
    setTexCoords(0.0F, 0.0F, 1.0F, 1.0F);
    place(0, 0, displayMetrics.viewportWidth, displayMetrics.viewportHeight);
}

// At a depth d the eye sees 2 tan(fov / 2) d world units from bottom to top, and the viewport's
// pixels divide that evenly.
void ScreenQuad::place(int x, int y, int width, int height)
{
    const auto viewportWidth = static_cast<float>(displayMetrics.viewportWidth);
    const auto viewportHeight = static_cast<float>(displayMetrics.viewportHeight);
    const float widthShare = static_cast<float>(width) / viewportWidth;
    const float heightShare = static_cast<float>(height) / viewportHeight;

    const float depth = -posZ_;
    const double halfFieldOfView = degToRad(displayMetrics.fieldOfView * 0.5F);
    const auto visibleHeight = static_cast<float>(2.0 * std::tan(halfFieldOfView) * depth);
    const double visibleWidth = static_cast<double>(displayMetrics.aspect) * visibleHeight;
    const auto visibleLeft = static_cast<float>(-0.5 * visibleWidth);
    const auto visibleTop = static_cast<float>(0.5 * visibleHeight);

    const double left = visibleLeft + visibleWidth * x / displayMetrics.viewportWidth;
    const double right = left + visibleWidth * widthShare;
    const float top = visibleTop - visibleHeight * static_cast<float>(y) / viewportHeight;
    const float bottom = top - visibleHeight * heightShare;

    corners_[kRightTop] = {static_cast<float>(right), top, 0.0F};
    corners_[kLeftTop] = {static_cast<float>(left), top, 0.0F};
    corners_[kRightBottom] = {static_cast<float>(right), bottom, 0.0F};
    corners_[kLeftBottom] = {static_cast<float>(left), bottom, 0.0F};

    rectX_ = x;
    rectY_ = y;
    rectWidth_ = width;
    rectHeight_ = height;
}

void ScreenQuad::setDepth(float depth)
{
    posZ_ = -depth;
    place(rectX_, rectY_, rectWidth_, rectHeight_);
}

void ScreenQuad::setTexCoords(float uLeft, float vTop, float uRight, float vBottom)
{
    texCoords_[kRightTop] = {uRight, vTop};
    texCoords_[kLeftTop] = {uLeft, vTop};
    texCoords_[kRightBottom] = {uRight, vBottom};
    texCoords_[kLeftBottom] = {uLeft, vBottom};
}

void ScreenQuad::setTexRepeatU(float repeat)
{
    texCoords_[kRightTop].u = repeat;
    texCoords_[kLeftTop].u = 0.0F;
    texCoords_[kRightBottom].u = repeat;
    texCoords_[kLeftBottom].u = 0.0F;
}

void ScreenQuad::setTexRepeatV(float repeat)
{
    texCoords_[kRightTop].v = 0.0F;
    texCoords_[kLeftTop].v = 0.0F;
    texCoords_[kRightBottom].v = repeat;
    texCoords_[kLeftBottom].v = repeat;
}

void ScreenQuad::draw() const
{
    if (texture_ != 0) {
        glEnable(GL_TEXTURE_2D);
        glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glBindTexture(GL_TEXTURE_2D, texture_);
    }

    glPushMatrix();
    glTranslatef(posX_, posY_, posZ_);
    glRotatef(rotX_, 1.0F, 0.0F, 0.0F);
    glRotatef(rotY_, 0.0F, 1.0F, 0.0F);
    glRotatef(rotZ_, 0.0F, 0.0F, 1.0F);
    glColor4f(1.0F, 1.0F, 1.0F, alpha_);

    glBegin(GL_TRIANGLE_STRIP);
    for (std::size_t i = 0; i < kCornerCount; ++i) {
        glTexCoord2fv(&texCoords_[i].u);
        glVertex3fv(&corners_[i].x);
    }
    glEnd();
    glFlush();
    glPopMatrix();

    if (texture_ != 0) {
        glDisable(GL_TEXTURE_2D);
    }
}
