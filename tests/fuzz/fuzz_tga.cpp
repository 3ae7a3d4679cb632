#include "tests/fuzz/picture_fuzz.h"

const FuzzedLoader kFuzzedLoader = {&Bitmap::load, 12, false};
