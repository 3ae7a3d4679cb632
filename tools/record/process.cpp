#include "tools/record/process.h"

#include "tools/record/record_error.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
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

// What a child does before it is the other program: system calls alone.
void prepareChild(const Command& command, pid_t parent)
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(EXIT_FAILURE); // it ended before that was asked for
    }
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    for (const auto& [ours, theirs] : command.descriptors) {
        ::dup2(ours, theirs);
    }
}

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
    const std::vector<char*> arguments = pointersTo(words);
    const std::vector<char*> variables = pointersTo(environment);
    Pipe failure = makePipe(); // closed by a program that starts
    const pid_t parent = ::getpid();
    int error = 0;
    id_ = ::fork();
    if (id_ == 0) {
        prepareChild(command, parent);
        if (command.folder.empty() || ::chdir(command.folder.c_str()) == 0) {
            ::execvpe(arguments.front(), arguments.data(), variables.data());
        }
        error = errno;
        [[maybe_unused]] const ssize_t told =
            ::write(failure.writeEnd.number(), &error, sizeof error);
        ::_exit(EXIT_FAILURE);
    }
    if (id_ < 0) {
        error = errno;
    } else {
        failure.writeEnd.close();
        [[maybe_unused]] const ssize_t got = ::read(failure.readEnd.number(), &error, sizeof error);
    }
    if (error != 0) {
        kill();
        throw RecordError(words[0] + " does not start: " + std::strerror(error));
    }
}

Process::~Process()
{
    kill();
}

void Process::kill()
{
    if (id_ > 0) {
        signal(SIGKILL);
        wait();
    }
    id_ = 0;
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

Outcome outcomeOf(Command command)
{
    Pipe written = makePipe();
    command.descriptors.emplace_back(written.writeEnd.number(), STDOUT_FILENO);
    command.descriptors.emplace_back(written.writeEnd.number(), STDERR_FILENO);
    Process process(command);
    written.writeEnd.close();
    Outcome outcome;
    std::array<char, 1024> text{};
    for (ssize_t count = 0;
         (count = ::read(written.readEnd.number(), text.data(), text.size())) > 0;) {
        outcome.text.append(text.data(), static_cast<std::size_t>(count));
    }
    outcome.status = process.wait();
    return outcome;
}
