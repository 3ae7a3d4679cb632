#include "tools/record/output_file.h"

#include "tools/record/record_error.h"

#include <cerrno>
#include <cstring>

OutputFile::OutputFile(const std::filesystem::path& file)
    : name_(file.string()), file_(std::fopen(file.c_str(), "w"))
{
    if (!file_) {
        fail();
    }
}

void OutputFile::write(std::span<const char> bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) {
        fail();
    }
}

void OutputFile::close()
{
    if (std::fclose(file_.release()) != 0) {
        fail();
    }
}

void OutputFile::fail() const
{
    throw RecordError("cannot write " + name_ + ": " + std::strerror(errno));
}
