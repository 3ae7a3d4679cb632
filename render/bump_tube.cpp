// Every frame: at each vertex, the bilinear heights of two maps push the wall outward, the cross
// product of the vectors between its neighbours gives the normal, and the normal shifts the place
// in the light texture. Then each column of cells is drawn as one strip twice: the base texture,
// then the light, which multiplies it.
#include "render/bump_tube.h"

#include "base/fatal.h"

#include <GL/gl.h>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr double kFullTurn = 6.283185; // radians
constexpr double kEyeInside = 0.05;    // of the length, from the near end
constexpr double kBaseScroll = 0.3;    // texture heights per second
constexpr double kRadiiPerHeight = 0.022222223;

// Height maps are 1024 x 1024 texels; one vertex is 16 texels from the next either way.
constexpr int kMapWidthBits = 10;
constexpr std::uint32_t kMapWidth = 1U << kMapWidthBits;
constexpr std::uint32_t kMapMask = kMapWidth * kMapWidth - 1;
constexpr std::uint32_t kTexelsPerVertex = 16;

// Positions in the maps are 16.16 fixed point.
constexpr int kFractionBits = 16;
constexpr std::int32_t kFractionMask = 0xffff;
constexpr float kOneTexel = 65536.0F;

// How fast the maps scroll, in 65536ths of a texel per second, against the direction of the axes.
constexpr double kScrollX1 = 7077888.5;
constexpr double kScrollY1 = 5308415.9296875;
constexpr double kScrollX2 = -2949120.0;
constexpr double kScrollY2 = 13035110.34375;

// After a few minutes, the position of the fastest map no longer fits into 32 bits and wraps
// around. 2^32 is a multiple of the map's size, so the motion goes on smoothly.
std::int32_t scrolled(float time, double speed)
{
    return static_cast<std::int32_t>(-static_cast<std::int64_t>(time * speed));
}

// The texel of a scroll position.
std::uint32_t texel(std::int32_t x, std::int32_t y)
{
    const std::int32_t row = (y >> kFractionBits) << kMapWidthBits;
    const std::int32_t column = (x >> kFractionBits) & static_cast<std::int32_t>(kMapWidth - 1);
    return static_cast<std::uint32_t>(row | column);
}

float fraction(std::int32_t position)
{
    return static_cast<float>(position & kFractionMask) / kOneTexel;
}

// The texel below a vertex. A very long tube runs over the maps more than once.
std::int32_t texelOf(int column, int ring)
{
    const auto row = static_cast<std::uint32_t>(ring) << kMapWidthBits;
    return static_cast<std::int32_t>((row + static_cast<std::uint32_t>(column)) * kTexelsPerVertex &
                                     kMapMask);
}

// The bilinear height between four texels; past its end the map starts again.
float height(const std::uint8_t* map, std::uint32_t texel, float fx, float fy)
{
    const auto at = [=](std::uint32_t offset) {
        return static_cast<float>(map[(texel + offset) & kMapMask]);
    };
    const float h00 = at(0);
    const float h10 = at(1);
    const float h01 = at(kMapWidth);
    const float h11 = at(kMapWidth + 1);
    const float top = h00 + (h10 - h00) * fx;
    const float bottom = h01 + (h11 - h01) * fx;
    return top + (bottom - top) * fy;
}

// One entry for each vertex.
template <class Entry>
Array<Entry> allocate(int slices, int stacks)
{
    auto entries = allocateArray<Entry>({std::int64_t{slices} + 1, std::int64_t{stacks} + 1});
    if (entries == nullptr) {
        fatal(stderr, 0, "\nError allocating memory!\n");
    }
    return entries;
}

int wrapped(int i, int count)
{
    const int rest = i % count;
    return rest < 0 ? rest + count : rest;
}

} // namespace

void BumpTube::build(int slices, int stacks, float radius, float length)
{
    slices_ = slices;
    stacks_ = stacks;
    length_ = length;

    baseVertices_ = allocate<Vertex>(slices, stacks);
    vertices_ = allocate<Vertex>(slices, stacks);
    radiusScale_ = allocate<float>(slices, stacks);
    mapOffset_ = allocate<std::int32_t>(slices, stacks);

    const auto sliceCount = static_cast<float>(slices);
    const auto stackCount = static_cast<float>(stacks);
    for (int r = 0; r <= stacks; ++r) {
        for (int c = 0; c <= slices; ++c) {
            const double angle = c * kFullTurn / slices;
            baseVertices_[index(c, r)] = {static_cast<float>(std::cos(angle) * radius),
                                          static_cast<float>(std::sin(angle) * radius),
                                          -length * static_cast<float>(r) / stackCount,
                                          static_cast<float>(c) / sliceCount,
                                          static_cast<float>(r) / stackCount};
            mapOffset_[index(c, r)] = texelOf(c, r);
        }
    }

    std::srand(static_cast<unsigned>(std::time(nullptr)));
    mapX1_ = std::rand();
    mapY1_ = std::rand();
    mapX2_ = std::rand();
    mapY2_ = std::rand();
}

void BumpTube::setHeightMaps(const std::uint8_t* first, const std::uint8_t* second)
{
    heightMap1_ = first;
    heightMap2_ = second;
}

void BumpTube::update(float time)
{
    sampleMaps();
    scrollMaps(time);
    bulge();
    light();
}

