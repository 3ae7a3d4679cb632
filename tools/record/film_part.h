// A film that several recordings share, on one machine or on many: each records a part of it, and
// one of them joins these. A part is a film by itself, whose pictures and sound are kept to the
// bit.
#pragma once

#include "stage/picture_size.h"
#include "virtual/timing.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct PartNumber {
    int number = 1; // from 1 on
    int count = 1;

    bool operator==(const PartNumber&) const = default;
};

struct FrameRange {
    std::uint64_t first = 0;
    std::optional<std::uint64_t> end; // the frame after the last; none: the show's end
};

// What a part says of itself, in its file.
struct PartMark {
    PartNumber part;
    FrameRange frames;
    FrameRate rate;
    PictureSize size;
    std::string arguments; // of the show

    [[nodiscard]] std::string text() const;
};

struct FilmPart {
    std::filesystem::path file;
    PartMark mark;
};

constexpr const char* kPartTag = "KSO_PART"; // of the file, with the mark's text

// FILM.K-of-N.mkv, beside the film.
std::filesystem::path partFile(const std::filesystem::path& film, PartNumber part);

// This part's share of the frames from `first` on and before `end`.
FrameRange shareOf(PartNumber part, std::uint64_t first, std::uint64_t end);

// All parts of a film, in order. Throws RecordError if they are not all there, or are not of one
// film.
std::vector<FilmPart> findParts(const std::filesystem::path& film);
