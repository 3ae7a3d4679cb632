#include "runtime/world.h"

#include "runtime/demo_clock.h"
#include "runtime/part.h"
#include "scenes/alkupart.h"
#include "scenes/kolmaspart.h"
#include "scenes/kuudespart.h"
#include "scenes/loppupart.h"
#include "scenes/neljaspart.h"
#include "scenes/shared_objects.h"
#include "scenes/tokapart.h"
#include "scenes/viidespart.h"

namespace {

// The canvas is opaque and has its texture before any scene sees it.
void buildLineCanvas()
{
    lineCanvas.create(512, 256, 32);
    lineCanvas.setAlpha(1.0F);
    lineCanvas.makeTexture();
}

// The scenes are never destroyed: they live until the process ends.
void buildScenes()
{
    sceneTable[0] = new Alkupart;
    sceneTable[1] = new Tokapart;
    sceneTable[2] = new Kolmaspart;
    sceneTable[3] = new Neljaspart;
    sceneTable[4] = new Viidespart;
    sceneTable[5] = new Kuudespart;
    sceneTable[6] = new Loppupart;
    sceneTable[7] = new Tyhjapart;
}

// The ground of several scenes, over the whole viewport in cells of 8 x 8 pixels.
void buildSharedGrid()
{
    gridTexture.load("data/outohalko4_tumma.tga", 32);
    gridTexture.makeTexture();

    sharedGrid.setProjection(640, 272, 60.0F);
    sharedGrid.build(0, 0, 640, 272, 80, 34, 10.0F);
    sharedGrid.setTexture(gridTexture.getTextureName());
    sharedGrid.setAlpha(1.0F);
}

} // namespace

void buildWorld()
{
    buildLineCanvas();
    buildScenes();
    buildSharedGrid();
    demoClock.start();
}
