#pragma once

#include <cstddef>
#include <cstdint>

// The 64-bit FNV-1a hash (Fowler, Noll and Vo) of a run of bytes: a frame's fingerprint.
inline std::uint64_t fnv1a(const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (std::size_t i = 0; i < size; ++i) {
        hash = (hash ^ bytes[i]) * 0x100000001B3U;
    }
    return hash;
}
