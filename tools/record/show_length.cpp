#include "tools/record/show_length.h"

#include "cues/catalogue.h"
#include "show/options.h"
#include "sound/module.h"
#include "tools/record/process.h"

#include <memory>
#include <string>
#include <vector>

namespace {

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

// Counted from 1, unlike the module's scene numbers; 0 for the beginning.
int startSceneOf(const RecordOptions& recordOptions)
{
    std::vector<std::string> words = recordOptions.programArguments;
    words.insert(words.begin(), "kso");
    readOptions(static_cast<int>(words.size()), pointersTo(words).data());
    return options.startScene;
}

} // namespace

std::optional<double> expectedSeconds(const RecordOptions& recordOptions)
{
    std::unique_ptr<FMUSIC_MODULE> module;
    if (loadModule((recordOptions.show / cues::kModulePath).c_str(), module) != SoundError::none) {
        return std::nullopt;
    }
    const std::optional<double> end = momentOf(*module, cues::kEndOfShow);
    const int startScene = startSceneOf(recordOptions);
    double begin = 0.0;
    if (startScene > 0 && startScene < cues::kEndOfShow) {
        begin = momentOf(*module, startScene - 1).value_or(begin);
    }
    return end && *end > begin ? std::optional(*end - begin) : std::nullopt;
}
