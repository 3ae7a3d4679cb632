#include "tools/record/part_file.h"

#include "tools/record/process.h"
#include "tools/record/record_error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <utility>

namespace {

constexpr int kMaxParts = 100;
constexpr int kModeOfFiles = 0666; // less what the user's mask takes away

std::filesystem::path withoutLinks(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(file, error);
    return error ? file : real;
}

[[noreturn]] void fail(const std::filesystem::path& file)
{
    throw RecordError("cannot write " + file.string() + ": " + std::strerror(errno));
}

} // namespace

PartFile::PartFile(const std::filesystem::path& whole) : asked_(whole), whole_(withoutLinks(whole))
{
    for (int number = 1; number <= kMaxParts; ++number) {
        std::filesystem::path part = whole_;
        part.replace_extension((number == 1 ? ".part" : ".part-" + std::to_string(number)) +
                               whole_.extension().string());
        const FileDescriptor created(
            ::open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kModeOfFiles));
        if (created.isOpen()) {
            part_ = part;
            return;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    fail(whole);
}

PartFile::~PartFile()
{
    if (std::error_code ignored; !part_.empty()) {
        std::filesystem::remove(part_, ignored);
    }
}

std::filesystem::path PartFile::replace()
{
    const std::filesystem::path part = std::exchange(part_, {});
    if (std::rename(part.c_str(), whole_.c_str()) != 0) {
        throw RecordError("cannot write " + asked_.string() + ": " + std::strerror(errno) +
                          "; what was recorded is in " + part.string());
    }
    return asked_;
}

std::filesystem::path PartFile::keep()
{
    // A file system that cannot rename in this way keeps the part's name too.
    const bool isRenamed =
        ::renameat2(AT_FDCWD, part_.c_str(), AT_FDCWD, whole_.c_str(), RENAME_NOREPLACE) == 0;
    const std::filesystem::path part = std::exchange(part_, {});
    return isRenamed ? asked_ : part;
}
