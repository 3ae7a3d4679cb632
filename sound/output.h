#pragma once

#include <memory>

class Mixer;

// Where the mixed sound goes. From its construction until its destructor returns, an output asks a
// mixer for blocks of audio frames, on a thread of its own.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;
};

// Begins to play what the mixer mixes, on the sound device or silently. Null if no sound device can
// be opened, or no thread begun. The mixer is borrowed.
std::unique_ptr<Output> openOutput(Mixer& mixer, bool silently);
