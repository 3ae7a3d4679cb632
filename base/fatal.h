#pragma once

#include <cstdio>

// What every error ends in that the program cannot go on after: writes the formatted message to
// `stream` and calls exit(status). Local objects are not destroyed.
[[noreturn]] [[gnu::format(printf, 3, 4)]] void fatal(std::FILE* stream, int status,
                                                      const char* format, ...);
