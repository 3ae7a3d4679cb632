// The launcher's command line.
#pragma once

#include "stage/picture_size.h"

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

// What the command line lacks, in a sentence.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct LaunchOptions {
    bool isPlain = false;
    std::optional<PictureSize> size;
    std::optional<int> display;    // the first is 1
    std::optional<double> refresh; // refreshes a second
    bool pacesByTime = false;
    bool isVerbose = false;
    bool isFromMenu = false; // errors are shown in a box
    bool onlyTriesDisplay = false;
    bool help = false;
    bool version = false;
    std::vector<std::string> forTheShow; // the other arguments, in order
};

// Takes what begins with "--"; all else is the show's. Throws UsageError.
LaunchOptions readLaunchOptions(std::span<const char* const> arguments);

extern const char* const kLaunchHelp;
