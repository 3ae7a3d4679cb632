#pragma once

#include "tools/record/process.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

// Throws RecordError if there is something of this name that is not a regular file: a folder, or a
// pipe, for which a reader may never come.
void requireFile(const std::filesystem::path& file);

// Opens a file that this recording alone writes, empty, or a device like /dev/null. Throws
// RecordError.
FileDescriptor openOutput(const std::filesystem::path& file);

// A file that is written from its beginning on. Every operation throws RecordError when it cannot
// be written.
class OutputFile {
public:
    explicit OutputFile(const std::filesystem::path& file);

    void write(std::span<const char> bytes);
    void close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    [[noreturn]] void fail() const;

    std::string name_;
    std::unique_ptr<std::FILE, Closer> file_;
};
