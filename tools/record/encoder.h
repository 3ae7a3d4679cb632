// An ffmpeg process that makes a film, at its own pace, of pictures and sound that it gets through
// pipes.
//
// It writes into NAME.part.EXTENSION, which gets the film's name when it is complete; an older film
// of this name stays until then. An incomplete film is deleted. Numbered pictures, and a film that
// is there already but is not a regular file, are written in place.
#pragma once

#include "tools/record/frames.h"
#include "tools/record/process.h"
#include "tools/record/record_options.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <poll.h>
#include <string>
#include <vector>

// Bytes that wait to be written into a pipe.
class PipeQueue {
public:
    void open(FileDescriptor pipe);
    void close(); // drops what waits

    void push(std::vector<std::uint8_t> bytes);

    // Writes as much as the pipe takes without blocking. False if its other end has been closed.
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

    // Only when isDone(): gives the film its name, or throws RecordError with ffmpeg's first
    // message if it has failed. Returns ffmpeg's first message otherwise, which is usually "".
    std::string complete();

private:
    void readMessages();

    std::filesystem::path film_;
    std::filesystem::path part_; // what ffmpeg writes; film_ if it is written in place
    std::size_t pictureBytes_;
    Process ffmpeg_;
    FileDescriptor messages_; // ffmpeg's standard error
    std::string messageText_; // its beginning
    PipeQueue pictures_;
    PipeQueue sound_;
    bool isFinishing_ = false;
};
