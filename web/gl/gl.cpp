// Every vertex is transformed here and appended to the frame's list as a corner of triangles, so
// that all that is drawn in one state becomes one command, however many calls it came in.
#include "web/gl/frame_list.h"
#include "web/gl/matrix.h"
#include "web/gl/wide_line.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using Colour = std::array<float, 4>;
using TexCoord = std::array<float, 2>;

struct Texture {
    std::uint32_t version = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t channels = 0;
    std::vector<std::uint8_t> pixels;
};

struct ClientArray {
    bool enabled = false;
    const std::uint8_t* first = nullptr; // borrowed
    std::size_t stride = 0;

    // The floats of one element.
    template <std::size_t kSize>
    [[nodiscard]] std::array<float, kSize> at(std::size_t index) const
    {
        std::array<float, kSize> floats{};
        std::memcpy(floats.data(), first + index * stride, sizeof floats);
        return floats;
    }
};

// The frame at hand.
struct List {
    std::vector<FrameVertex> vertices;
    std::vector<std::uint32_t> indices;
    std::vector<FrameCommand> commands;
    bool isOver = false; // a new one begins with the next call that draws
};

// All of OpenGL's state that the show uses.
struct State {
    FrameCommand drawing; // without its clears and indices
    bool texturing = false;
    std::uint32_t boundTexture = 0;
    float lineWidth = 1.0F;
    int viewportWidth = 1;
    int viewportHeight = 1;

    std::vector<Matrix> projection = {kIdentity};
    std::vector<Matrix> modelView = {kIdentity};
    std::vector<Matrix>* stack = &modelView;

    Colour colour = {1.0F, 1.0F, 1.0F, 1.0F};
    TexCoord texCoord = {0.0F, 0.0F};
    GLenum mode = 0; // of glBegin
    std::vector<FrameVertex> begun;
    ClientArray positions;
    ClientArray texCoords;

    State()
    {
        drawing.blendSource = GL_ONE;
        drawing.blendDestination = GL_ZERO;
        drawing.depthFunction = GL_LESS;
    }
};

State state;
List list;
std::vector<Texture> textures;
std::vector<FrameTexture> textureViews;

List& openList()
{
    if (list.isOver) {
        list.vertices.clear();
        list.indices.clear();
        list.commands.clear();
        list.isOver = false;
    }
    return list;
}

void multiply(const Matrix& matrix)
{
    state.stack->back() = product(state.stack->back(), matrix);
}

Texture* boundTexture()
{
    const std::size_t name = state.boundTexture;
    return name >= 1 && name <= textures.size() ? &textures[name - 1] : nullptr;
}

// The command that the next triangles belong to: the latest one, if it draws in the same state.
FrameCommand& commandOfNow()
{
    List& now = openList();
    FrameCommand wanted = state.drawing;
    wanted.texture = state.texturing ? state.boundTexture : 0;
    if (!now.commands.empty()) {
        FrameCommand same = now.commands.back();
        same.firstIndex = 0;
        same.indexCount = 0;
        if (same == wanted) {
            return now.commands.back();
        }
    }
    wanted.firstIndex = static_cast<std::uint32_t>(now.indices.size());
    return now.commands.emplace_back(wanted);
}

// `count` vertices, of which triangles take three each or, in a strip, one each and two before.
void appendTriangles(bool isStrip, const FrameVertex* vertices, std::size_t count)
{
    if (count < 3) {
        return;
    }
    FrameCommand& command = commandOfNow();
    const auto base = static_cast<std::uint32_t>(list.vertices.size());
    list.vertices.insert(list.vertices.end(), vertices, vertices + count);
    const std::size_t step = isStrip ? 1 : 3;
    for (std::size_t i = 0; i + 2 < count; i += step) {
        // Every second triangle of a strip is turned, so that all go round the same way.
        const auto turned = static_cast<std::uint32_t>(isStrip && i % 2 != 0);
        const auto corner = base + static_cast<std::uint32_t>(i);
        list.indices.insert(list.indices.end(), {corner + turned, corner + 1 - turned, corner + 2});
        command.indexCount += 3;
    }
}

// OpenGL rounds the width of a line that is not smoothed.
void appendLine(const FrameVertex& from, const FrameVertex& to)
{
    const float width = std::max(std::round(state.lineWidth), 1.0F);
    const auto corners =
        wideLine(from.position, to.position, width, state.viewportWidth, state.viewportHeight);
    if (!corners) {
        return;
    }
    std::array<FrameVertex, 4> vertices = {from, from, to, to};
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        vertices[i].position = (*corners)[i];
    }
    appendTriangles(true, vertices.data(), vertices.size());
}

