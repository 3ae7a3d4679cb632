#pragma once

// Where the mixed sound goes. An output asks a mixer for blocks of samples, on a thread of its own,
// from its making until its destructor returns.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;
};
