// Stands in for SDL, OpenGL and the clock when it is loaded before them (LD_PRELOAD): nothing is
// shown or heard, and every call of the program becomes a line of a log: the name, then the
// arguments.
//
// The program lives in virtual time. A pass of its main loop, which ends when no event is left,
// lasts one frame, and the audio callback is fed the frame's samples there. Environment variables
// say how:
//
//   STAND_IN_LOG     the log's path
//   STAND_IN_FPS     frames per second
//   STAND_IN_FRAMES  the window is closed in the pass of this number (the first is 1)
//   STAND_IN_EVENTS  further events, "PASS:TYPE,PASS:TYPE,..." with SDL's type numbers
//   STAND_IN_FAIL    the name of one SDL call that fails

#include "tests/show/fnv1a.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <vector>

namespace {

constexpr int kMixRateHz = 44100;
constexpr std::size_t kBytesPerSample = 4;         // stereo, 16 bit
constexpr std::uint32_t kFirstTicks = 0xFFFFF000U; // the millisecond counter wraps during the show

const char* setting(const char* name, const char* otherwise)
{
    const char* value = std::getenv(name);
    return value ? value : otherwise;
}

std::uint64_t number(const char* name, const char* otherwise)
{
    return std::strtoull(setting(name, otherwise), nullptr, 10);
}

[[gnu::format(printf, 1, 2)]] void say(const char* format, ...)
{
    static std::FILE* const log = std::fopen(setting("STAND_IN_LOG", "/dev/null"), "w");
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(log, format, arguments);
    va_end(arguments);
    std::fputc('\n', log);
}

bool fails(const char* call)
{
    return std::strcmp(setting("STAND_IN_FAIL", ""), call) == 0;
}

unsigned long long fingerprint(const void* pixels, GLsizei width, GLsizei height, GLenum format)
{
    const std::size_t bytesPerPixel = format == GL_RGBA ? 4 : 3;
    return fnv1a(pixels, bytesPerPixel * static_cast<std::size_t>(width) *
                             static_cast<std::size_t>(height));
}

// The virtual world: how many passes are over, and what the program has opened in it.
std::uint64_t passes = 0;
std::uint64_t samplesFed = 0;
std::uint32_t delayed = 0;
bool audioOpen = false;
bool audioPlays = false;
SDL_AudioSpec audio{};
std::multimap<std::uint64_t, Uint8> pendingEvents; // by pass

void readEvents()
{
    static bool done = false;
    if (done) {
        return;
    }
    done = true;
    if (const std::uint64_t last = number("STAND_IN_FRAMES", "0")) {
        pendingEvents.emplace(last, SDL_QUIT);
    }
    const char* text = setting("STAND_IN_EVENTS", "");
    unsigned pass = 0;
    unsigned type = 0;
    int used = 0;
    while (std::sscanf(text, "%u:%u%n", &pass, &type, &used) == 2) {
        pendingEvents.emplace(pass, static_cast<Uint8>(type));
        text += used;
        if (*text == ',') {
            ++text;
        }
    }
}

void feedAudio()
{
    const std::uint64_t due = passes * kMixRateHz / number("STAND_IN_FPS", "60");
    if (audioOpen && audioPlays && due > samplesFed) {
        std::vector<Uint8> buffer((due - samplesFed) * kBytesPerSample);
        audio.callback(audio.userdata, buffer.data(), static_cast<int>(buffer.size()));
    }
    samplesFed = due;
}

} // namespace

// A call that does nothing but become a line of the log.
#define NOTED(name, parameters, ...)                                                               \
    void name parameters                                                                           \
    {                                                                                              \
        say(#name __VA_ARGS__);                                                                    \
    }

// The libraries' headers name their parameters as they like.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

std::time_t time(std::time_t* now)
{
    constexpr std::time_t kNow = 1234567890;
    if (now) {
        *now = kNow;
    }
    return kNow;
}

NOTED(srand, (unsigned seed), " %u", seed)

// SDL

int SDL_Init(Uint32 flags)
{
    say("SDL_Init 0x%x", flags);
    return fails("SDL_Init") ? -1 : 0;
}

NOTED(SDL_Quit, ())

int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    say("SDL_GL_SetAttribute %d %d", static_cast<int>(attribute), value);
    return 0;
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int bitsPerPixel, Uint32 flags)
{
    static SDL_Surface surface{};
    say("SDL_SetVideoMode %d %d %d 0x%x", width, height, bitsPerPixel, flags);
    return fails("SDL_SetVideoMode") ? nullptr : &surface;
}

int SDL_ShowCursor(int toggle)
{
    say("SDL_ShowCursor %d", toggle);
    return 0;
}

