#pragma once

class GridMesh;

// Makes a grid's picture swell, shrink and drift: rewrites all texture coordinates from the time.
//
// Each corner of the grid has a phase that swings at its own pace; the phase of a point is the
// bilinear blend of the four, and a cosine of it gives the zoom by which the point's own place in
// the picture is divided. The picture's top left corner stays where it is.
class GridWarp {
public:
    // The grid is borrowed, and must be built.
    void setGrid(GridMesh* grid) { grid_ = grid; }

    // Rewrites every point for a time in seconds; zooms are between 0.5 and 1.8.
    void apply(float time);

    // Wilder variants: zooms are between 0.5 and 2.5, or between `base` and `base` + 2. They leave
    // the last column and the last row of points as they are.
    void applyFast(float time);
    void applyFastBiased(float time, float base);

private:
    struct Motion;
    static const Motion kSwell, kFast;

    void rewrite(float time, const Motion& motion, float base);

    GridMesh* grid_ = nullptr;  // borrowed
    float phaseTopLeft_ = 0.0F; // of the latest time
    float phaseTopRight_ = 0.0F;
    float phaseBottomLeft_ = 0.0F;
    float phaseBottomRight_ = 0.0F;
};
