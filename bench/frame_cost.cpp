// What each scene's frame costs on this machine's OpenGL, and how much of that is the show's own
// work: the frame as it is, the same OpenGL calls alone, and the frame with no OpenGL at all, one
// after the other in one run.
//
//   frame_cost [FRAMES]     of each scene, 60 unless told
#include "base/window_and_view.h"
#include "bench/gl_tape.h"
#include "bench/median.h"
#include "cues/scenes_and_events.h"
#include "scenes/part.h"
#include "show/display.h"
#include "show/options.h"
#include "show/scheduler.h"
#include "show/world.h"

#include <GL/gl.h>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

template <class Work>
double milliseconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

void measure(std::size_t scene, int frames)
{
    Part& part = *sceneTable[scene];
    for (const cues::Event& event : cues::kScenes[scene].events) {
        part.syncEvent(event.value); // near, thick, lit: what costs most
    }

    std::vector<double> whole;
    std::vector<double> callsAlone;
    std::vector<double> workAlone;
    for (int i = 0; i < frames; ++i) {
        const float t = 20.0F + static_cast<float>(i) / 60.0F;
        gl_tape::setMode(gl_tape::Mode::record);
        part.drawFrame(t);
        gl_tape::setMode(gl_tape::Mode::forward);
        glFinish();

        whole.push_back(milliseconds([&] {
            part.drawFrame(t);
            glFinish();
        }));
        callsAlone.push_back(milliseconds([] {
            gl_tape::play();
            glFinish();
        }));
        gl_tape::setMode(gl_tape::Mode::drop);
        workAlone.push_back(milliseconds([&] { part.drawFrame(t); }));
        gl_tape::setMode(gl_tape::Mode::forward);
    }
    std::printf("%5zu %12.3f %15.3f %8.3f %14.3f\n", scene, median(whole), median(callsAlone),
                median(whole) / median(callsAlone), median(workAlone));
}

} // namespace

int main(int argc, char** argv)
{
    const int frames = argc > 1 ? std::atoi(argv[1]) : 60;
    if (frames < 1) {
        std::fprintf(stderr, "frame_cost: how many frames? %s\n", argv[1]);
        return 1;
    }
    options.fullscreen = 0;
    initVideo(kWindowWidth, kWindowHeight);
    initGL(kWindowWidth, kWindowHeight, kViewWidth, kViewHeight);
    const double start = milliseconds(buildWorld);

    std::printf("%s\nstart-up after the pause: %.1f ms\n\n",
                reinterpret_cast<const char*>(glGetString(GL_RENDERER)), start);
    std::printf("Medians of milliseconds over %d frames.\n\n", frames);
    std::printf("%5s %12s %15s %8s %14s\n", "scene", "frame", "its calls alone", "ratio",
                "own work");
    for (std::size_t scene = 0; scene < sceneTable.size() - 1; ++scene) {
        measure(scene, frames);
    }
    return 0;
}
