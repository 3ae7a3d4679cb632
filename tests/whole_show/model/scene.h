// The model's scenes, as its scheduler sees them.
#pragma once

#include <memory>

namespace model {

struct Scene {
    virtual ~Scene() = default;
    virtual void hear(int /*event*/) {}
    virtual void frame(float t) = 0; // t seconds into the show
};

std::unique_ptr<Scene> makeOpening();
std::unique_ptr<Scene> makeTwister();
std::unique_ptr<Scene> makeImageTrail();
std::unique_ptr<Scene> makeLogoAndJitter();
std::unique_ptr<Scene> makeWireCubes();
std::unique_ptr<Scene> makeTube();
std::unique_ptr<Scene> makeClosing();

} // namespace model
