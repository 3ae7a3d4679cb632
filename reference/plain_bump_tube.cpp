#include "reference/plain_bump_tube.h"

#include <cmath>

namespace {

struct Vector {
    float x, y, z;
};

Vector between(const PlainTubeVertex& from, const PlainTubeVertex& to)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

Vector cross(const Vector& a, const Vector& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vector normalised(const Vector& v)
{
    const double squares = v.x * v.x + v.y * v.y + v.z * v.z;
    const auto factor = static_cast<float>(1.0 / std::sqrt(squares));
    return {v.x * factor, v.y * factor, v.z * factor};
}

// Minus the truncated product; past the range of 32 bits it wraps.
std::int32_t scrolledTo(float time, double speed)
{
    const auto position = static_cast<std::int64_t>(time * speed);
    return static_cast<std::int32_t>(-position);
}

// Between four texels; every index stays inside the map.
float heightAt(const std::uint8_t* map, std::int32_t offset, float fx, float fy)
{
    const auto texel = [map](std::int32_t o) { return static_cast<float>(map[o & 1048575]); };
    const float h00 = texel(offset);
    const float h10 = texel(offset + 1);
    const float h01 = texel(offset + 1024);
    const float h11 = texel(offset + 1025);
    const float top = h00 + (h10 - h00) * fx;
    const float bottom = h01 + (h11 - h01) * fx;
    return top + (bottom - top) * fy;
}

std::int32_t baseOffset(std::int32_t x, std::int32_t y)
{
    return ((y >> 16) << 10) | ((x >> 16) & 1023);
}

int wrapped(int i, int count)
{
    return (i % count + count) % count;
}

} // namespace

PlainTube::PlainTube(int slices, int stacks, float radius, float length)
    : slices_{slices}, stacks_{stacks}
{
    for (int r = 0; r <= stacks; ++r) {
        for (int c = 0; c <= slices; ++c) {
            const double angle = c * 6.283185 / slices;
            rest_.push_back({static_cast<float>(std::cos(angle) * radius),
                             static_cast<float>(std::sin(angle) * radius),
                             -length * static_cast<float>(r) / static_cast<float>(stacks),
                             static_cast<float>(c) / static_cast<float>(slices),
                             static_cast<float>(r) / static_cast<float>(stacks)});
            mapOffset_.push_back(r * 16384 + c * 16);
        }
    }
    bulged_ = rest_;
    radiusScale_.resize(rest_.size());
}

std::size_t PlainTube::index(int column, int ring) const
{
    return static_cast<std::size_t>(wrapped(ring, stacks_ + 1)) *
               static_cast<std::size_t>(slices_ + 1) +
           static_cast<std::size_t>(wrapped(column, slices_ + 1));
}

float PlainTube::baseT(float restT, float time)
{
    return static_cast<float>(restT + 0.3 * time);
}

void PlainTube::bulge(float time, const std::uint8_t* map1, const std::uint8_t* map2)
{
    scaleRadii(map1, map2);
    scroll_ = {scrolledTo(time, 7077888.5), scrolledTo(time, 5308415.9296875),
               scrolledTo(time, -2949120.0), scrolledTo(time, 13035110.34375)};
    placeVertices();
    lightVertices();
}

void PlainTube::scaleRadii(const std::uint8_t* map1, const std::uint8_t* map2)
{
    const auto [x1, y1, x2, y2] = scroll_;
    const std::int32_t base1 = baseOffset(x1, y1);
    const std::int32_t base2 = baseOffset(x2, y2);
    const float fx = static_cast<float>(x1 & 65535) / 65536.0F; // of the first map, for both
    const float fy = static_cast<float>(y1 & 65535) / 65536.0F;
    for (std::size_t i = 0; i < rest_.size(); ++i) {
        const float height1 = heightAt(map1, base1 + mapOffset_[i], fx, fy);
        const float height2 = heightAt(map2, base2 + mapOffset_[i], fx, fy);
        radiusScale_[i] = static_cast<float>(1.0 + (height1 + height2) * 0.022222223);
    }
}

void PlainTube::placeVertices()
{
    for (int r = 0; r <= stacks_; ++r) {
        for (int c = 0; c <= slices_; ++c) {
            const std::size_t from = index(c == slices_ ? 0 : c, r); // the last closes the ring
            PlainTubeVertex& to = bulged_[index(c, r)];
            to.x = radiusScale_[from] * rest_[from].x;
            to.y = radiusScale_[from] * rest_[from].y;
            to.z = rest_[from].z;
        }
    }
}

void PlainTube::lightVertices()
{
    const auto at = [this](int c, int r) -> PlainTubeVertex& { return bulged_[index(c, r)]; };
    for (int r = 0; r <= stacks_; ++r) {
        for (int c = 0; c < slices_; ++c) {
            const Vector around = between(at(c - 1, r), at(c + 1, r));
            const Vector along = between(at(c, r - 1), at(c, r + 1));
            const Vector n = normalised(cross(around, along));
            const PlainTubeVertex& base = rest_[index(c, r)];
            at(c, r).s = static_cast<float>(base.s + 0.5 + 0.5 * n.y);
            at(c, r).t = static_cast<float>(base.t + 0.5 + 0.5 * n.x);
        }
        at(slices_, r).s = at(0, r).s;
        at(slices_, r).t = at(0, r).t;
    }
}
