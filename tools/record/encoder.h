// ffmpeg at work on a film: takes pictures and sound through pipes, as fast as it likes.
//
// It writes beside the film, into NAME.part.EXTENSION, which takes the film's name when it is
// whole: what stood there before stays until then. A film that does not become whole is taken away.
// Rows of pictures, and what is no plain file, are written where they are.
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

// Bytes on their way into a pipe.
class PipeQueue {
public:
    void open(FileDescriptor pipe);
    void close(); // forgets what waits

    void push(std::vector<std::uint8_t> bytes);

    // Writes what the pipe takes now. False when nobody reads at the other end any more.
    bool write();

    [[nodiscard]] const FileDescriptor& pipe() const { return pipe_; }
    [[nodiscard]] std::size_t waiting() const { return waiting_; } // bytes
    [[nodiscard]] bool isUnread() const; // something is in the pipe itself

private:
    FileDescriptor pipe_;
    std::deque<std::vector<std::uint8_t>> chunks_;
    std::size_t written_ = 0; // of the first chunk
    std::size_t waiting_ = 0;
};

class Encoder {
public:
    // Throws RecordError when ffmpeg cannot be started, UsageError when the film's name and the
    // other wishes do not go together.
    explicit Encoder(const RecordOptions& options);
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    ~Encoder();

    void push(Frame frame);

    // No more comes: ffmpeg completes the film once it has taken what waits.
    void finish();

    // True when the next frame had better wait. Nothing to wait for says when that ends, so ask
    // again before long.
    [[nodiscard]] bool isBusy() const;
    // True when ffmpeg is gone, with the film complete or without.
    [[nodiscard]] bool isDone() const { return !messages_.isOpen(); }

    // What to wait for, and what to do then. serve() throws RecordError when ffmpeg takes no sound.
    void appendTo(std::vector<pollfd>& waits) const;
    void serve();

    // Once it is done: gives the film its name, or throws RecordError with what ffmpeg said.
    // Returns what it said all the same; mostly nothing.
    std::string complete();

private:
    void readMessages();

    std::filesystem::path film_;
    std::filesystem::path part_; // what ffmpeg writes; the film itself if that is no single file
    std::size_t pictureBytes_;
    Process ffmpeg_;
    FileDescriptor messages_; // what ffmpeg says
    std::string said_;
    PipeQueue pictures_;
    PipeQueue sound_;
    bool isFinishing_ = false;
};
