// The figure is a closed tangle of segments whose two ends swing on curves of their own.
// A thick line is a walk along its longer axis, with a short bar of pixels across it at every step.
// The bars add to each pixel once, in any order, so a shallow line fills the same pixels row by
// row.
#include "render/line_set.h"

#include "base/fatal.h"
#include "render/add_colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr double kParameterStep = 0.2; // of the curve, from segment to segment

using Colour = std::array<float, 3>; // blue, green, red
constexpr Colour kFirstColour = {32.0F, 16.0F, 24.0F};

constexpr std::array kWarmColours = {
    Colour{7.0F, 32.0F, 63.0F},
    Colour{1.0F, 10.0F, 63.0F},
    Colour{7.0F, 42.0F, 63.0F},
    Colour{2.0F, 63.0F, 63.0F},
};

constexpr std::array kCoolColours = {
    Colour{63.0F, 32.0F, 7.0F},
    Colour{63.0F, 10.0F, 1.0F},
    Colour{63.0F, 42.0F, 7.0F},
    Colour{63.0F, 63.0F, 2.0F},
};

// Positions along a walk are fixed point with 16 fractional bits, held in 64 bits, so that a
// segment that begins far outside the target is still drawn right inside it.
constexpr int kFractionBits = 16;
constexpr float kOnePixel = 65536.0F;

// A segment longer than this many pixels along an axis is not drawn: one of its ends is almost in
// the plane of the eye. With shorter ones, everything below fits into 64 bits.
constexpr float kMaxLength = 0x1p40F;

struct Canvas {
    Canvas(std::uint8_t* targetPixels, std::int64_t targetWidth, std::int64_t targetHeight)
        : pixels{targetPixels}, width{targetWidth}, height{targetHeight}
    {
    }

    std::uint8_t* pixels;
    std::int64_t width;
    std::int64_t height;

    [[nodiscard]] std::uint8_t* at(std::int64_t x, std::int64_t y) const
    {
        return pixels + 4 * (y * width + x);
    }
};

// A is the end with the larger y, B the other.
struct Segment {
    float xa, ya;
    float xb, yb;
    float dx, dy; // from B to A
};

// Truncates toward zero; the value is known to fit.
std::int64_t truncate(float value)
{
    return static_cast<std::int64_t>(value);
}

// A colour as drawLine takes it: truncated, limited to a range far larger than a byte's, 0 for NaN.
int truncateColour(float colour)
{
    constexpr float kFar = 0x1p20F;
    return std::isnan(colour) ? 0 : static_cast<int>(std::clamp(colour, -kFar, kFar));
}

// Walks along y; every row gets `thickness` pixels to the right.
void drawSteep(const Canvas& canvas, const Segment& s, std::int64_t thickness,
               const AddedColour& colour)
{
    const std::int64_t rows = truncate(s.dy);
    if (rows < 1) {
        return;
    }
    const float k = s.dx / s.dy;
    float startX = s.xb - (s.dy - static_cast<float>(rows)) * k;
    std::int64_t first = truncate(s.yb);
    if (first < 0) {
        startX = startX + static_cast<float>(-first) * k;
        first = 0;
    }
    std::int64_t end = truncate(s.ya);
    if (end + thickness >= canvas.height) {
        end = canvas.height - thickness - 1;
    }

    std::int64_t fx = truncate(startX * kOnePixel);
    const std::int64_t step = truncate(k * kOnePixel);
    for (std::int64_t y = first; y < end; ++y) {
        const std::int64_t x = fx >> kFractionBits;
        fx += step;
        if (x >= 0 && x + thickness < canvas.width) {
            addRun(canvas.at(x, y), thickness, colour);
        }
    }
}

