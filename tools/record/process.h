// Child processes and the pipes between them and us.
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

// An open file descriptor, closed at the end.
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
    [[nodiscard]] int number() const { return number_; } // -1: none
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }

private:
    int number_ = -1;
};

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

// Both ends are closed in children that are not given them. As large as the system lets it be,
// up to a mebibyte. Throws RecordError.
Pipe makePipe();

void setNonBlocking(const FileDescriptor& descriptor);

// As a process's entry point gets them: a null pointer at the end. They last as long as `words`.
std::vector<char*> pointersTo(std::vector<std::string>& words);

struct Command {
    std::vector<std::string> words;                    // the program first, looked for in PATH
    std::vector<std::string> environment = {};         // NAME=VALUE, beside or instead of our own
    std::filesystem::path folder = {};                 // to start in; empty: our own
    std::vector<std::pair<int, int>> descriptors = {}; // ours, and the child's number for it
};

// A child process in a process group of its own, so that the terminal's Ctrl-C does not reach it.
// It is killed if it still runs when this ends.
class Process {
public:
    Process() = default;
    // Throws RecordError when it cannot be started.
    explicit Process(const Command& command);
    Process(Process&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    Process& operator=(Process&& other) noexcept
    {
        std::swap(id_, other.id_);
        return *this;
    }
    ~Process();

    void signal(int number) const;

    // Ends it, if it still runs, and waits for that.
    void kill();

    // Waits for its end, once: its exit status, or 128 and the number of the signal that ended it.
    int wait();

private:
    pid_t id_ = 0; // 0: none
};
