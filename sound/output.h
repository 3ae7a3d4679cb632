#pragma once

// Where the mixed sound goes. From its construction until its destructor returns, an output asks a
// mixer for blocks of audio frames, on a thread of its own.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;
};
