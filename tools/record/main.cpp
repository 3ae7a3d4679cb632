// Records the show: the command line, signals, and the exit status.

#include "tools/record/record_error.h"
#include "tools/record/record_options.h"
#include "tools/record/recording.h"
#include "tools/record/sharing.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sys/signalfd.h>

namespace {

constexpr int kStatusOfBadUsage = 2;
constexpr int kStatusOfInterrupt = 130;

// A descriptor from which signals can be read that would have ended this process. Ignored ones
// stay ignored.
FileDescriptor takeSignals()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler != SIG_IGN) {
            ::sigaddset(&signals, number);
        }
    }
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN); // for us and ffmpeg, writing fails instead, with a message
    return FileDescriptor(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

} // namespace

int main(int argc, char** argv)
{
    try {
        RecordOptions options = readRecordOptions({argv + 1, static_cast<std::size_t>(argc - 1)});
        if (options.help) {
            std::fputs(kRecordHelp, stdout);
            return EXIT_SUCCESS;
        }
        settleSharing(options);
        const FileDescriptor signals = takeSignals();
        return Recording(options).run(signals) ? EXIT_SUCCESS : kStatusOfInterrupt;
    } catch (const UsageError& error) {
        std::fprintf(stderr, "kso: %s\n", error.what());
        return kStatusOfBadUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kso: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
