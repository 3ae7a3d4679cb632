#include "show/world.h"

#include "base/window_and_view.h"
#include "cues/scenes_and_events.h"
#include "scenes/closing/loppupart.h"
#include "scenes/empty/tyhjapart.h"
#include "scenes/image_trail/kolmaspart.h"
#include "scenes/logo_and_jitter/neljaspart.h"
#include "scenes/opening/alkupart.h"
#include "scenes/shared_canvas_and_grid.h"
#include "scenes/tube/kuudespart.h"
#include "scenes/twister/tokapart.h"
#include "scenes/wire_cubes/viidespart.h"
#include "show/demo_clock.h"
#include "show/scheduler.h"

namespace {

constexpr int kGridCell = 8; // pixels, width and height
constexpr float kGridDepth = 10.0F;

// The canvas is opaque and has its texture before any scene sees it.
void buildLineCanvas()
{
    lineCanvas.create(kLineCanvasWidth, kLineCanvasHeight, 32);
    lineCanvas.setAlpha(1.0F);
    lineCanvas.makeTexture();
}

// The scenes are never destroyed: they live until the process ends.
void buildScenes()
{
    sceneTable[cues::kOpening] = new Alkupart;
    sceneTable[cues::kTwister] = new Tokapart;
    sceneTable[cues::kImageTrail] = new Kolmaspart;
    sceneTable[cues::kLogoAndJitter] = new Neljaspart;
    sceneTable[cues::kWireCubes] = new Viidespart;
    sceneTable[cues::kTube] = new Kuudespart;
    sceneTable[cues::kClosing] = new Loppupart;
    sceneTable[cues::kEmpty] = new Tyhjapart;
}

// The background of several scenes, over the whole view.
void buildSharedGrid()
{
    gridTexture.load("data/outohalko4_tumma.tga", 32);
    gridTexture.makeTexture();

    sharedGrid.setProjection(kViewWidth, kViewHeight, kFieldOfView);
    sharedGrid.build(0, 0, kViewWidth, kViewHeight, kViewWidth / kGridCell, kViewHeight / kGridCell,
                     kGridDepth);
    sharedGrid.setTexture(gridTexture.getTextureName());
    sharedGrid.setAlpha(1.0F);
    sharedWarp.setGrid(&sharedGrid);
}

} // namespace

void buildWorld()
{
    buildLineCanvas();
    buildScenes();
    buildSharedGrid();
    demoClock.start();
}
