// The show as a child process under the capture library, and the packets that it sends.
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
    // `wanted` says which pictures to send: "all", or frame numbers like "30,744". Throws
    // RecordError.
    Show(const RecordOptions& options, const std::string& wanted);

    using Take = std::function<void(const PacketHeader&, std::vector<std::uint8_t>)>;

    // Reads what the pipe holds now, and calls `take` if that completes a packet. Reads one packet
    // at most. Closes the pipe when the show has closed its end.
    void read(const Take& take);

    [[nodiscard]] const FileDescriptor& pipe() const { return pipe_; }

    // Kills it.
    void stop();

    // Waits for its end and returns its exit status, as Process::wait does.
    int wait() { return process_.wait(); }

private:
    // Reads on; true once all `count` bytes are there.
    bool fill(void* bytes, std::size_t count);

    Process process_;
    FileDescriptor pipe_;
    PacketHeader header_;
    std::vector<std::uint8_t> bytes_;
    std::size_t filled_ = 0; // bytes read of header_, or of bytes_ if hasHeader_
    bool hasHeader_ = false;
};
