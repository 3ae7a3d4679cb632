// The show as a child process under the capture library, and the packets that it sends.
#pragma once

#include "tools/capture/packets.h"
#include "tools/record/process.h"
#include "tools/record/record_options.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// What a run of the show has to send. Frames that are not wanted are not drawn, which takes a
// fraction of the time.
struct Wanted {
    std::uint64_t from = 0;          // the first frame
    std::optional<std::uint64_t> to; // the show is closed before this one; none: it ends by itself
    bool sound = false;              // of `from` and all that follow
    std::string pictures;            // "all" of them, or frame numbers like "30,744"
    std::string drawn;               // frames to draw besides, in the same way
};

class Show {
public:
    // Throws RecordError.
    Show(const RecordOptions& options, const Wanted& wanted);

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