void append(GLenum mode, const std::vector<FrameVertex>& vertices)
{
    if (mode == GL_LINES) {
        for (std::size_t i = 0; i + 1 < vertices.size(); i += 2) {
            appendLine(vertices[i], vertices[i + 1]);
        }
    } else if (mode == GL_TRIANGLES || mode == GL_TRIANGLE_STRIP) {
        appendTriangles(mode == GL_TRIANGLE_STRIP, vertices.data(), vertices.size());
    }
}

Matrix wholeTransform()
{
    return product(state.projection.back(), state.modelView.back());
}

void switchCapability(GLenum capability, bool on)
{
    switch (capability) {
    case GL_BLEND:
        state.drawing.blends = on ? 1 : 0;
        break;
    case GL_DEPTH_TEST:
        state.drawing.testsDepth = on ? 1 : 0;
        break;
    case GL_TEXTURE_2D:
        state.texturing = on;
        break;
    default:
        break;
    }
}

ClientArray* clientArray(GLenum array)
{
    switch (array) {
    case GL_VERTEX_ARRAY:
        return &state.positions;
    case GL_TEXTURE_COORD_ARRAY:
        return &state.texCoords;
    default:
        return nullptr;
    }
}

void point(ClientArray& array, GLint size, GLsizei stride, const GLvoid* first)
{
    array.first = static_cast<const std::uint8_t*>(first);
    array.stride = stride != 0 ? static_cast<std::size_t>(stride)
                               : static_cast<std::size_t>(size) * sizeof(float);
}

} // namespace

FrameList frameList()
{
    textureViews.clear();
    for (const Texture& texture : textures) {
        textureViews.push_back({texture.version, texture.width, texture.height, texture.channels,
                                texture.pixels.data()});
    }
    return {list.vertices.data(), static_cast<std::uint32_t>(list.vertices.size()),
            list.indices.data(),  static_cast<std::uint32_t>(list.indices.size()),
            list.commands.data(), static_cast<std::uint32_t>(list.commands.size()),
            textureViews.data(),  static_cast<std::uint32_t>(textureViews.size())};
}

void endFrameList()
{
    list.isOver = true;
}

extern "C" {

void glEnable(GLenum capability)
{
    switchCapability(capability, true);
}

void glDisable(GLenum capability)
{
    switchCapability(capability, false);
}

void glBlendFunc(GLenum source, GLenum destination)
{
    state.drawing.blendSource = source;
    state.drawing.blendDestination = destination;
}

void glDepthFunc(GLenum function)
{
    state.drawing.depthFunction = function;
}

void glHint(GLenum /*target*/, GLenum /*mode*/)
{
}

void glShadeModel(GLenum /*mode*/)
{
}

void glFlush()
{
}

void glViewport(GLint /*x*/, GLint /*y*/, GLsizei width, GLsizei height)
{
    state.viewportWidth = width;
    state.viewportHeight = height;
}

void glClearColor(GLclampf /*red*/, GLclampf /*green*/, GLclampf /*blue*/, GLclampf /*alpha*/)
{
}

void glClear(GLbitfield mask)
{
    FrameCommand clear;
    clear.clears = mask;
    openList().commands.push_back(clear);
}

void glMatrixMode(GLenum mode)
{
    state.stack = mode == GL_PROJECTION ? &state.projection : &state.modelView;
}

void glLoadIdentity()
{
    state.stack->back() = kIdentity;
}

void glMultMatrixf(const GLfloat* columns)
{
    Matrix matrix{};
    std::copy_n(columns, matrix.size(), matrix.begin());
    multiply(matrix);
}

void glPushMatrix()
{
    const Matrix top = state.stack->back();
    state.stack->push_back(top);
}

void glPopMatrix()
{
    if (state.stack->size() > 1) {
        state.stack->pop_back();
    }
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z)
{
    multiply(translation(x, y, z));
}

void glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z)
{
    multiply(rotation(degrees, x, y, z));
}

void glScalef(GLfloat x, GLfloat y, GLfloat z)
{
    multiply(scaling(x, y, z));
}

void glGenTextures(GLsizei count, GLuint* names)
{
    for (GLsizei i = 0; i < count; ++i) {
        textures.emplace_back();
        names[i] = static_cast<GLuint>(textures.size());
    }
}

void glBindTexture(GLenum /*target*/, GLuint name)
{
    state.boundTexture = name;
}

