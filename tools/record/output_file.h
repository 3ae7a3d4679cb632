#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

// A file, or a pipe with a name, that is written from its beginning on. Every operation throws
// RecordError when it cannot be written.
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
