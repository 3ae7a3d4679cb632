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

// Opens a double-buffered OpenGL display of this size, full screen unless the options say
// otherwise, and hides the mouse cursor. Ends the process with a message on standard error when
// there is none.
void initVideo(int width, int height);

// Sets the OpenGL state that every scene starts from: black clear colour, a viewport of the view's
// size centred in the window, a perspective projection with the eye at the origin looking down the
// negative z axis, and alpha blending.
void initGL(int windowWidth, int windowHeight, int viewWidth, int viewHeight);