// The columns at which a walk that goes down by `step` > 0 per column reaches one row after the
// other. One division at the start, then additions.
class RowCrossings {
public:
    // Starts with the column that reaches `row`, which must be below the start of the walk.
    RowCrossings(std::int64_t start, std::int64_t step, std::int64_t row)
        : step_{step}, columnsPerRow_{kOne / step}, restPerRow_{kOne % step}
    {
        const std::int64_t distance = (row << kFractionBits) - start + step - 1;
        column_ = distance / step;
        rest_ = distance % step;
    }

    [[nodiscard]] std::int64_t column() const { return column_; }

    void nextRow()
    {
        column_ += columnsPerRow_;
        rest_ += restPerRow_;
        if (rest_ >= step_) {
            rest_ -= step_;
            ++column_;
        }
    }

private:
    static constexpr std::int64_t kOne = std::int64_t{1} << kFractionBits;

    std::int64_t step_;
    std::int64_t columnsPerRow_;
    std::int64_t restPerRow_;
    std::int64_t column_;
    std::int64_t rest_;
};

// A shallow walk over the columns `first` to `end` - 1, at fy in the first one.
struct ShallowWalk {
    std::int64_t first;
    std::int64_t end;
    std::int64_t fy;
    std::int64_t step;
};

// How many of the `count` columns of a level or downward walk are above `row`.
std::int64_t columnsAbove(std::int64_t row, std::int64_t start, std::int64_t step,
                          std::int64_t count)
{
    const std::int64_t distance = (row << kFractionBits) - start;
    if (distance <= 0) {
        return 0;
    }
    if (distance > step * (count - 1)) {
        return count;
    }
    return (distance + step - 1) / step;
}

// Every column x of the walk, at y = fy >> 16, has `thickness` pixels from (x, y) downward unless
// y < 0 or y + thickness >= height. Together they are filled row by row:
//
//      y0    ####
//            #######            a row reaches from the column in which the walk came within
//            ###########        `thickness` above it to the one in which the walk passes below
//                #######
//      y1           ####        (thickness 3, three and four columns to a row)
//
// A walk upward is seen from its other end, column 0 being the last one.
void fillShallow(const Canvas& canvas, const ShallowWalk& walk, std::int64_t thickness,
                 const AddedColour& colour)
{
    const std::int64_t count = walk.end - walk.first;
    if (count <= 0) {
        return;
    }
    const bool upward = walk.step < 0;
    const std::int64_t start = upward ? walk.fy + (count - 1) * walk.step : walk.fy;
    const std::int64_t step = upward ? -walk.step : walk.step;

    const std::int64_t from = columnsAbove(0, start, step, count);
    const std::int64_t to = columnsAbove(canvas.height - thickness, start, step, count);
    if (from >= to) {
        return;
    }
    const std::int64_t firstY = (start + from * step) >> kFractionBits;
    const std::int64_t lastY = (start + (to - 1) * step) >> kFractionBits;

    // A level walk crosses no row; a step of 1 instead of 0 changes nothing then.
    RowCrossings below{start, std::max<std::int64_t>(step, 1), firstY + 1};
    RowCrossings within = below; // the same columns, `thickness` rows later
    for (std::int64_t row = firstY; row < lastY + thickness; ++row) {
        std::int64_t runBegin = from;
        std::int64_t runEnd = to;
        if (row >= firstY + thickness) {
            runBegin = within.column();
            within.nextRow();
        }
        if (row < lastY) {
            runEnd = below.column();
            below.nextRow();
        }
        const std::int64_t x = upward ? walk.end - runEnd : walk.first + runBegin;
        addRun(canvas.at(x, row), runEnd - runBegin, colour);
    }
}

