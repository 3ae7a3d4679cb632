// Feeds texts to the reader of scores, and what it has read to what makes a module of it.
#include "art/music/score/arrange.h"
#include "art/music/score/score_reader.h"
#include "sound/xm_patterns.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds) {
        __builtin_trap();
    }
}

std::vector<ZxxCell> cellsOf(const XmModule& module)
{
    std::vector<ZxxCell> cells;
    for (std::size_t p = 0; p < module.patterns.size(); ++p) {
        const XmPattern& pattern = module.patterns[p];
        for (int row = 0; row < pattern.rows(); ++row) {
            for (int channel = 0; channel < pattern.channels(); ++channel) {
                const XmCell& cell = pattern.at(row, channel);
                if (cell.effect == kXmEffectZxx) {
                    cells.push_back({static_cast<std::uint16_t>(p), static_cast<std::uint16_t>(row),
                                     cell.parameter});
                }
            }
        }
    }
    return cells;
}

// A score is refused with a message, or it has a place for each of its orders, and the file made of
// it has the effects that the show waits for.
void read(const std::string& text)
{
    const Score score = readScoreText(text, "no/such/song.trk");
    const XmModule module = arrange(score);
    require(module.orders.size() == score.orders.size());
    for (std::size_t i = 0; i < module.orders.size(); ++i) {
        require(module.patterns.at(module.orders[i]).rows() ==
                score.patterns.at(static_cast<std::size_t>(score.orders[i])).rows);
    }
    std::vector<std::uint8_t> file = writeXm(module);
    std::vector<ZxxCell> cells;
    require(takeZxxCells(file, cells) == SoundError::none && cells == cellsOf(module));
    checkPlayers(score);
}

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the library that makes the inputs gives the name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        read(std::string(data, data + size));
    } catch (const ScoreError&) {
        return 0;
    } catch (const std::invalid_argument&) { // more than a module holds
        return 0;
    }
    return 0;
}
