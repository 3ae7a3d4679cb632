// The C library's calls that a page answers differently: its random numbers are glibc's, and in
// virtual time the time of day is the recorder's.
#include "web/c_library/glibc_random.h"
#include "web/page_world.h"

#include <chrono>
#include <ctime>

namespace {

GlibcRandom numbers;

} // namespace

// The library's headers name their parameters as they like.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void srand(unsigned seed)
{
    numbers.seed(seed);
}

int rand()
{
    return numbers.next();
}

std::time_t time(std::time_t* now)
{
    using std::chrono::system_clock;
    const std::time_t answer = pageWorld.timeOfDay >= 0
                                   ? static_cast<std::time_t>(pageWorld.timeOfDay)
                                   : system_clock::to_time_t(system_clock::now());
    if (now != nullptr) {
        *now = answer;
    }
    return answer;
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
