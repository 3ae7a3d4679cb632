#pragma once

// Opens a double-buffered OpenGL display of this size, full screen unless the options say
// otherwise, and hides the mouse cursor. Ends the process with a message on standard error and
// status 0 if that fails: also if there is no display, so that SDL would draw unseen, and if a
// library calls exit() while the mode is set.
void initVideo(int width, int height);

// Sets the OpenGL state that every scene starts from: black clear colour, a viewport of the view's
// size centred in the window, a perspective projection with the eye at the origin looking down the
// negative z axis, and alpha blending.
void initGL(int windowWidth, int windowHeight, int viewWidth, int viewHeight);
