// Where the rows of a module begin, found by playing it from its beginning without its sound: of
// data/olvu.xm, four minutes long, in a tenth of a second.
//
// Rows are counted as the show's mixer counts them: a row is new when the order or the row number
// changes.
#pragma once

#include "sound/xm_patterns.h"
#include "virtual/timing.h"

#include <array>
#include <cstdint>
#include <istream>
#include <libopenmpt/libopenmpt.hpp>
#include <ostream>
#include <vector>

struct RowStart {
    std::int64_t sample = 0; // of kSamplesPerSecond, counted from the module's first
    int order = 0;
    int row = 0;
};

// A Zxx effect within a row.
struct RowEffect {
    int channel = 0; // from 0
    int value = 0;
};

class RowWalk {
public:
    // A walk ends after this many samples, an hour, in any case.
    static constexpr auto kLongest = static_cast<std::int64_t>(3600 * kSamplesPerSecond);

    // Reads an XM file. Throws openmpt::exception or std::runtime_error if it cannot be played.
    explicit RowWalk(std::istream& file);

    // Goes on to the next row, at first to the first one. False at the module's end, or where it
    // would begin to repeat itself.
    bool next();

    // The row where the walk is, and its effects in channel order.
    [[nodiscard]] const RowStart& row() const { return row_; }
    [[nodiscard]] std::vector<RowEffect> effects() const;

    // How far the walk has played, a few samples past the row's beginning: at the end, the module's
    // length.
    [[nodiscard]] std::int64_t samples() const { return ahead_.samples; }

private:
    using Bytes = std::vector<std::uint8_t>;

    // A player whose sound is dropped.
    struct Player {
        explicit Player(const Bytes& file);

        std::int64_t play(std::int64_t count); // returns how many there were, 4096 at most
        [[nodiscard]] bool isAt(const RowStart& row) const;

        std::ostream noLog{nullptr};
        openmpt::module module;
        std::array<float, 4096> unheard{};
        std::int64_t samples = 0; // played
    };

    explicit RowWalk(Bytes file);
    [[nodiscard]] std::int64_t findStart();

    // The player tells its position as of the end of what it rendered last. So one goes ahead in
    // pieces to find that there is a new row, and one follows, the last piece sample by sample.
    Player ahead_;
    Player behind_;
    std::vector<ZxxCell> cells_;
    RowStart row_{0, -1, 0};
};
