// The show as a child process under the capture library, and the packets that it sends.
#pragma once

#include "tools/capture/packets.h"
#include "tools/record/process.h"
#include "tools/record/record_options.h"
#include "tools/record/source.h"

#include <cstddef>
#include <cstdint>
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
    std::string turn = {};           // "1/4": of the pictures only those of frames 1, 5, 9...
    std::string drawn = {};          // frames to draw besides, as in `pictures`
    int drawingThreads = 0;          // of a software renderer; 0: its own choice
};

class Show : public Source {
public:
    // Throws RecordError.
    Show(const RecordOptions& options, const Wanted& wanted);

    void read(const Take& take) override;
    [[nodiscard]] const FileDescriptor& pipe() const override { return pipe_; }
    void stop() override;
    std::string fault() override;

private:
    // Reads on; true once all `count` bytes are there.
    bool fill(void* bytes, std::size_t count);

    Process process_;
    bool hasEnded_ = false;
    FileDescriptor pipe_;
    PacketHeader header_;
    std::vector<std::uint8_t> bytes_;
    std::size_t filled_ = 0; // bytes read of header_, or of bytes_ if hasHeader_
    bool hasHeader_ = false;
    bool isStopped_ = false;
};
