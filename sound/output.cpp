#include "sound/output.h"

#include "sound/device_output.h"
#include "sound/silent_output.h"

#include <system_error>

std::unique_ptr<Output> openOutput(Mixer& mixer, bool silently)
{
    if (silently) {
        try {
            return std::make_unique<SilentOutput>(mixer);
        } catch (const std::system_error&) { // no thread to be had
            return nullptr;
        }
    }
    return DeviceOutput::open(mixer);
}
