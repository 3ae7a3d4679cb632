#pragma once

#include "render/line_set.h"
#include "render/screen_quad.h"
#include "scenes/part.h"

// Scene 0, the opening: a tumbling figure of 300 line segments, drawn in software into the line
// canvas and stretched over the viewport.
//
// Sync events (cues::opening) kick it, and every kick dies away frame by frame: a spin thickens it
// and ends a zoom, a glide zooms with thin lines, the other one with thick ones; two bring it near
// and nearest with a thick spin.
class Alkupart : public Part {
public:
    // Needs the line canvas and the display.
    Alkupart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    void drawFigure(float seconds);
    void advance(float seconds);
    void presentCanvas();

    ScreenQuad quad_;
    LineSet lines_;
    float colourScale_ = 1.0F; // 1 leaves the figure's own colours
    float pulse_ = 0.0F;       // of the lines' thickness, 1 right after a kick
    float prevTime_ = 0.0F;    // seconds, of the frame drawn before
    float spin_ = 0.0F;        // of the rotation, 1 right after a kick
    float zoomKick_ = 0.0F;    // what is left of the zoom's way, 1 right after a kick
    int zoomActive_ = 0;
    float baseDepth_ = -15.0F; // z of the figure before the zoom
};
