#include "base/fatal.h"

#include <cstdarg>
#include <cstdlib>

void fatal(std::FILE* stream, int status, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stream, format, arguments);
    va_end(arguments);
    std::exit(status);
}
