// An ffmpeg process that makes a film, at its own pace, of pictures and sound that it gets through
// pipes.
//
// It writes into a part file (record/part_file.h), which gets the film's name when it is complete;
// an older film of this name stays until then. An unfinished film is deleted. Numbered pictures and
// films in pieces are written in place.
#pragma once

#include "tools/record/film_format.h"
#include "tools/record/frames.h"
#include "tools/record/part_file.h"
#include "tools/record/pipe_queue.h"
#include "tools/record/process.h"
#include "tools/record/record_options.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <poll.h>
#include <string>
#include <vector>

// The format of the film, or of the part of it that is recorded. Throws UsageError.
FilmFormat formatOf(const RecordOptions& options);

class Encoder {
public:
    // Throws RecordError if ffmpeg cannot be started, UsageError if the film's name does not allow
    // another option.
    explicit Encoder(const RecordOptions& options);
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    ~Encoder();

    void push(Frame frame);

    // Says that no more frames come: ffmpeg completes the film once it has read what waits.
    void finish();

    // True while no more frames should be pushed, since enough of them wait. No descriptor tells
    // poll() when that ends, so ask again after a few milliseconds.
    [[nodiscard]] bool isBusy() const;
    // True when ffmpeg has ended, whether the film is complete or not.
    [[nodiscard]] bool isDone() const { return !messages_.isOpen(); }

    // appendTo() adds what to poll for; serve() then reads and writes what it can. It throws
    // RecordError if ffmpeg does not read the sound.
    void appendTo(std::vector<pollfd>& waits) const;
    void serve();

    // Only when isDone(): gives the film its name and returns where it is. A film that is not
    // `isWhole` never replaces an older one; then it stays where it was written. Throws RecordError
    // with ffmpeg's first message if it has failed.
    std::filesystem::path complete(bool isWhole);

    // ffmpeg's first message; usually there is none.
    [[nodiscard]] std::string remark() const;

private:
    void readMessages();

    std::filesystem::path film_;
    std::optional<PartFile> part_; // what ffmpeg writes; none if the film is written in place
    std::size_t pictureBytes_;
    Process ffmpeg_;
    FileDescriptor messages_; // ffmpeg's standard error
    std::string messageText_; // its beginning
    PipeQueue pictures_;
    PipeQueue sound_;
    bool isFinishing_ = false;
};
