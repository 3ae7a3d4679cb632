#include "tools/record/hash_list.h"

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <span>

// The whole library is in the header, so nothing has to be linked.
#define XXH_INLINE_ALL
#include <xxhash.h>

void HashList::add(const Frame& frame)
{
    const std::uint64_t picture = XXH3_64bits(frame.picture.data(), frame.picture.size());
    const std::uint64_t sound = XXH3_64bits(frame.sound.data(), frame.sound.size_bytes());
    std::array<char, 64> line{}; // the longest is one of 20 + 16 + 16 digits
    const int length =
        std::snprintf(line.data(), line.size(), "%" PRIu64 " %016" PRIx64 " %016" PRIx64 "\n",
                      frame.number, picture, sound);
    file_.write(std::span(line).first(static_cast<std::size_t>(length)));
}
