#include "runtime/world.h"

#include "runtime/demo_clock.h"
#include "runtime/part.h"
#include "scenes/alkupart.h"
#include "scenes/shared_objects.h"

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
    sceneTable[1] = new Tyhjapart;
    sceneTable[2] = new Tyhjapart;
    sceneTable[3] = new Tyhjapart;
    sceneTable[4] = new Tyhjapart;
    sceneTable[5] = new Tyhjapart;
    sceneTable[6] = new Tyhjapart;
    sceneTable[7] = new Tyhjapart;
}

} // namespace

void buildWorld()
{
    buildLineCanvas();
    buildScenes();
    demoClock.start();
}
