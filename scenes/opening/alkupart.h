#pragma once

#include "render/line_set.h"
#include "render/screen_quad.h"
#include "scenes/part.h"

// Scene 0, the opening: a tumbling figure of 300 line segments, drawn in software into the line
// canvas and stretched over the view.
//
// Events (cues::opening) kick it, and every kick dies away frame by frame. kSpin draws it with
// thick lines and ends a zoom; kGlide zooms with thin lines and kSwellAndGlide with thick ones;
// kNear and kNearest bring it closer and spin it, with thick lines.
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
    float zoomKick_ = 0.0F;    // the part of the zoom that is left, 1 right after a kick
    int zoomActive_ = 0;
    float baseDepth_ = -15.0F; // z of the figure before the zoom
};
