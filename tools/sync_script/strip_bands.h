// The strip's bands of events and of sound.
#pragma once

#include "tools/sync_script/pen.h"
#include "tools/sync_script/script.h"

#include <cstdint>
#include <string>

constexpr unsigned kGroundColour = 0x0A0B0F;
constexpr unsigned kTypeColour = 0xFBF4E2;

// From cold to warm; grey for the empty scene and for numbers that no scene has.
unsigned sceneColour(int scene);

// A script laid out from left to right.
struct Chart {
    Pen& pen;
    const Script& script;
    double left;
    double right;

    [[nodiscard]] double xOf(std::int64_t sample) const;

    // The part of a band between two moments.
    [[nodiscard]] Box cut(const Box& band, std::int64_t begin, std::int64_t end) const;

    // Writes a line at the left of the box, if there is room for all of it.
    void typeWithin(const Box& box, const std::string& text, double baseline,
                    const Type& style) const;
};

// The events of a visit, in lanes from top to bottom: a tick for each, followed by how long it can
// be seen.
void drawEvents(const Chart& chart, const SceneVisit& visit, const Box& band);

// The loudness, up and down from the middle: the peaks, and in front of them the mean (RMS).
void drawLevels(const Chart& chart, const Box& band);
