// OpenGL that draws nothing and tells what it would draw, line by line: the stand-in for the
// program, and the model's paper.
//
// Until the first glClear every call becomes a line. From then on what only sets OpenGL's state is
// told with the primitives that it shapes, so that it does not matter which calls set it.
#pragma once

#include <cstdint>
#include <string>

// Where the lines go; whoever uses this log defines it.
void tell(const std::string& line);

// Forgets all state.
void resetGl();

[[gnu::format(printf, 1, 2)]] std::string text(const char* format, ...);

constexpr unsigned kSeed = 1234567890; // the time at which the show starts

// The next number of the C library's generator as the stand-in has it: the upper bits of a linear
// congruential generator (Knuth's multiplier).
inline int nextRandom(std::uint64_t& state)
{
    state = state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<int>(state >> 33U);
}
