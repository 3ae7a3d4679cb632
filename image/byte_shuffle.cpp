#include "image/byte_shuffle.h"

#if defined(__x86_64__)

#include <algorithm>
#include <tmmintrin.h>

namespace {

[[gnu::target("ssse3")]] void shuffleGroups(const ByteShuffle& shuffle, const std::uint8_t* source,
                                            std::uint8_t* destination, std::size_t groups)
{
    const auto* from = reinterpret_cast<const __m128i*>(shuffle.from.data());
    const auto* set = reinterpret_cast<const __m128i*>(shuffle.set.data());
    const __m128i places = _mm_loadu_si128(from);
    const __m128i added = _mm_loadu_si128(set);
    const std::size_t sourceStep = shuffle.sourceStep;
    const std::size_t destinationStep = shuffle.destinationStep;
    for (std::size_t i = 0; i < groups; ++i) {
        const __m128i group = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(destination),
                         _mm_or_si128(_mm_shuffle_epi8(group, places), added));
        source += sourceStep;
        destination += destinationStep;
    }
}

} // namespace

std::size_t shuffleBytes(const ByteShuffle& shuffle, const std::uint8_t* source,
                         std::size_t sourceBytes, std::uint8_t* destination,
                         std::size_t destinationBytes)
{
    // Processors have had the instruction since 2006, but the compiler may not rely on it.
    if (sourceBytes < 16 || destinationBytes < 16 || !__builtin_cpu_supports("ssse3")) {
        return 0;
    }
    const std::size_t groups = std::min((sourceBytes - 16) / shuffle.sourceStep,
                                        (destinationBytes - 16) / shuffle.destinationStep) +
                               1;
    shuffleGroups(shuffle, source, destination, groups);
    return groups;
}

#else

std::size_t shuffleBytes(const ByteShuffle& /*shuffle*/, const std::uint8_t* /*source*/,
                         std::size_t /*sourceBytes*/, std::uint8_t* /*destination*/,
                         std::size_t /*destinationBytes*/)
{
    return 0;
}

#endif
