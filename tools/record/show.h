// The show at work under the capture library, and what it sends.
#pragma once

#include "tools/capture/packets.h"
#include "tools/record/process.h"
#include "tools/record/record_options.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class Show {
public:
    // `wanted` names the pictures to send: "all", or frames. Throws RecordError.
    Show(const RecordOptions& options, const std::string& wanted);

    using Take = std::function<void(const PacketHeader&, std::vector<std::uint8_t>)>;

    // Takes what the pipe holds now, one packet at most; at the end of what the show sends, the
    // pipe is closed.
    void read(const Take& take);

    [[nodiscard]] const FileDescriptor& pipe() const { return pipe_; }

    // Ends it where it is.
    void stop();

    // Its exit status; it has to be at its end.
    int wait() { return process_.wait(); }

private:
    // True once all bytes are there.
    bool fill(void* bytes, std::size_t count);

    Process process_;
    FileDescriptor pipe_;
    PacketHeader header_;
    std::vector<std::uint8_t> bytes_;
    std::size_t filled_ = 0; // of the header, then of the bytes
    bool hasHeader_ = false;
};
