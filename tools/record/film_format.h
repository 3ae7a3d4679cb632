// The format of a film, which follows from its file name, and ffmpeg's options for it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct FilmFormat {
    bool pictures = true;
    bool sound = true;
    bool isManyFiles = false;           // numbered pictures, or a film in pieces
    std::vector<std::string> arguments; // ffmpeg's options for the file
};

// Throws UsageError if `crf` is given and the format has no such option, or if the name is that of
// a single picture.
FilmFormat filmFormat(const std::filesystem::path& film, std::optional<int> crf);
