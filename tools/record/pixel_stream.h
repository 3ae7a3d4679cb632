#pragma once

#include "tools/record/frames.h"
#include "tools/record/output_file.h"

#include <filesystem>

// The pictures themselves, one after the other with nothing between them: red, green, blue, rows
// top first. Every operation throws RecordError when the file cannot be written.
class PixelStream {
public:
    explicit PixelStream(const std::filesystem::path& file) : file_(file) {}

    void add(const Frame& frame);
    void close() { file_.close(); }

private:
    OutputFile file_;
};
