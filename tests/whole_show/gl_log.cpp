#include "tests/whole_show/gl_log.h"

#include "tests/whole_show/fnv1a.h"

#include <GL/gl.h>
#include <array>
#include <bit>
#include <cmath>
#include <set>
#include <vector>

namespace {

struct Vertex {
    std::array<float, 3> position{};
    std::array<float, 2> texCoord{};
    std::array<float, 4> colour = {1.0F, 1.0F, 1.0F, 1.0F};
};

struct State {
    bool framesBegan = false;
    std::set<GLenum> enabled;
    std::set<GLenum> arrays; // in use
    std::array<GLenum, 2> blend = {GL_ONE, GL_ZERO};
    GLenum depth = GL_LESS;
    GLuint texture = 0;
    GLenum textureMode = GL_MODULATE;
    float lineWidth = 1.0F;
    Vertex current;
    std::vector<std::string> matrices = {""}; // the model-view stack, each as its transformations
    GLenum mode = 0;
    std::vector<Vertex> primitive;
    const float* positions = nullptr; // three a vertex, without gaps
    const float* texCoords = nullptr; // two
};

State gl;

void transform(const char* kind, float x, float y, float z, float angle = 0.0F)
{
    gl.matrices.back() += text(" %s %.9g %.9g %.9g %.9g", kind, angle, x, y, z);
}

void addVertex(float x, float y, float z)
{
    gl.current.position = {x, y, z};
    gl.primitive.push_back(gl.current);
}

unsigned long long fingerprint(const void* pixels, GLsizei width, GLsizei height, GLenum format)
{
    const std::size_t bytesPerPixel = format == GL_RGBA ? 4 : 3;
    return fnv1a(pixels, bytesPerPixel * static_cast<std::size_t>(width) *
                             static_cast<std::size_t>(height));
}

} // namespace

void resetGl()
{
    gl = {};
}

