#pragma once

#include <cstdint>

// The demo time: seconds since start(), read from SDL's millisecond counter. Main thread only.
//
// The constructor runs at compile time, so `demoClock` is complete before any other global object.
class DemoClock {
public:
    // Makes this moment time 0 and forgets the offset.
    void start();

    // Seconds since start() plus the offset, in float precision. Correct even when SDL's counter
    // wraps around.
    float seconds();

    // Adds `seconds` to every later reading.
    void setOffset(float seconds) { offset_ = seconds; }

private:
    std::uint32_t startTicks_ = 0; // milliseconds
    std::uint32_t lastTicks_ = 0;  // milliseconds, of the latest reading
    float offset_ = 0.0F;          // seconds
};

extern DemoClock demoClock;
