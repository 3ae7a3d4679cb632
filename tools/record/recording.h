// One recording from start to end.
#pragma once

#include "tools/record/encoder.h"
#include "tools/record/frames.h"
#include "tools/record/hash_list.h"
#include "tools/record/progress.h"
#include "tools/record/record_options.h"
#include "tools/record/show.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

class Recording {
public:
    explicit Recording(const RecordOptions& options);

    // Returns when everything that was wished for is on the disk, or as much of it as there was
    // when `signals`, a descriptor, had something to read; false in that case. Throws RecordError;
    // what is made already stays then too.
    bool run(const FileDescriptor& signals);

private:
    void take(const PacketHeader& header, std::vector<std::uint8_t> bytes);
    void takeFrame(Frame frame);
    void serve(const FileDescriptor& signals);
    void interrupt(const FileDescriptor& signals);
    void finish(const FileDescriptor& signals);
    void checkShow();
    void report();

    const RecordOptions& options_;
    std::multimap<std::uint64_t, std::string> stills_; // names by frame, those still to come
    std::uint64_t taken_ = 0;                          // frames
    bool isInterrupted_ = false;
    std::optional<HashList> hashes_;
    std::optional<Encoder> encoder_; // none, if there is no film to make
    Progress progress_;
    FrameAssembler frames_;
    Show show_;
};
