#pragma once

#include "tools/record/process.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

// Bytes that wait to be written into a pipe.
class PipeQueue {
public:
    void open(FileDescriptor pipe);
    void close(); // drops what waits

    void push(std::vector<std::uint8_t> bytes);

    // Writes as much as the pipe takes without blocking. False, with errno, if that fails: EPIPE
    // when its other end has been closed.
    bool write();

    [[nodiscard]] const FileDescriptor& pipe() const { return pipe_; }
    [[nodiscard]] std::size_t waiting() const { return waiting_; } // bytes
    [[nodiscard]] bool isUnread() const; // there are bytes in the pipe itself

private:
    FileDescriptor pipe_;
    std::deque<std::vector<std::uint8_t>> chunks_;
    std::size_t written_ = 0; // of the first chunk
    std::size_t waiting_ = 0;
};
