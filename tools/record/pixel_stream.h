#pragma once

#include "tools/record/frames.h"
#include "tools/record/pipe_queue.h"

#include <filesystem>
#include <poll.h>
#include <string>
#include <vector>

// The pictures themselves, one after the other with nothing between them: red, green, blue, rows
// top first. They go to a file, or into a pipe with a name, at the pace of its reader. Operations
// throw RecordError when they cannot be written.
class PixelStream {
public:
    explicit PixelStream(const std::filesystem::path& file);

    void push(const Frame& frame);

    // True while no more frames should be pushed: a pipe has no reader yet, or he is slow.
    [[nodiscard]] bool isBusy() const;
    // Every picture has been written.
    [[nodiscard]] bool isDone() const { return queue_.waiting() == 0; }

    // appendTo() adds what to poll for; serve() then writes what it can.
    void appendTo(std::vector<pollfd>& waits) const;
    void serve();

private:
    void openPipe();

    std::string name_;
    PipeQueue queue_; // not open while a pipe has no reader
};
