// Stand-ins for what the C++ library of emscripten 3.1.6 lacks, as far as the show uses it.
// Included before every source of a page; a newer emscripten makes this file superfluous.
#pragma once

#include <algorithm>
#include <bit>
#include <functional>

namespace std { // NOLINT(bugprone-std-namespace-modification,cert-dcl58-cpp)

#ifndef __cpp_lib_bit_cast
template <class To, class From>
constexpr To bit_cast(const From& from) noexcept
{
    return __builtin_bit_cast(To, from);
}
#endif

#ifndef __cpp_lib_ranges
namespace ranges {

template <class Range, class Value>
constexpr void fill(Range&& range, const Value& value)
{
    std::fill(range.begin(), range.end(), value);
}

template <class Range, class Predicate>
constexpr bool any_of(Range&& range, Predicate predicate)
{
    return std::any_of(range.begin(), range.end(), predicate);
}

template <class Range, class Predicate>
constexpr auto partition_point(Range&& range, Predicate predicate)
{
    return std::partition_point(range.begin(), range.end(), predicate);
}

} // namespace ranges
#endif

} // namespace std