void glTexParameteri(GLenum /*target*/, GLenum /*name*/, GLint /*value*/)
{
}

void glTexEnvf(GLenum /*target*/, GLenum /*name*/, GLfloat /*value*/)
{
}

void glTexImage2D(GLenum /*target*/, GLint /*level*/, GLint /*components*/, GLsizei width,
                  GLsizei height, GLint /*border*/, GLenum format, GLenum /*type*/,
                  const GLvoid* pixels)
{
    Texture* const texture = boundTexture();
    if (texture == nullptr || width < 0 || height < 0) {
        return;
    }
    texture->width = static_cast<std::uint32_t>(width);
    texture->height = static_cast<std::uint32_t>(height);
    texture->channels = format == GL_RGB ? 3 : 4;
    texture->pixels.assign(std::size_t{texture->width} * texture->height * texture->channels, 0);
    ++texture->version;
    if (pixels != nullptr) {
        std::memcpy(texture->pixels.data(), pixels, texture->pixels.size());
    }
}

// Always the whole picture, in the format that it was made with.
void glTexSubImage2D(GLenum /*target*/, GLint /*level*/, GLint /*x*/, GLint /*y*/, GLsizei width,
                     GLsizei height, GLenum format, GLenum /*type*/, const GLvoid* pixels)
{
    Texture* const texture = boundTexture();
    const std::uint32_t channels = format == GL_RGB ? 3 : 4;
    if (texture == nullptr || texture->width != static_cast<std::uint32_t>(width) ||
        texture->height != static_cast<std::uint32_t>(height) || texture->channels != channels) {
        return;
    }
    std::memcpy(texture->pixels.data(), pixels, texture->pixels.size());
    ++texture->version;
}

void glLineWidth(GLfloat pixels)
{
    state.lineWidth = pixels;
}

void glColor3f(GLfloat red, GLfloat green, GLfloat blue)
{
    glColor4f(red, green, blue, 1.0F);
}

void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha)
{
    const Colour colour = {red, green, blue, alpha};
    std::transform(colour.begin(), colour.end(), state.colour.begin(),
                   [](float channel) { return std::clamp(channel, 0.0F, 1.0F); });
}

void glBegin(GLenum mode)
{
    state.mode = mode;
    state.begun.clear();
}

void glTexCoord2f(GLfloat s, GLfloat t)
{
    state.texCoord = {s, t};
}

void glTexCoord2fv(const GLfloat* st)
{
    glTexCoord2f(st[0], st[1]);
}

// The transform is made once for all vertices, in glEnd; until then these are positions in space.
void glVertex3fv(const GLfloat* xyz)
{
    state.begun.push_back({
        {xyz[0], xyz[1], xyz[2], 1.0F},
        state.texCoord, state.colour
    });
}

void glEnd()
{
    const Matrix transform = wholeTransform();
    for (FrameVertex& vertex : state.begun) {
        const Point& p = vertex.position;
        vertex.position = transformed(transform, p[0], p[1], p[2]);
    }
    append(state.mode, state.begun);
}

void glEnableClientState(GLenum array)
{
    if (ClientArray* const client = clientArray(array); client != nullptr) {
        client->enabled = true;
    }
}

void glDisableClientState(GLenum array)
{
    if (ClientArray* const client = clientArray(array); client != nullptr) {
        client->enabled = false;
    }
}

void glVertexPointer(GLint size, GLenum /*type*/, GLsizei stride, const GLvoid* first)
{
    point(state.positions, size, stride, first);
}

void glTexCoordPointer(GLint size, GLenum /*type*/, GLsizei stride, const GLvoid* first)
{
    point(state.texCoords, size, stride, first);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count)
{
    if (!state.positions.enabled) {
        return;
    }
    const Matrix transform = wholeTransform();
    state.begun.clear();
    for (GLsizei i = 0; i < count; ++i) {
        const auto index = static_cast<std::size_t>(first) + static_cast<std::size_t>(i);
        const auto p = state.positions.at<3>(index);
        state.begun.push_back(
            {transformed(transform, p[0], p[1], p[2]),
             state.texCoords.enabled ? state.texCoords.at<2>(index) : state.texCoord,
             state.colour});
    }
    append(mode, state.begun);
}

void gluPerspective(GLdouble fieldOfView, GLdouble aspect, GLdouble nearPlane, GLdouble farPlane)
{
    const Matrix matrix = perspective(fieldOfView, aspect, nearPlane, farPlane);
    glMultMatrixf(matrix.data());
}

} // extern "C"