// A call that is told, and one that sets state: that is told only before the frames.
#define NOTED(name, parameters, ...)                                                               \
    void name parameters                                                                           \
    {                                                                                              \
        tell(text(#name __VA_ARGS__));                                                             \
    }
#define TRACKED(name, parameters, change, ...)                                                     \
    void name parameters                                                                           \
    {                                                                                              \
        change;                                                                                    \
        if (!gl.framesBegan) {                                                                     \
            tell(text(#name __VA_ARGS__));                                                         \
        }                                                                                          \
    }

// The library's header names its parameters as it likes.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

NOTED(glClearColor, (GLclampf r, GLclampf g, GLclampf b, GLclampf a), " %g %g %g %g", r, g, b, a)
NOTED(glShadeModel, (GLenum mode), " 0x%x", mode)
NOTED(glViewport, (GLint x, GLint y, GLsizei w, GLsizei h), " %d %d %d %d", x, y, w, h)
NOTED(glMatrixMode, (GLenum mode), " 0x%x", mode)
NOTED(glLoadIdentity, ())
NOTED(gluPerspective, (GLdouble fovY, GLdouble aspect, GLdouble zNear, GLdouble zFar),
      " %.9g %.9g %.9g %.9g", fovY, aspect, zNear, zFar)
NOTED(glHint, (GLenum target, GLenum mode), " 0x%x 0x%x", target, mode)
NOTED(glTexParameteri, (GLenum target, GLenum name, GLint value), " 0x%x 0x%x 0x%x", target, name,
      value)
NOTED(glTexImage2D,
      (GLenum target, GLint level, GLint internal, GLsizei w, GLsizei h, GLint border,
       GLenum format, GLenum type, const GLvoid* pixels),
      " 0x%x %d 0x%x %d %d %d 0x%x 0x%x %016llx", target, level, internal, w, h, border, format,
      type, fingerprint(pixels, w, h, format))
NOTED(glTexSubImage2D,
      (GLenum target, GLint level, GLint x, GLint y, GLsizei w, GLsizei h, GLenum format,
       GLenum type, const GLvoid* pixels),
      " 0x%x %d %d %d %d %d 0x%x 0x%x %016llx to %u", target, level, x, y, w, h, format, type,
      fingerprint(pixels, w, h, format), gl.texture)

TRACKED(glEnable, (GLenum capability), gl.enabled.insert(capability), " 0x%x", capability)
TRACKED(glDisable, (GLenum capability), gl.enabled.erase(capability), " 0x%x", capability)
TRACKED(glBlendFunc, (GLenum from, GLenum to), (gl.blend = {from, to}), " 0x%x 0x%x", from, to)
TRACKED(glDepthFunc, (GLenum function), gl.depth = function, " 0x%x", function)
TRACKED(glBindTexture, (GLenum target, GLuint name), gl.texture = name, " 0x%x %u", target, name)
TRACKED(glTexEnvf, (GLenum, GLenum, GLfloat mode), gl.textureMode = static_cast<GLenum>(mode))
TRACKED(glLineWidth, (GLfloat width), gl.lineWidth = width)
TRACKED(glPushMatrix, (), gl.matrices.push_back(gl.matrices.back()))
TRACKED(glPopMatrix, (), gl.matrices.pop_back())
TRACKED(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), transform("move", x, y, z))
TRACKED(glScalef, (GLfloat x, GLfloat y, GLfloat z), transform("scale", x, y, z))
TRACKED(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z),
        transform("turn", x, y, z, angle))
TRACKED(glColor3f, (GLfloat r, GLfloat g, GLfloat b), (gl.current.colour = {r, g, b, 1.0F}))
TRACKED(glColor4f, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (gl.current.colour = {r, g, b, a}))
TRACKED(glTexCoord2f, (GLfloat s, GLfloat t), (gl.current.texCoord = {s, t}))
TRACKED(glTexCoord2fv, (const GLfloat* v), (gl.current.texCoord = {v[0], v[1]}))
TRACKED(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), addVertex(x, y, z))
TRACKED(glVertex3fv, (const GLfloat* v), addVertex(v[0], v[1], v[2]))
TRACKED(glEnableClientState, (GLenum array), gl.arrays.insert(array))
TRACKED(glDisableClientState, (GLenum array), gl.arrays.erase(array))
TRACKED(glVertexPointer, (GLint size, GLenum, GLsizei stride, const GLvoid* data),
        gl.positions = size == 3 && stride == 0 ? static_cast<const float*>(data) : nullptr)
TRACKED(glTexCoordPointer, (GLint size, GLenum, GLsizei stride, const GLvoid* data),
        gl.texCoords = size == 2 && stride == 0 ? static_cast<const float*>(data) : nullptr)
TRACKED(glFlush, (), )

void glClear(GLbitfield mask)
{
    gl.framesBegan = true;
    tell(text("glClear 0x%x", mask));
}

void glGenTextures(GLsizei count, GLuint* names)
{
    static GLuint next = 1;
    tell(text("glGenTextures %d", count));
    for (GLsizei i = 0; i < count; ++i) {
        names[i] = next++;
    }
}

void glBegin(GLenum mode)
{
    gl.mode = mode;
    gl.primitive.clear();
}

// A few vertices are written out, many only as their fingerprint.
void glEnd()
{
    const auto on = [](GLenum capability) { return gl.enabled.contains(capability); };
    std::string line = text("draw 0x%x with", gl.mode);
    for (const GLenum capability : gl.enabled) {
        line += text(" 0x%x", capability);
    }
    line += on(GL_BLEND) ? text(" blend 0x%x 0x%x", gl.blend[0], gl.blend[1]) : "";
    line += on(GL_DEPTH_TEST) ? text(" depth 0x%x", gl.depth) : "";
    line += on(GL_TEXTURE_2D) ? text(" texture %u 0x%x", gl.texture, gl.textureMode) : "";
    line += gl.mode == GL_LINES ? text(" width %g", gl.lineWidth) : "";
    line += " at" + gl.matrices.back() + text(", %zu vertices", gl.primitive.size());
    bool isFinite = true;
    for (Vertex& vertex : gl.primitive) {
        auto values = std::bit_cast<std::array<float, 9>>(vertex);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const bool isTexCoord = i == 3 || i == 4;
            values[i] = isTexCoord && !on(GL_TEXTURE_2D) ? 0.0F : values[i] + 0.0F; // never -0
            isFinite = isFinite && std::isfinite(values[i]);
            line += gl.primitive.size() <= 4 ? text(" %.9g", values[i]) : "";
        }
        vertex = std::bit_cast<Vertex>(values);
    }
    line += isFinite ? "" : " and not all finite";
    const auto hash = fnv1a(gl.primitive.data(), gl.primitive.size() * sizeof(Vertex));
    tell(line + text(" %016llx", static_cast<unsigned long long>(hash)));
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count)
{
    glBegin(mode);
    for (GLint i = first; i < first + count; ++i) {
        if (gl.arrays.contains(GL_TEXTURE_COORD_ARRAY)) {
            glTexCoord2fv(gl.texCoords + std::ptrdiff_t{2} * i);
        }
        if (gl.arrays.contains(GL_VERTEX_ARRAY)) {
            glVertex3fv(gl.positions + std::ptrdiff_t{3} * i);
        }
    }
    glEnd();
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
