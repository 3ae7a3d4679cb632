#include "tools/record/process.h"

#include "tools/record/record_error.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kPipeBytes = 1 << 20;

// `environment`, and all of our own variables that it does not set.
std::vector<std::string> withOurs(std::vector<std::string> environment)
{
    const std::vector<std::string> given = environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string ours = *variable;
        const std::string name = ours.substr(0, ours.find('=') + 1);
        if (std::ranges::none_of(given, [&](const auto& each) { return each.starts_with(name); })) {
            environment.push_back(ours);
        }
    }
    return environment;
}

// Gives a child a process group of its own and the usual handling of signals that we block or
// ignore.
class Attributes {
public:
    Attributes()
    {
        sigset_t none;
        sigset_t ignored;
        ::sigemptyset(&none);
        ::sigemptyset(&ignored);
        ::sigaddset(&ignored, SIGPIPE);
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawnattr_setpgroup(&attributes_, 0);
        ::posix_spawnattr_setsigmask(&attributes_, &none);
        ::posix_spawnattr_setsigdefault(&attributes_, &ignored);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK |
                                                     POSIX_SPAWN_SETSIGDEF);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { ::posix_spawnattr_destroy(&attributes_); }

    [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

class Actions {
public:
    explicit Actions(const Command& command)
    {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        if (!command.folder.empty()) {
            ::posix_spawn_file_actions_addchdir_np(&actions_, command.folder.c_str());
        }
        for (const auto& [ours, theirs] : command.descriptors) {
            ::posix_spawn_file_actions_adddup2(&actions_, ours, theirs);
        }
    }
    Actions(const Actions&) = delete;
    Actions& operator=(const Actions&) = delete;
    ~Actions() { ::posix_spawn_file_actions_destroy(&actions_); }

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

} // namespace

std::vector<char*> pointersTo(std::vector<std::string>& words)
{
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

void FileDescriptor::close()
{
    if (isOpen()) {
        ::close(std::exchange(number_, -1));
    }
}

Pipe makePipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw RecordError(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
    ::fcntl(ends[0], F_SETPIPE_SZ, kPipeBytes);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

void setNonBlocking(const FileDescriptor& descriptor)
{
    ::fcntl(descriptor.number(), F_SETFL, O_NONBLOCK);
}

Process::Process(const Command& command)
{
    std::vector<std::string> words = command.words;
    std::vector<std::string> environment = withOurs(command.environment);
    const int error =
        ::posix_spawnp(&id_, words.at(0).c_str(), Actions(command).get(), Attributes().get(),
                       pointersTo(words).data(), pointersTo(environment).data());
    if (error != 0) {
        id_ = 0;
        throw RecordError(words[0] + " does not start: " + std::strerror(error));
    }
}

Process::~Process()
{
    kill();
}

void Process::kill()
{
    if (id_ != 0) {
        signal(SIGKILL);
        wait();
    }
}

void Process::signal(int number) const
{
    if (id_ != 0) {
        ::kill(id_, number);
    }
}

int Process::wait()
{
    assert(id_ != 0);
    int status = 0;
    while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
