#include "scenes/shared_canvas_and_grid.h"

// All in this one file, so that they are constructed in this order and destroyed in the reverse
// one.
Bitmap lineCanvas;
GridMesh sharedGrid;
GridWarp sharedWarp;
Bitmap gridTexture;

void drawWarpedGrid(float seconds)
{
    sharedWarp.apply(seconds);
    sharedGrid.draw();
}

void drawWarpedGrid(float seconds, float alpha)
{
    sharedGrid.setAlpha(alpha);
    drawWarpedGrid(seconds);
}
