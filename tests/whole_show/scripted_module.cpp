#include "tests/whole_show/scripted_module.h"

namespace {

constexpr int kChannels = 16;

} // namespace

XmModule scriptedModule(int orders, const std::vector<Cue>& cues)
{
    XmModule module;
    module.title = "script";
    module.channels = kChannels;
    for (int order = 0; order < orders; ++order) {
        module.orders.push_back(static_cast<std::uint8_t>(order));
        module.patterns.emplace_back(kRowsPerOrder, module.channels);
    }
    for (const Cue& cue : cues) {
        XmCell& cell =
            module.patterns.at(static_cast<std::size_t>(cue.order)).at(cue.row, cue.channel);
        cell.effect = kXmEffectZxx;
        cell.parameter = static_cast<std::uint8_t>(cue.value);
    }
    return module;
}
