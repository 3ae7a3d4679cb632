#pragma once

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string>

// What std::printf would print, up to 255 characters.
[[gnu::format(printf, 1, 2)]] inline std::string text(const char* format, ...)
{
    std::array<char, 256> buffer{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return buffer.data();
}
