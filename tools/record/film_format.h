// What ffmpeg is told to make, by the film's file name.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct FilmFormat {
    bool pictures = true;
    bool sound = true;
    bool isManyFiles = false;           // a row of pictures, or pieces of a film
    std::vector<std::string> arguments; // of ffmpeg, for the file
};

// Throws UsageError when `crf` is given and the format has no such thing, or when the name is that
// of a single picture.
FilmFormat filmFormat(const std::filesystem::path& film, std::optional<int> crf);
