// Memory for the arrays that a drawing object makes once and keeps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>

template <class Entry>
using Array = std::unique_ptr<Entry[]>; // NOLINT(modernize-avoid-c-arrays)

// Allocates as many entries as the product of `sizes`, not initialised. Null if there is no memory
// for them, if a size is negative, or if the product overflows.
template <class Entry>
Array<Entry> allocateArray(std::initializer_list<std::int64_t> sizes)
{
    constexpr auto kMaxCount =
        std::numeric_limits<std::ptrdiff_t>::max() / static_cast<std::ptrdiff_t>(sizeof(Entry));

    std::int64_t count = 1;
    for (const std::int64_t size : sizes) {
        if (size < 0 || (size > 0 && count > kMaxCount / size)) {
            return nullptr;
        }
        count *= size;
    }
    return Array<Entry>{new (std::nothrow) Entry[static_cast<std::size_t>(count)]};
}
