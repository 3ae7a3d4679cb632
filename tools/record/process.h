// Child processes, and pipes to them.
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

// Owns an open file descriptor and closes it.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    void close();
    int release() { return std::exchange(number_, -1); } // no longer closes it
    [[nodiscard]] int number() const { return number_; } // -1: none
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }

private:
    int number_ = -1;
};

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

// A pipe that holds 1 MiB if the system allows it. Children do not inherit its ends unless their
// Command says so. Throws RecordError.
Pipe makePipe();

void setNonBlocking(const FileDescriptor& descriptor);

// Pointers to the words and a null pointer after them, as main() gets them; valid as long as
// `words`.
std::vector<char*> pointersTo(std::vector<std::string>& words);

struct Command {
    std::vector<std::string> words;            // the program first, looked for in PATH
    std::vector<std::string> environment = {}; // NAME=VALUE, in addition to or instead of ours
    std::filesystem::path folder = {};         // to start in; empty: our own
    std::vector<std::pair<int, int>> descriptors = {}; // our number, the child's number
};

// A child process in a process group of its own, so that the terminal's Ctrl-C does not reach it.
// The destructor kills it if it still runs; so does the system if we are killed.
class Process {
public:
    Process() = default;
    // Throws RecordError if it cannot be started.
    explicit Process(const Command& command);
    Process(Process&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    Process& operator=(Process&& other) noexcept
    {
        std::swap(id_, other.id_);
        return *this;
    }
    ~Process();

    void signal(int number) const;

    // Kills it, if it still runs, and waits for its end.
    void kill();

    // Waits for its end and returns its exit status, or 128 plus the signal that ended it. To be
    // called once.
    int wait();

private:
    pid_t id_ = 0; // 0: none
};

struct Outcome {
    int status = 0;   // as of Process::wait
    std::string text; // all that was written to standard output and error
};

// Runs a command to its end, which it should come to soon. Throws RecordError if it cannot be
// started.
Outcome outcomeOf(Command command);
