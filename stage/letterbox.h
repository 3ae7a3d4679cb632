// Where a picture stands on a display of another shape.
#pragma once

#include "stage/picture_size.h"

#include <algorithm>
#include <cmath>

// In pixels, from the lower left corner.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Area&) const = default;
};

// The largest area of the picture's shape in the middle of a display.
inline Area letterbox(PictureSize picture, PictureSize display)
{
    const double scale = std::min(static_cast<double>(display.width) / picture.width,
                                  static_cast<double>(display.height) / picture.height);
    const int width = static_cast<int>(std::lround(picture.width * scale));
    const int height = static_cast<int>(std::lround(picture.height * scale));
    return {(display.width - width) / 2, (display.height - height) / 2, width, height};
}

constexpr double kComfortable = 0.9; // of the desktop, so that some of it is seen beside a window

// The largest multiple of the show's window that leaves some of the desktop to be seen, at least
// the window itself. `desktop` is what panels leave of it.
inline PictureSize comfortableWindow(PictureSize desktop)
{
    const int times =
        std::max(1, std::min(static_cast<int>(kComfortable * desktop.width / kWindowWidth),
                             static_cast<int>(kComfortable * desktop.height / kWindowHeight)));
    return {times * kWindowWidth, times * kWindowHeight};
}

// A window of the picture's size, or a smaller one of its shape if it would not fit.
inline PictureSize windowFor(PictureSize picture, PictureSize desktop)
{
    if (picture.width <= desktop.width && picture.height <= desktop.height) {
        return picture;
    }
    const Area area = letterbox(picture, {static_cast<int>(kComfortable * desktop.width),
                                          static_cast<int>(kComfortable * desktop.height)});
    return {std::max(area.width, 1), std::max(area.height, 1)};
}
