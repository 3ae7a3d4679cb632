#include "tests/fuzz/picture_fuzz.h"

const FuzzedLoader kFuzzedLoader = {&Bitmap::loadHsiRaw, 8, true};
