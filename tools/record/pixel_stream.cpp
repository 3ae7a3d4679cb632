#include "tools/record/pixel_stream.h"

#include "tools/record/output_file.h"
#include "tools/record/record_error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>

PixelStream::PixelStream(const std::filesystem::path& file) : name_(file.string())
{
    std::error_code ignored;
    if (!std::filesystem::is_fifo(file, ignored)) {
        queue_.open(openOutput(file));
        return;
    }
    openPipe();
    if (!queue_.pipe().isOpen()) {
        std::fprintf(stderr, "kso: nobody reads %s yet; the recording waits\n", name_.c_str());
    }
}

// Opening a pipe would wait for a reader, and signals would wait with it.
void PixelStream::openPipe()
{
    FileDescriptor pipe(::open(name_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (pipe.isOpen()) {
        queue_.open(std::move(pipe));
    } else if (errno != ENXIO) {
        throw RecordError("cannot write " + name_ + ": " + std::strerror(errno));
    }
}

void PixelStream::push(const Frame& frame)
{
    queue_.push(frame.picture);
}

bool PixelStream::isBusy() const
{
    return !queue_.pipe().isOpen() || queue_.waiting() > 0;
}

void PixelStream::appendTo(std::vector<pollfd>& waits) const
{
    if (queue_.waiting() > 0) {
        waits.push_back({queue_.pipe().number(), POLLOUT, 0});
    }
}

void PixelStream::serve()
{
    if (!queue_.pipe().isOpen()) {
        openPipe();
    } else if (!queue_.write()) {
        throw RecordError("cannot write " + name_ + ": " + std::strerror(errno));
    }
}
