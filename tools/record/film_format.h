// The format of a film, which follows from its file name, and ffmpeg's options for it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct FilmFormat {
    bool pictures = true;
    bool sound = true;
    bool isManyFiles = false;                     // numbered pictures, or a film in pieces
    std::vector<std::string> pictureOptions = {}; // ffmpeg's, for the pictures
    std::vector<std::string> options = {};        // ffmpeg's, for the sound and the file
};

struct FilmQuality {
    std::optional<int> crf = {};
    std::string encoder = {}; // of the pictures, like "x264"; empty: the format's usual one
};

// Throws UsageError if the format has not the quality or the encoder that is asked for, or if the
// name is that of a single picture.
FilmFormat filmFormat(const std::filesystem::path& film, const FilmQuality& quality);

// Pictures and sound to the bit, for a Matroska file that is only read again.
FilmFormat losslessFormat();
