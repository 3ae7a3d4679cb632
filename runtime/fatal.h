// The one way to die: a message, then the end of the process with nothing released.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

// Writes the formatted message to `stream` and ends the process with `status` through exit().
[[noreturn]] [[gnu::format(printf, 3, 4)]] inline void fatal(std::FILE* stream, int status,
                                                             const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stream, format, arguments);
    va_end(arguments);
    std::exit(status);
}
