#include "sound/output.h"

#include "sound/device_output.h"
#include "sound/silent_output.h"

std::unique_ptr<Output> openOutput(Mixer& mixer, bool silently)
{
    if (silently) {
        return std::make_unique<SilentOutput>(mixer);
    }
    return DeviceOutput::open(mixer);
}
