#include "tools/record/show_length.h"

#include "sound/module.h"

#include <cstdlib>
#include <memory>

namespace {

constexpr int kEndOfShow = 8;
constexpr long kFirstStartScene = 2; // counted from 1, unlike the module's scene numbers

// Seconds to the first Zxx effect with this parameter, in the order of playing.
std::optional<double> momentOf(FMUSIC_MODULE& module, int parameter)
{
    for (int order = 0; order < module.player.get_num_orders(); ++order) {
        const int pattern = module.player.get_order_pattern(order);
        for (const ZxxCell& cell : module.zxxCells) {
            if (cell.pattern == pattern && cell.parameter == parameter) {
                return module.player.set_position_order_row(order, cell.row);
            }
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<double> expectedSeconds(const RecordOptions& options)
{
    std::unique_ptr<FMUSIC_MODULE> module;
    if (loadModule((options.show / "data/olvu.xm").c_str(), module) != SoundError::none) {
        return std::nullopt;
    }
    const std::optional<double> end = momentOf(*module, kEndOfShow);
    double begin = 0.0;
    for (const std::string& argument : options.programArguments) {
        const long scene = std::strtol(argument.c_str(), nullptr, 10);
        if (scene >= kFirstStartScene && scene < kEndOfShow) {
            begin = momentOf(*module, static_cast<int>(scene) - 1).value_or(begin);
        }
    }
    return end && *end > begin ? std::optional(*end - begin) : std::nullopt;
}
