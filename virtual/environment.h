// Settings of a library that a program is started with: it has no command line of its own.
#pragma once

#include <cstdint>
#include <cstdlib>

// What the environment says, or else `otherwise`; an empty text says nothing.
inline const char* environmentText(const char* name, const char* otherwise = "")
{
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

inline std::uint64_t environmentNumber(const char* name, std::uint64_t otherwise)
{
    const char* const value = environmentText(name);
    return *value != '\0' ? std::strtoull(value, nullptr, 10) : otherwise;
}
