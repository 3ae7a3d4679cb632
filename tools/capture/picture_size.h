#pragma once

// In pixels.
struct PictureSize {
    int width = 640;
    int height = 480;
};
