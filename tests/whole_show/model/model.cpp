#include "tests/whole_show/model.h"

#include "tests/whole_show/gl_log.h"
#include "tests/whole_show/model/drawing.h"
#include "tests/whole_show/model/scene.h"
#include "virtual/timing.h"

#include <GL/gl.h>
#include <array>
#include <cstdlib>

namespace {

struct EmptyScene : model::Scene {
    void frame(float /*t*/) override { glClear(GL_COLOR_BUFFER_BIT); }
};

std::array<std::unique_ptr<model::Scene>, 8> scenes;
std::size_t current;
Calls calls; // what the log has told since the pass began

} // namespace

void beginModel()
{
    scenes = {model::makeOpening(),       model::makeTwister(),          model::makeImageTrail(),
              model::makeLogoAndJitter(), model::makeWireCubes(),        model::makeTube(),
              model::makeClosing(),       std::make_unique<EmptyScene>()};
    current = 0;
    model::resetGrid();
    std::srand(kFirstTimeOfDay); // the last scene's figure does so too
    resetGl();
    glClear(GL_COLOR_BUFFER_BIT); // what is told from here on is frames
    model::blend(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

Calls modelPass(const std::vector<int>& heard, float t)
{
    // Small values choose scenes at once; events wait for the frame, as many as find room.
    std::vector<int> queue;
    for (const int value : heard) {
        if (value < 64) {
            current = static_cast<std::size_t>(value);
        } else if (queue.size() < 64) {
            queue.push_back(value);
        }
    }
    calls.clear();
    if (current < scenes.size()) {
        for (const int event : queue) {
            scenes[current]->hear(event);
        }
        scenes[current]->frame(t);
        tell("SDL_GL_SwapBuffers");
    }
    return calls;
}

void tell(const std::string& line)
{
    calls.push_back(line);
}