// Walks along x; every column gets `thickness` pixels downward.
void drawShallow(const Canvas& canvas, const Segment& s, std::int64_t thickness,
                 const AddedColour& colour)
{
    const std::int64_t columns = truncate(s.dx);
    if (columns == 0) {
        return;
    }
    const float m = s.dy / s.dx;
    const float fraction = s.dx - static_cast<float>(columns);
    std::int64_t first = truncate(s.xb);
    std::int64_t end = truncate(s.xa);
    float startY = s.yb - fraction * m;
    if (first > end) {
        std::swap(first, end);
        startY = s.ya - fraction * m;
    }
    if (first < 0) {
        startY = startY + static_cast<float>(-first) * m;
        first = 0;
    }
    if (end + thickness >= canvas.width) {
        end = canvas.width - 1;
    }

    const std::int64_t fy = truncate(startY * kOnePixel);
    const std::int64_t step = truncate(m * kOnePixel);
    fillShallow(canvas, {first, end, fy, step}, thickness, colour);
}

} // namespace

LineSet::VertexArray LineSet::allocate(std::size_t size)
{
    VertexArray array{new (std::nothrow) LineVertex[size]};
    if (array == nullptr) {
        fatal(stderr, 0, "\nError allocating memory for the vertices!!\n");
    }
    std::fill_n(array.get(), size, LineVertex{0.0F, 0.0F, 0.0F, kFirstColour});
    return array;
}

std::size_t LineSet::size() const
{
    return static_cast<std::size_t>(std::max(vertexCount_, 0));
}

void LineSet::create(int vertexCount)
{
    vertexCount_ = vertexCount;
    if (vertexCount % 2 != 0) {
        fatal(stderr, 0, "\nError! You must create even number of vertices!\n");
    }
    vertices_ = allocate(size());
    transformed_ = allocate(size());
    angles_ = {0.0F, 0.0F, 0.0F};
    scale_ = {1.0F, 1.0F, 1.0F};
}

void LineSet::generate(int style)
{
    // Not for this figure: the scenes' later random numbers differ from show to show.
    std::srand(static_cast<unsigned>(std::time(nullptr)));

    float t = 0.0F;
    for (std::size_t i = 0; i < segments(); ++i) {
        LineVertex& from = vertices_[2 * i];
        LineVertex& to = vertices_[2 * i + 1];
        const double swing = std::sin(42.69 * t);
        from.x = static_cast<float>(1.2 * std::cos(double{14.0F * t}));
        from.y = static_cast<float>(1.6 * std::sin(1.28927348934 * t));
        from.z = static_cast<float>(1.4 * swing);
        to.x = static_cast<float>(-1.2 * std::cos(0.333 * t));
        to.y = static_cast<float>(-1.6 * std::sin(double{8.0F * t}));
        to.z = static_cast<float>(-1.4 * swing);

        t = static_cast<float>(t + kParameterStep);

        const auto k = static_cast<std::size_t>((std::sin(42.69 * t) * 0.5 + 0.5) * 3.0);
        if (style == 1) {
            from.colour = kWarmColours[k];
        } else if (style == 2) {
            from.colour = kCoolColours[k];
        }
    }
}

void LineSet::setTarget(std::uint8_t* pixels, int width, int height)
{
    targetPixels_ = pixels;
    targetWidth_ = width;
    targetHeight_ = height;
}

void LineSet::buildMatrix()
{
    const double sa = std::sin(double{angles_[0]});
    const double ca = std::cos(double{angles_[0]});
    const double sb = std::sin(double{angles_[1]});
    const double cb = std::cos(double{angles_[1]});
    const double sc = std::sin(double{angles_[2]});
    const double cc = std::cos(double{angles_[2]});
    const auto [sx, sy, sz] = scale_;

    // The transpose of Rx(a) Ry(b) Rz(c), each row scaled by its axis.
    matrix_[0] = static_cast<float>(sx * cb * cc);
    matrix_[4] = static_cast<float>(sx * (sa * sb * cc + ca * sc));
    matrix_[8] = static_cast<float>(sx * (sa * sc - ca * sb * cc));
    matrix_[12] = position_[0];

    matrix_[1] = static_cast<float>(-sy * cb * sc);
    matrix_[5] = static_cast<float>(sy * (ca * cc - sa * sb * sc));
    matrix_[9] = static_cast<float>(sy * (ca * sb * sc + sa * cc));
    matrix_[13] = position_[1];

    matrix_[2] = static_cast<float>(sz * sb);
    matrix_[6] = static_cast<float>(-sz * sa * cb);
    matrix_[10] = static_cast<float>(sz * ca * cb);
    matrix_[14] = position_[2];

    matrix_[3] = 0.0F;
    matrix_[7] = 0.0F;
    matrix_[11] = 0.0F;
    matrix_[15] = 1.0F;
}

