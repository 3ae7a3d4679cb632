#include "tools/capture/skipped_sound.h"

#include <cstddef>
#include <cstdint>
#include <dlfcn.h>
#include <libopenmpt/libopenmpt.hpp>

namespace {

constexpr int kFilter = openmpt::module::RENDER_INTERPOLATIONFILTER_LENGTH;
constexpr std::int32_t kNoFilter = 1;

bool isSkipped = false;
const openmpt::module* unfiltered = nullptr;
std::int32_t usualFilter = 0; // of `unfiltered`

void setFilter(openmpt::module& module)
{
    if (isSkipped && unfiltered != &module) {
        usualFilter = module.get_render_param(kFilter);
        module.set_render_param(kFilter, kNoFilter);
        unfiltered = &module;
    } else if (!isSkipped && unfiltered == &module) {
        module.set_render_param(kFilter, usualFilter);
        unfiltered = nullptr;
    }
}

} // namespace

void skipSound(bool newIsSkipped)
{
    isSkipped = newIsSkipped;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
std::size_t openmpt::module::read_interleaved_stereo(std::int32_t samplerate, std::size_t count,
                                                     float* interleaved)
{
    using Function = std::size_t (*)(module*, std::int32_t, std::size_t, float*);
    // The name that compilers give to this very function.
    static const auto kReal = reinterpret_cast<Function>(
        ::dlsym(RTLD_NEXT, "_ZN7openmpt6module23read_interleaved_stereoEimPf"));
    setFilter(*this);
    return kReal(this, samplerate, count, interleaved);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
