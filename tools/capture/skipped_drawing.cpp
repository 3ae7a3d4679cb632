#include "tools/capture/skipped_drawing.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <dlfcn.h>
#include <map>

namespace {

using Missing = std::optional<MissingFrame>; // the skipped frame that would have to be drawn

// The part of a texture that skipped frames have changed.
struct Stale {
    std::uint64_t frame = 0; // the latest of them
    GLint right = 0;
    GLint top = 0;
};

std::uint64_t frame = 0;
bool isDrawn = true;
Missing missingColour;
Missing missingDepth;

GLuint texture = 0; // bound
bool hasTexture = false;
bool hasDepthTest = false;
GLenum depthFunction = GL_LESS;
std::array<GLfloat, 2> texCoord{}; // the latest

std::map<GLuint, Stale>& staleTextures()
{
    static auto* const kTextures = new std::map<GLuint, Stale>; // used to the program's very end
    return *kTextures;
}

// The function of this name that the program would have called without this library.
template <typename Function>
Function original(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

void setTexCoord()
{
    static const auto kReal = original<decltype(&glTexCoord2fv)>("glTexCoord2fv");
    kReal(texCoord.data());
}

// Something is about to be drawn with the state as it is. True if it is.
bool draws()
{
    if (!isDrawn) {
        missingColour = {frame, true};
        if (hasDepthTest) {
            missingDepth = missingColour;
        }
        return false;
    }
    if (missingColour) {
        missingColour->isHeld = false;
    }
    if (hasDepthTest && depthFunction != GL_ALWAYS && missingDepth) {
        missingColour = {missingDepth->frame, false};
    }
    if (hasTexture && !staleTextures().empty()) {
        if (const auto stale = staleTextures().find(texture); stale != staleTextures().end()) {
            missingColour = {stale->second.frame, false};
        }
    }
    return true;
}

void setCapability(GLenum capability, bool isEnabled)
{
    if (capability == GL_TEXTURE_2D) {
        hasTexture = isEnabled;
    } else if (capability == GL_DEPTH_TEST) {
        hasDepthTest = isEnabled;
    }
}

// The bound texture gets new pixels from its corner to here. True if OpenGL is to know.
bool uploads(GLint left, GLint bottom, GLint right, GLint top)
{
    if (!isDrawn) {
        Stale& stale = staleTextures()[texture];
        stale = {frame, std::max(stale.right, right), std::max(stale.top, top)};
        return false;
    }
    const auto stale = staleTextures().find(texture);
    if (stale != staleTextures().end() && left == 0 && bottom == 0 &&
        right >= stale->second.right && top >= stale->second.top) {
        staleTextures().erase(stale);
    }
    return true;
}

} // namespace

void beginFrame(std::uint64_t newFrame, bool newIsDrawn)
{
    frame = newFrame;
    if (newIsDrawn && !isDrawn) {
        setTexCoord();
    }
    isDrawn = newIsDrawn;
}

std::optional<MissingFrame> missingFrame()
{
    return missingColour;
}

// What follows stands before OpenGL's own functions of these names.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void glBegin(GLenum mode)
{
    static const auto kReal = original<decltype(&glBegin)>("glBegin");
    if (draws()) {
        kReal(mode);
    }
}

void glEnd()
{
    static const auto kReal = original<decltype(&glEnd)>("glEnd");
    if (isDrawn) {
        kReal();
    }
}

void glVertex3fv(const GLfloat* position)
{
    static const auto kReal = original<decltype(&glVertex3fv)>("glVertex3fv");
    if (isDrawn) {
        kReal(position);
    }
}

// A vertex takes the latest coordinates, whether they came with it or not.
void glTexCoord2f(GLfloat s, GLfloat t)
{
    texCoord = {s, t};
    if (isDrawn) {
        setTexCoord();
    }
}

void glTexCoord2fv(const GLfloat* position)
{
    glTexCoord2f(position[0], position[1]);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count)
{
    static const auto kReal = original<decltype(&glDrawArrays)>("glDrawArrays");
    if (draws()) {
        kReal(mode, first, count);
    }
}

void glClear(GLbitfield buffers)
{
    static const auto kReal = original<decltype(&glClear)>("glClear");
    const Missing missing = isDrawn ? std::nullopt : Missing({frame, true});
    missingColour = (buffers & GL_COLOR_BUFFER_BIT) != 0 ? missing : missingColour;
    missingDepth = (buffers & GL_DEPTH_BUFFER_BIT) != 0 ? missing : missingDepth;
    if (isDrawn) {
        kReal(buffers);
    }
}

void glFlush()
{
    static const auto kReal = original<decltype(&glFlush)>("glFlush");
    if (isDrawn) {
        kReal();
    }
}

void glTexSubImage2D(GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                     GLenum format, GLenum type, const void* pixels)
{
    static const auto kReal = original<decltype(&glTexSubImage2D)>("glTexSubImage2D");
    if (uploads(x, y, x + width, y + height)) {
        kReal(target, level, x, y, width, height, format, type, pixels);
    }
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels)
{
    static const auto kReal = original<decltype(&glTexImage2D)>("glTexImage2D");
    staleTextures().erase(texture);
    kReal(target, level, internalFormat, width, height, border, format, type, pixels);
}

void glBindTexture(GLenum target, GLuint name)
{
    static const auto kReal = original<decltype(&glBindTexture)>("glBindTexture");
    texture = name;
    kReal(target, name);
}

void glEnable(GLenum capability)
{
    static const auto kReal = original<decltype(&glEnable)>("glEnable");
    setCapability(capability, true);
    kReal(capability);
}

void glDisable(GLenum capability)
{
    static const auto kReal = original<decltype(&glDisable)>("glDisable");
    setCapability(capability, false);
    kReal(capability);
}

void glDepthFunc(GLenum function)
{
    static const auto kReal = original<decltype(&glDepthFunc)>("glDepthFunc");
    depthFunction = function;
    kReal(function);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
