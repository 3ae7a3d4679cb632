#pragma once

#include "art/music/score/score.h"

#include <span>
#include <string>
#include <vector>

// The sections of the show's own score, if `modulePath` is the show's own module; otherwise none.
// Paths start from the folder where the show is started. Throws ScoreError.
std::vector<ScoreSection> sectionsOf(const std::string& modulePath);

// The name of the section that an order position belongs to; "" if there is none.
std::string sectionAt(std::span<const ScoreSection> sections, int order);
