// What a fuzzed program does instead of dying: it is found before the show's own header of this
// name, and its fatal() throws, so that everything is released on the way back to the next input.
#pragma once

#include <cstdio>

struct FatalError {};

[[noreturn]] [[gnu::format(printf, 3, 4)]] inline void
fatal(std::FILE* /*stream*/, int /*status*/, const char* /*format*/, ...) // NOLINT(*-vararg)
{
    throw FatalError{};
}
