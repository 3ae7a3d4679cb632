#pragma once

#include <stdexcept>

// An error that ends the recording; the text says why in one line.
class RecordError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The command line is wrong.
class UsageError : public RecordError {
    using RecordError::RecordError;
};