std::span<const BumpTube::Vertex> BumpTube::vertices() const
{
    return {vertices_.get(), index(slices_, stacks_) + 1};
}

void BumpTube::draw(float time)
{
    glPushMatrix();
    glRotatef(rotation_[0], 1.0F, 0.0F, 0.0F);
    glRotatef(rotation_[1], 0.0F, 1.0F, 0.0F);
    glRotatef(rotation_[2], 0.0F, 0.0F, 1.0F);
    glTranslatef(0.0F, 0.0F, static_cast<float>(length_ * kEyeInside));
    glColor3f(1.0F, 1.0F, 1.0F);

    update(time);
    drawStrips(time);

    glFlush();
    glPopMatrix();
}

BumpTube::Vector BumpTube::cross(const Vector& a, const Vector& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

BumpTube::Vector BumpTube::normalised(const Vector& v)
{
    const double length = std::sqrt(double{v.x * v.x + v.y * v.y + v.z * v.z});
    const auto inverse = static_cast<float>(1.0 / length);
    return {v.x * inverse, v.y * inverse, v.z * inverse};
}

std::size_t BumpTube::index(int column, int ring) const
{
    return static_cast<std::size_t>(ring) * (static_cast<std::size_t>(slices_) + 1) +
           static_cast<std::size_t>(column);
}

// Wraps around in both directions. The closing column counts as a column of its own, so the
// neighbour before column 0 has the same place as column 0.
const BumpTube::Vertex& BumpTube::neighbour(int column, int ring) const
{
    return vertices_[index(wrapped(column, slices_ + 1), wrapped(ring, stacks_ + 1))];
}

BumpTube::Vector BumpTube::between(const Vertex& from, const Vertex& to)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

// Both maps are read with the fractions of the first.
void BumpTube::sampleMaps()
{
    const std::uint32_t base1 = texel(mapX1_, mapY1_);
    const std::uint32_t base2 = texel(mapX2_, mapY2_);
    const float fx = fraction(mapX1_);
    const float fy = fraction(mapY1_);
    const std::size_t count = vertices().size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto offset = static_cast<std::uint32_t>(mapOffset_[i]);
        const float heights = height(heightMap1_, base1 + offset, fx, fy) +
                              height(heightMap2_, base2 + offset, fx, fy);
        radiusScale_[i] = static_cast<float>(1.0 + heights * kRadiiPerHeight);
    }
}

void BumpTube::scrollMaps(float time)
{
    mapX1_ = scrolled(time, kScrollX1);
    mapY1_ = scrolled(time, kScrollY1);
    mapX2_ = scrolled(time, kScrollX2);
    mapY2_ = scrolled(time, kScrollY2);
}

void BumpTube::bulge()
{
    for (int r = 0; r <= stacks_; ++r) {
        for (int c = 0; c < slices_; ++c) {
            const std::size_t i = index(c, r);
            vertices_[i].x = radiusScale_[i] * baseVertices_[i].x;
            vertices_[i].y = radiusScale_[i] * baseVertices_[i].y;
            vertices_[i].z = baseVertices_[i].z;
        }
        const Vertex& first = vertices_[index(0, r)];
        Vertex& last = vertices_[index(slices_, r)];
        last.x = first.x;
        last.y = first.y;
        last.z = first.z;
    }
}

void BumpTube::light()
{
    for (int r = 0; r <= stacks_; ++r) {
        for (int c = 0; c < slices_; ++c) {
            const Vector across = between(neighbour(c - 1, r), neighbour(c + 1, r));
            const Vector along = between(neighbour(c, r - 1), neighbour(c, r + 1));
            const Vector normal = normalised(cross(across, along));
            const std::size_t i = index(c, r);
            // The normal's y goes with s and its x with t.
            vertices_[i].s = static_cast<float>(baseVertices_[i].s + 0.5 + 0.5 * normal.y);
            vertices_[i].t = static_cast<float>(baseVertices_[i].t + 0.5 + 0.5 * normal.x);
        }
        const Vertex& first = vertices_[index(0, r)];
        Vertex& last = vertices_[index(slices_, r)];
        last.s = first.s;
        last.t = first.t;
    }
}

void BumpTube::drawStrips(float time) const
{
    const auto basePoint = [&](int c, int r) {
        const std::size_t i = index(c, r);
        glTexCoord2f(baseVertices_[i].s,
                     static_cast<float>(baseVertices_[i].t + kBaseScroll * time));
        glVertex3fv(&vertices_[i].x);
    };
    const auto lightPoint = [&](int c, int r) {
        const std::size_t i = index(c, r);
        glTexCoord2fv(&vertices_[i].s);
        glVertex3fv(&vertices_[i].x);
    };
    // One column of cells, from the near end to the far one.
    const auto drawStrip = [&](int c, unsigned texture, GLenum sourceFactor, const auto& point) {
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glEnable(GL_BLEND);
        glBlendFunc(sourceFactor, GL_ZERO);
        glBegin(GL_TRIANGLE_STRIP);
        for (int r = 0; r <= stacks_; ++r) {
            point(c, r);
            point(c + 1, r);
        }
        glEnd();
    };

    for (int c = 0; c < slices_; ++c) {
        drawStrip(c, baseTexture_, GL_ONE, basePoint);
        drawStrip(c, lightTexture_, GL_DST_COLOR, lightPoint);
    }
}
