#include "bench/gl_tape.h"

#include <GL/gl.h>
#include <SDL.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <dlfcn.h>
#include <functional>
#include <vector>

namespace {

gl_tape::Mode mode = gl_tape::Mode::forward;

std::vector<std::function<void()>>& tape()
{
    static std::vector<std::function<void()>> calls;
    return calls;
}

template <class... Arguments>
void send(const char* name, void (*&driver)(Arguments...), Arguments... arguments)
{
    if (mode == gl_tape::Mode::drop) {
        return;
    }
    if (driver == nullptr) {
        driver = reinterpret_cast<void (*)(Arguments...)>(dlsym(RTLD_NEXT, name));
    }
    driver(arguments...);
}

template <class Call>
void keep(Call call)
{
    if (mode == gl_tape::Mode::record) {
        tape().push_back(call);
    }
}

template <class... Arguments>
void pass(const char* name, void (*&driver)(Arguments...), Arguments... arguments)
{
    send(name, driver, arguments...);
    keep([=] { driver(arguments...); });
}

// A call with a few floats, of which the tape has a copy: what draws them uses their place again.
template <std::size_t kCount>
void passFloats(const char* name, void (*&driver)(const GLfloat*), const GLfloat* floats)
{
    send(name, driver, floats);
    std::array<GLfloat, kCount> copy{};
    std::copy_n(floats, kCount, copy.begin());
    keep([=] { driver(copy.data()); });
}

} // namespace

void gl_tape::setMode(Mode newMode)
{
    mode = newMode;
    if (mode == Mode::record) {
        tape().clear();
    }
}

void gl_tape::play()
{
    for (const auto& call : tape()) {
        call();
    }
}

// The definitions in a program come before those of the library that it links.
#define PASS(name, parameters, ...)                                                                \
    void name parameters                                                                           \
    {                                                                                              \
        static void(*driver) parameters = nullptr;                                                 \
        pass(#name, driver __VA_OPT__(, ) __VA_ARGS__);                                            \
    }

#define PASS_FLOATS(name, count)                                                                   \
    void name(const GLfloat* floats)                                                               \
    {                                                                                              \
        static void (*driver)(const GLfloat*) = nullptr;                                           \
        passFloats<count>(#name, driver, floats);                                                  \
    }

extern "C" {
PASS(glBegin, (GLenum a), a)
PASS(glBindTexture, (GLenum a, GLuint b), a, b)
PASS(glBlendFunc, (GLenum a, GLenum b), a, b)
PASS(glClear, (GLbitfield a), a)
PASS(glColor3f, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
PASS(glColor4f, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
PASS(glDepthFunc, (GLenum a), a)
PASS(glDisable, (GLenum a), a)
PASS(glDisableClientState, (GLenum a), a)
PASS(glDrawArrays, (GLenum a, GLint b, GLsizei c), a, b, c)
PASS(glEnable, (GLenum a), a)
PASS(glEnableClientState, (GLenum a), a)
PASS(glEnd, ())
PASS(glFlush, ())
PASS(glLineWidth, (GLfloat a), a)
PASS(glPopMatrix, ())
PASS(glPushMatrix, ())
PASS(glRotatef, (GLfloat a, GLfloat b, GLfloat c, GLfloat d), a, b, c, d)
PASS(glScalef, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
PASS(glTexCoord2f, (GLfloat a, GLfloat b), a, b)
PASS_FLOATS(glTexCoord2fv, 2)
PASS(glTexCoordPointer, (GLint a, GLenum b, GLsizei c, const void* d), a, b, c, d)
PASS(glTexEnvf, (GLenum a, GLenum b, GLfloat c), a, b, c)
PASS(glTexSubImage2D,
     (GLenum a, GLint b, GLint c, GLint d, GLsizei e, GLsizei f, GLenum g, GLenum h, const void* i),
     a, b, c, d, e, f, g, h, i)
PASS(glTranslatef, (GLfloat a, GLfloat b, GLfloat c), a, b, c)
PASS_FLOATS(glVertex3fv, 3)
PASS(glVertexPointer, (GLint a, GLenum b, GLsizei c, const void* d), a, b, c, d)
PASS(SDL_GL_SwapBuffers, ())
}
