// What several scenes draw with. Empty until buildWorld fills them; they live until the process
// ends.
#pragma once

#include "image/bitmap.h"

// The canvas of the opening scene's line figure: 512 x 256 pixels, 32 bits, with its texture.
extern Bitmap lineCanvas;
