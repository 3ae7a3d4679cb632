// The options of a recording, from the command line.
#pragma once

#include "stage/picture_size.h"
#include "tools/record/film_format.h"
#include "tools/record/film_part.h"
#include "virtual/timing.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

// When a still is taken.
struct StillTime {
    std::string time; // as it was written; names the file
    std::uint64_t microseconds = 0;

    [[nodiscard]] std::string fileName() const { return time + ".png"; }
};

// Times are in microseconds since the show's first frame.
struct RecordOptions {
    std::filesystem::path film; // empty: none
    FrameRate rate;
    PictureSize size;
    std::uint64_t from = 0;
    std::optional<std::uint64_t> to; // none: the show's end
    FilmQuality quality;
    int jobs = 1;                     // shows that draw side by side
    std::optional<PartNumber> part;   // to record that part alone
    bool joinsParts = false;          // to join what was recorded so
    std::optional<FrameRange> frames; // instead of `from` and `to`; follows from `part` or `parts`
    std::vector<FilmPart> parts;      // to join; the show does not play then
    std::filesystem::path stillsFolder;
    std::vector<StillTime> stills;
    std::filesystem::path hashes; // empty: none
    std::filesystem::path pixels; // empty: none
    std::filesystem::path show;   // the folder that the show is started in, with data/ in it
    std::vector<std::string> programArguments;
    bool help = false;

    [[nodiscard]] bool onlyStills() const
    {
        return film.empty() && hashes.empty() && pixels.empty();
    }
    [[nodiscard]] std::uint64_t firstFrame() const
    {
        return frames ? frames->first : rate.firstFrameFrom(from);
    }
    // The frame before which the recording ends; none: the show's end.
    [[nodiscard]] std::optional<std::uint64_t> endFrame() const;
    [[nodiscard]] std::uint64_t frameOf(const StillTime& still) const
    {
        return rate.frameAt(still.microseconds);
    }
};

// Throws UsageError. `arguments` are those after the command's name.
RecordOptions readRecordOptions(std::span<const char* const> arguments);

extern const char* const kRecordHelp;
