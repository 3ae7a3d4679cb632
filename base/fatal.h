#pragma once

#include <cstdio>

// The one way to die: writes the formatted message to `stream` and ends the process with `status`
// through exit(), with nothing released.
[[noreturn]] [[gnu::format(printf, 3, 4)]] void fatal(std::FILE* stream, int status,
                                                      const char* format, ...);
