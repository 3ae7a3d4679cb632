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
    // wraps around; after 2^32 milliseconds, nearly 50 days, it begins at 0 again.
    //
    // The steps of a float grow with the time: a millisecond is told from the next for 4.5 hours.
    //
    //      after        a step       of a frame at 60 Hz
    //      10 minutes   0.06 ms      0.4 %
    //      1 hour       0.24 ms      1.5 %
    //      6 hours      2 ms         12 %
    //      24 hours     7.8 ms       47 %
    //
    // After a day, frames are two or three steps apart, 15.6 or 23.4 ms instead of 16.7: what moves
    // with the time judders, and what trembles does not show it.
    float seconds();

    // Adds `seconds` to every later reading.
    void setOffset(float seconds) { offset_ = seconds; }

private:
    std::uint32_t startTicks_ = 0; // milliseconds
    std::uint32_t lastTicks_ = 0;  // milliseconds, of the latest reading
    float offset_ = 0.0F;          // seconds
};

extern DemoClock demoClock;
