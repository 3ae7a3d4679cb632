#pragma once

#include "tools/record/frames.h"
#include "tools/record/output_file.h"

#include <filesystem>

// A text file with a line for each frame: its number, a hash of its picture, a hash of its sound.
// Every operation throws RecordError when the file cannot be written.
class HashList {
public:
    explicit HashList(const std::filesystem::path& file) : file_(file) {}

    void add(const Frame& frame);
    void close() { file_.close(); }

private:
    OutputFile file_;
};
