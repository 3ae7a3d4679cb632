#pragma once

#include "sound/mixer.h"
#include "sound/output.h"

#include <memory>

// The sound device, through SDL's audio.
class DeviceOutput : public Output {
public:
    // Null if no sound device can be opened. The mixer is borrowed and must outlive the output.
    static std::unique_ptr<Output> open(Mixer& mixer);

    // Waits for the end of a block that is being mixed.
    ~DeviceOutput() override;

private:
    DeviceOutput() = default;
};
