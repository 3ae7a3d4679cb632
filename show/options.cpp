#include "show/options.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr int kFirstStartScene = 2;
constexpr int kLastStartScene = 9;

void readFlag(const char* argument)
{
    if (std::strcmp(argument, "-window") == 0) {
        options.fullscreen = 0;
    }
    if (std::strcmp(argument, "-nosound") == 0) {
        options.noSound = 1;
    }
}

// Ignores everything but the number of a start scene.
void readStartScene(const char* argument)
{
    const long number = std::strtol(argument, nullptr, 10);
    if (number >= kFirstStartScene && number <= kLastStartScene) {
        options.startScene = static_cast<int>(number);
    }
}

} // namespace

Options options;

void readOptions(int argumentCount, char** arguments)
{
    options = {};
    switch (argumentCount) {
    case 2:
        readFlag(arguments[1]);
        readStartScene(arguments[1]);
        break;
    case 3:
        readFlag(arguments[1]);
        readFlag(arguments[2]);
        readStartScene(arguments[2]);
        break;
    case 4:
        readFlag(arguments[1]);
        readFlag(arguments[2]);
        readStartScene(arguments[2]);
        readStartScene(arguments[3]); // The later valid number wins.
        break;
    default:
        break;
    }
}
