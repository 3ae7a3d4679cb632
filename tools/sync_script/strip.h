#pragma once

#include "art/music/score/score.h"
#include "tools/sync_script/script.h"

#include <span>
#include <string>

// Draws the whole show on one strip: its scenes and sections, every cue, and how loud it is.
//
// `file` becomes a PNG or an SVG, according to its name. `stillFolder` holds screenshots, named as
// in stills.h; if one is missing, or the folder is "", its place stays empty. Throws
// std::runtime_error.
void drawStrip(const std::string& file, const Script& script,
               std::span<const ScoreSection> sections, const std::string& stillFolder);
