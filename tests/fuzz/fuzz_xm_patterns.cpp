// Feeds modules to the walk that takes their Zxx effects.
#include "sound/xm_patterns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view kMagic = "Extended Module: ";
constexpr std::size_t kVersionAt = 58;

void require(bool holds)
{
    if (!holds) {
        __builtin_trap();
    }
}

// Most inputs begin like a module of a known version: what would be refused at once shows nothing.
void mend(Bytes& file)
{
    if (file.size() > kVersionAt + 1 && file[0] != 0) {
        std::ranges::copy(kMagic, file.begin());
        file[kVersionAt] = static_cast<std::uint8_t>(2 + file[kVersionAt] % 3);
        file[kVersionAt + 1] = 1;
    }
}

// The effects come in the order of their rows, and nothing but them is gone.
void check(const Bytes& before, const Bytes& after, const std::vector<ZxxCell>& cells)
{
    require(std::ranges::is_sorted(cells, [](const ZxxCell& a, const ZxxCell& b) {
        return a.pattern != b.pattern ? a.pattern < b.pattern : a.row < b.row;
    }));
    std::size_t effects = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        require(after[i] == before[i] || after[i] == 0);
        effects += after[i] != before[i] && before[i] == 0x23 ? 1 : 0;
    }
    require(effects >= cells.size()); // or more, with a parameter of the same number
}

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the library that makes the inputs gives the name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static std::vector<ZxxCell> cells;
    Bytes file(data, data + size);
    mend(file);
    const Bytes before = file;
    if (takeZxxCells(file, cells) == SoundError::none && !cells.empty()) {
        check(before, file, cells);
        const Bytes once = file;
        require(takeZxxCells(file, cells) == SoundError::none && cells.empty() && file == once);
    }
    return 0;
}
