// Objects that several scenes draw with. Empty until buildWorld fills them; they live until the
// process ends.
#pragma once

#include "image/bitmap.h"
#include "render/grid_mesh.h"
#include "render/grid_warp.h"

// The canvas of the opening scene's line figure, of 32 bits per pixel, with its texture.
constexpr int kLineCanvasWidth = 512;
constexpr int kLineCanvasHeight = 256;
extern Bitmap lineCanvas;

// The background of three scenes: a grid over the whole view, the warp that makes it swell, and the
// picture that it shows. Ready only after the scenes' constructors.
extern GridMesh sharedGrid;
extern GridWarp sharedWarp;
extern Bitmap gridTexture;

// Warps the shared grid for a time in seconds and draws it, which needs buildWorld before, with the
// alpha that it has or with a new one, which the grid keeps.
void drawWarpedGrid(float seconds);
void drawWarpedGrid(float seconds, float alpha);
