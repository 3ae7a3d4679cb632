#include "tools/record/hash_list.h"

#include "tools/record/record_error.h"

#include <cerrno>
#include <cinttypes>
#include <cstring>

// The whole library is in the header, so nothing has to be linked.
#define XXH_INLINE_ALL
#include <xxhash.h>

HashList::HashList(const std::filesystem::path& file)
    : name_(file.string()), file_(std::fopen(file.c_str(), "w"))
{
    if (!file_) {
        fail();
    }
}

void HashList::add(const Frame& frame)
{
    const std::uint64_t picture = XXH3_64bits(frame.picture.data(), frame.picture.size());
    const std::uint64_t sound = XXH3_64bits(frame.sound.data(), frame.sound.size_bytes());
    if (std::fprintf(file_.get(), "%" PRIu64 " %016" PRIx64 " %016" PRIx64 "\n", frame.number,
                     picture, sound) < 0) {
        fail();
    }
}

void HashList::close()
{
    if (std::fclose(file_.release()) != 0) {
        fail();
    }
}

void HashList::fail() const
{
    throw RecordError("cannot write " + name_ + ": " + std::strerror(errno));
}
