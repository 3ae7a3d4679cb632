// Reads a score's text; art/README.md shows how one is written.
#pragma once

#include "art/music/score/score.h"

#include <filesystem>
#include <stdexcept>
#include <string>

// Says "file:line: what is wrong".
class ScoreError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads the file and what it includes, by paths relative to its own folder. Throws ScoreError.
Score readScore(const std::filesystem::path& path);

// The same from memory; `name` stands for the file in messages and includes start from its folder.
Score readScoreText(const std::string& text, const std::filesystem::path& name);