int SDL_PollEvent(SDL_Event* event)
{
    readEvents();
    const auto next = pendingEvents.begin();
    if (next != pendingEvents.end() && next->first <= passes + 1) {
        event->type = next->second;
        pendingEvents.erase(next);
        return 1;
    }
    ++passes;
    say("-- pass %llu", static_cast<unsigned long long>(passes));
    feedAudio();
    return 0;
}

Uint32 SDL_GetTicks()
{
    const std::uint64_t elapsed = passes * 1000 / number("STAND_IN_FPS", "60");
    return kFirstTicks + delayed + static_cast<std::uint32_t>(elapsed);
}

void SDL_Delay(Uint32 milliseconds)
{
    say("SDL_Delay %u", milliseconds);
    delayed += milliseconds;
}

NOTED(SDL_GL_SwapBuffers, ())

int SDL_OpenAudio(SDL_AudioSpec* desired, SDL_AudioSpec* obtained)
{
    say("SDL_OpenAudio %d %d %d %d%s", desired->freq, desired->format, desired->channels,
        desired->samples, obtained ? " obtained" : "");
    if (fails("SDL_OpenAudio")) {
        return -1;
    }
    audio = *desired;
    audioOpen = true;
    return 0;
}

void SDL_PauseAudio(int pause)
{
    audioPlays = pause == 0;
}

void SDL_CloseAudio()
{
    say("SDL_CloseAudio");
    audioOpen = false;
}

// OpenGL

NOTED(glClearColor, (GLclampf r, GLclampf g, GLclampf b, GLclampf a), " %g %g %g %g", r, g, b, a)
NOTED(glShadeModel, (GLenum mode), " 0x%x", mode)
NOTED(glViewport, (GLint x, GLint y, GLsizei w, GLsizei h), " %d %d %d %d", x, y, w, h)
NOTED(glMatrixMode, (GLenum mode), " 0x%x", mode)
NOTED(glLoadIdentity, ())
NOTED(gluPerspective, (GLdouble fovY, GLdouble aspect, GLdouble zNear, GLdouble zFar),
      " %.9g %.9g %.9g %.9g", fovY, aspect, zNear, zFar)
NOTED(glEnable, (GLenum capability), " 0x%x", capability)
NOTED(glDisable, (GLenum capability), " 0x%x", capability)
NOTED(glBlendFunc, (GLenum source, GLenum target), " 0x%x 0x%x", source, target)
NOTED(glHint, (GLenum target, GLenum mode), " 0x%x 0x%x", target, mode)
NOTED(glClear, (GLbitfield mask), " 0x%x", mask)
NOTED(glBindTexture, (GLenum target, GLuint name), " 0x%x %u", target, name)
NOTED(glTexParameteri, (GLenum target, GLenum name, GLint value), " 0x%x 0x%x 0x%x", target, name,
      value)
NOTED(glTexEnvf, (GLenum target, GLenum name, GLfloat value), " 0x%x 0x%x 0x%x", target, name,
      static_cast<unsigned>(value))
NOTED(glTexImage2D,
      (GLenum target, GLint level, GLint internal, GLsizei w, GLsizei h, GLint border,
       GLenum format, GLenum type, const GLvoid* pixels),
      " 0x%x %d 0x%x %d %d %d 0x%x 0x%x %016llx", target, level, internal, w, h, border, format,
      type, fingerprint(pixels, w, h, format))
NOTED(glTexSubImage2D,
      (GLenum target, GLint level, GLint x, GLint y, GLsizei w, GLsizei h, GLenum format,
       GLenum type, const GLvoid* pixels),
      " 0x%x %d %d %d %d %d 0x%x 0x%x %016llx", target, level, x, y, w, h, format, type,
      fingerprint(pixels, w, h, format))
NOTED(glPushMatrix, ())
NOTED(glPopMatrix, ())
NOTED(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), " %.9g %.9g %.9g", x, y, z)
NOTED(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), " %.9g %g %g %g", angle, x, y, z)
NOTED(glColor4f, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), " %g %g %g %g", r, g, b, a)
NOTED(glBegin, (GLenum mode), " 0x%x", mode)
NOTED(glEnd, ())
NOTED(glTexCoord2fv, (const GLfloat* v), " %.9g %.9g", v[0], v[1])
NOTED(glVertex3fv, (const GLfloat* v), " %.9g %.9g %.9g", v[0], v[1], v[2])
NOTED(glFlush, ())

void glGenTextures(GLsizei count, GLuint* names)
{
    static GLuint next = 1;
    say("glGenTextures %d", count);
    for (GLsizei i = 0; i < count; ++i) {
        names[i] = next++;
    }
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
