#pragma once

#include "tools/record/frames.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

// A text file with a line for each frame: its number, a hash of its picture, a hash of its sound.
// Every operation throws RecordError when the file cannot be written.
class HashList {
public:
    explicit HashList(const std::filesystem::path& file);

    void add(const Frame& frame);
    void close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    [[noreturn]] void fail() const;

    std::string name_;
    std::unique_ptr<std::FILE, Closer> file_;
};
