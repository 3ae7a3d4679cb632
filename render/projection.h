#pragma once

// The viewport that every scene draws into and the projection that it is seen through. Written once
// by initGL; the drawing objects size themselves from it.
struct DisplayMetrics {
    int viewportX = 0;        // left edge, window pixels
    int viewportY = 0;        // bottom edge, window pixels counted from the bottom
    int viewportWidth = 0;    // pixels
    int viewportHeight = 0;   // pixels
    float aspect = 0.0F;      // width / height
    float fieldOfView = 0.0F; // vertical, degrees
};

extern DisplayMetrics displayMetrics;
