#include "tools/record/sharing.h"

#include "tools/record/record_error.h"
#include "tools/record/show_length.h"

namespace {

void takePart(RecordOptions& options)
{
    if (!filmFormat(options.film, options.quality).pictures) {
        throw UsageError("--part is for films with pictures");
    }
    const bool isOpen = !options.endFrame();
    const std::optional<std::uint64_t> end = expectedEnd(options);
    const std::uint64_t first = options.firstFrame();
    const PartNumber part = *options.part;
    if (!end) {
        throw UsageError("--part needs --to, since the music does not tell where the show ends");
    }
    if (*end < first + static_cast<std::uint64_t>(part.count)) {
        throw UsageError("there are fewer frames than parts");
    }
    options.frames = shareOf(part, first, *end);
    if (isOpen && part.number == part.count) {
        options.frames->end.reset();
    }
    options.film = partFile(options.film, part);
}

void takeParts(RecordOptions& options)
{
    options.parts = findParts(options.film);
    const PartMark& begin = options.parts.front().mark;
    options.rate = begin.rate;
    options.size = begin.size;
    options.frames = {begin.frames.first, options.parts.back().mark.frames.end};
}

} // namespace

void settleSharing(RecordOptions& options)
{
    if (options.part) {
        takePart(options);
    }
    if (options.joinsParts) {
        takeParts(options);
    }
}
