#include "stage/launcher/child.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t kLongest = 2000; // bytes, of what fits into a box
constexpr int kStatusOfSignals = 128;

// Waits until the child and all that it has started have closed their ends.
std::string listen(int pipe)
{
    std::string said;
    std::array<char, 512> bytes{};
    ssize_t got = 0;
    while ((got = ::read(pipe, bytes.data(), bytes.size())) > 0 || (got < 0 && errno == EINTR)) {
        if (got > 0) {
            const auto count = static_cast<std::size_t>(got);
            [[maybe_unused]] const ssize_t passedOn = ::write(STDERR_FILENO, bytes.data(), count);
            said.append(bytes.data(), count);
            said.erase(0, said.size() > kLongest ? said.size() - kLongest : 0);
        }
    }
    return said;
}

} // namespace

ChildEnd runListening(const std::function<int()>& work)
{
    std::array<int, 2> pipe{};
    const pid_t child = ::pipe(pipe.data()) == 0 ? ::fork() : -1;
    if (child < 0) {
        return {work(), ""}; // unheard
    }
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::dup2(pipe[1], STDOUT_FILENO);
        ::dup2(pipe[1], STDERR_FILENO);
        ::close(pipe[0]);
        ::close(pipe[1]);
        std::exit(work());
    }
    ::close(pipe[1]);
    ChildEnd end;
    end.said = listen(pipe[0]);
    ::close(pipe[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    end.status = WIFSIGNALED(status) ? kStatusOfSignals + WTERMSIG(status) : WEXITSTATUS(status);
    return end;
}
