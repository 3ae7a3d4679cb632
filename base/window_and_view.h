// The size of the show's window, the size of its view, which is the part of the window that it
// draws into, and the field of view.
#pragma once

constexpr int kWindowWidth = 640; // pixels
constexpr int kWindowHeight = 480;

// In the middle of the window; everything around it stays black.
constexpr int kViewWidth = 640;
constexpr int kViewHeight = 272;

constexpr float kFieldOfView = 60.0F; // degrees, from the view's bottom to its top
