#include "render/projection.h"

DisplayMetrics displayMetrics;
