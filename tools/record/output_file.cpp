#include "tools/record/output_file.h"

#include "tools/record/record_error.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int kModeOfFiles = 0666; // less what the user's mask takes away

[[noreturn]] void failFor(const std::string& name)
{
    throw RecordError("cannot write " + name + ": " + std::strerror(errno));
}

} // namespace

void requireFile(const std::filesystem::path& file)
{
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(file, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw RecordError("cannot write " + file.string() + ": it is not a regular file");
    }
}

FileDescriptor openOutput(const std::filesystem::path& file)
{
    std::error_code ignored;
    if (!std::filesystem::is_character_file(file, ignored)) {
        requireFile(file);
    }
    FileDescriptor opened(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kModeOfFiles));
    if (!opened.isOpen()) {
        failFor(file.string());
    }
    if (::flock(opened.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        throw RecordError("cannot write " + file.string() + ": another recording writes it");
    }
    if (std::filesystem::is_regular_file(file, ignored) && ::ftruncate(opened.number(), 0) != 0) {
        failFor(file.string());
    }
    return opened;
}

OutputFile::OutputFile(const std::filesystem::path& file) : name_(file.string())
{
    FileDescriptor opened = openOutput(file);
    file_.reset(::fdopen(opened.number(), "w"));
    if (!file_) {
        fail();
    }
    opened.release();
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
    failFor(name_);
}
