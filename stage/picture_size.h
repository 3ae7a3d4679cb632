#pragma once

#include "base/window_and_view.h"

// In pixels; the show's own window unless another size is asked for.
struct PictureSize {
    int width = kWindowWidth;
    int height = kWindowHeight;

    bool operator==(const PictureSize&) const = default;
};
