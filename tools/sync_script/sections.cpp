#include "tools/sync_script/sections.h"

#include "art/music/score/score_reader.h"
#include "cues/scenes_and_events.h"

#include <filesystem>
#include <system_error>

std::vector<ScoreSection> sectionsOf(const std::string& modulePath)
{
    std::error_code missing;
    if (!std::filesystem::equivalent(modulePath, cues::kModulePath, missing)) {
        return {};
    }
    return readScore("art/music/olvu.trk").sections;
}

std::string sectionAt(std::span<const ScoreSection> sections, int order)
{
    std::string name;
    for (const ScoreSection& section : sections) {
        if (static_cast<int>(section.firstOrder) <= order) {
            name = section.name;
        }
    }
    return name;
}