void LineSet::transform()
{
    buildMatrix();
    const std::array<float, 16> m = matrix_;
    for (std::size_t i = 0; i < size(); ++i) {
        const LineVertex& v = vertices_[i];
        transformed_[i] = {m[0] * v.x + m[4] * v.y + m[8] * v.z + m[12],
                           m[1] * v.x + m[5] * v.y + m[9] * v.z + m[13],
                           m[2] * v.x + m[6] * v.y + m[10] * v.z + m[14], v.colour};
    }
}

void LineSet::scaleColours(float factor)
{
    for (std::size_t i = 0; i < segments(); ++i) {
        const Colour& source = vertices_[i].colour;
        transformed_[i].colour = {source[0] * factor, source[1] * factor, source[2] * factor};
    }
}

void LineSet::perspectiveDivide()
{
    for (std::size_t i = 0; i < size(); ++i) {
        LineVertex& v = transformed_[i];
        v.x = v.x / v.z;
        v.y = v.y / v.z;
    }
}

void LineSet::draw()
{
    perspectiveDivide();
    const int middleX = targetWidth_ / 2;
    const int middleY = targetHeight_ / 2;
    const auto halfWidth = static_cast<float>(middleX);
    const auto halfHeight = static_cast<float>(middleY);
    for (std::size_t i = 0; i < segments(); ++i) {
        const LineVertex& from = transformed_[2 * i];
        const LineVertex& to = transformed_[2 * i + 1];
        drawLine(from.x * halfWidth + halfWidth, from.y * halfHeight + halfHeight,
                 to.x * halfWidth + halfWidth, to.y * halfHeight + halfHeight,
                 truncateColour(from.colour[0]), truncateColour(from.colour[1]),
                 truncateColour(from.colour[2]), targetPixels_, thickness_);
    }
}

void LineSet::drawLine(float x0, float y0, float x1, float y1, int c0, int c1, int c2,
                       std::uint8_t* pixels, int thickness) const
{
    const bool firstIsA = y1 < y0;
    Segment s =
        firstIsA ? Segment{x0, y0, x1, y1, 0.0F, 0.0F} : Segment{x1, y1, x0, y0, 0.0F, 0.0F};

    const auto width = static_cast<float>(targetWidth_);
    const auto height = static_cast<float>(targetHeight_);
    if (s.ya < 0.0F || s.yb > height || (s.xa < 0.0F && s.xb < 0.0F) ||
        (s.xa > width && s.xb > width)) {
        return;
    }

    // A segment that is left has, for each border of the target, an end on its inner side. So a
    // limit for the length is also one for the ends.
    s.dx = s.xa - s.xb;
    s.dy = s.ya - s.yb;
    const bool drawable =
        std::fabs(s.dx) < kMaxLength && std::fabs(s.dy) < kMaxLength; // false for NaN
    if (!drawable || thickness < 1) {
        return;
    }

    const Canvas canvas{pixels, targetWidth_, targetHeight_};
    const AddedColour colour{c2, c1, c0};
    if (std::fabs(s.dy) < std::fabs(s.dx)) {
        drawShallow(canvas, s, thickness, colour);
    } else {
        drawSteep(canvas, s, thickness, colour);
    }
}

void LineSet::print() const
{
    for (const LineVertex& v : transformed()) {
        std::printf("\nx: %g\ny: %g\nz: %g\n", double{v.x}, double{v.y}, double{v.z});
    }
}
