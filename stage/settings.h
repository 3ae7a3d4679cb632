// What the launcher tells the stage, through environment variables; "" or none leaves it to the
// stage.
#pragma once

namespace setting {

constexpr const char* kSize = "KSO_STAGE_SIZE";       // WIDTHxHEIGHT of the picture
constexpr const char* kIcon = "KSO_STAGE_ICON";       // path of the window's, a BMP file
constexpr const char* kDisplay = "KSO_STAGE_DISPLAY"; // a number, the first is 1
constexpr const char* kRefresh = "KSO_STAGE_REFRESH"; // the display's refreshes a second
constexpr const char* kPace = "KSO_STAGE_PACE";       // "time": by the clock, at any display
constexpr const char* kVerbose = "KSO_STAGE_VERBOSE"; // "1": reports on standard error

} // namespace setting
