#pragma once

#include "sound/mixer.h"
#include "sound/output.h"

#include <memory>

// The sound device, through SDL's audio.
class DeviceOutput : public Output {
public:
    // Null when there is no device that plays. The mixer is borrowed.
    static std::unique_ptr<Output> open(Mixer& mixer);

    // Waits for a block that is being mixed.
    ~DeviceOutput() override;

private:
    DeviceOutput() = default;
};
