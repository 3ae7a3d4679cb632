// The show's view: the window that it opens, the letterbox in the window that it draws into, and
// how wide it looks.
#pragma once

constexpr int kWindowWidth = 640; // pixels
constexpr int kWindowHeight = 480;

// The viewport, in the middle of the window; everything around it stays black.
constexpr int kViewWidth = 640;
constexpr int kViewHeight = 272;

constexpr float kFieldOfView = 60.0F; // degrees, from the viewport's bottom to its top
