#include "web/c_library/glibc_random.h"

#include <cstdlib>
#include <gtest/gtest.h>

// Against the C library of this machine, which is the one that the show was composed with.
TEST(GlibcRandom, GivesTheNumbersOfGlibc)
{
    for (const unsigned seed : {0U, 1U, 42U, 1'000'000'000U, 2'147'483'647U, 4'294'967'295U}) {
        GlibcRandom random;
        random.seed(seed);
        std::srand(seed);
        for (int i = 0; i < 1000; ++i) {
            ASSERT_EQ(random.next(), std::rand()) << "seed " << seed << ", number " << i;
        }
    }
}
