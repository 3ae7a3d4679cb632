// The bands of the strip that show what happens when: the events, and the sound.
#pragma once

#include "tools/sync_script/pen.h"
#include "tools/sync_script/script.h"

#include <cstdint>
#include <string>

constexpr unsigned kGroundColour = 0x0A0B0F;
constexpr unsigned kTypeColour = 0xFBF4E2;

// From cold to warm; grey for the black scene and for what is no scene.
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

    // From the left, but only where there is room for it.
    void typeWithin(const Box& box, const std::string& text, double baseline,
                    const Type& style) const;
};

// The events of a visit, in lanes from top to bottom: a tick where one comes, behind it what
// becomes of it.
void drawEvents(const Chart& chart, const SceneVisit& visit, const Box& band);

// How loud it is, up and down from the middle: the peaks, and in front of them the mean energy.
void drawLevels(const Chart& chart, const Box& band);
