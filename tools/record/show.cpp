#include "tools/record/show.h"

#include "packaging/places.h"
#include "tools/capture/settings.h"
#include "tools/record/record_error.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

constexpr int kPipeNumber = 100; // file descriptors in the show, higher than any of ours
constexpr int kLibraryNumber = 101;
constexpr int kStatusAfterShow = 1;   // of the show, if it did not fail
constexpr int kStatusOfSignals = 128; // plus the signal's number, as Process::wait returns it
constexpr const char* kMesaThreads = "LP_NUM_THREADS";

std::string inherited(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

Command showCommand(const RecordOptions& options, const Wanted& wanted)
{
    Command command;
    command.words = {findPlaces().program};
    command.words.insert(command.words.end(), options.programArguments.begin(),
                         options.programArguments.end());
    command.folder = options.show;

    const auto set = [&](const char* name, const std::string& value) {
        command.environment.push_back(std::string(name) + '=' + value);
    };
    const FrameRate& rate = options.rate;
    // Named by its descriptor, since the loader cuts paths at blanks and colons.
    const std::string others = inherited("LD_PRELOAD");
    set("LD_PRELOAD",
        "/proc/self/fd/" + std::to_string(kLibraryNumber) + (others.empty() ? "" : ':' + others));
    set(setting::kPipe, std::to_string(kPipeNumber));
    set(setting::kRate, std::to_string(rate.frames) + '/' + std::to_string(rate.seconds));
    set(setting::kSize,
        std::to_string(options.size.width) + 'x' + std::to_string(options.size.height));
    set(setting::kFrom, std::to_string(wanted.from));
    set(setting::kTo, wanted.to ? std::to_string(*wanted.to) : "");
    set(setting::kSound, wanted.sound ? "yes" : "");
    set(setting::kWanted, wanted.pictures);
    set(setting::kTurn, wanted.turn);
    set(setting::kDrawn, wanted.drawn);
    if (wanted.drawingThreads > 0 && inherited(kMesaThreads).empty()) {
        set(kMesaThreads, std::to_string(wanted.drawingThreads));
    }
    return command;
}

} // namespace

Show::Show(const RecordOptions& options, const Wanted& wanted)
{
    Command command = showCommand(options, wanted);
    Pipe packets = makePipe();
    const std::string libraryPath = findPlaces().library;
    const FileDescriptor library(::open(libraryPath.c_str(), O_RDONLY | O_CLOEXEC));
    if (!library.isOpen()) {
        throw RecordError("cannot read " + libraryPath + ": " + std::strerror(errno));
    }
    command.descriptors = {
        {packets.writeEnd.number(), kPipeNumber   },
        {library.number(),          kLibraryNumber}
    };
    process_ = Process(command);
    pipe_ = std::move(packets.readEnd);
    setNonBlocking(pipe_);
}

void Show::read(const Take& take)
{
    if (!hasHeader_) {
        if (!fill(&header_, sizeof header_)) {
            return;
        }
        hasHeader_ = true;
        filled_ = 0;
        bytes_.resize(header_.bytes);
    }
    if (fill(bytes_.data(), bytes_.size())) {
        hasHeader_ = false;
        filled_ = 0;
        take(header_, std::exchange(bytes_, {}));
    }
}

bool Show::fill(void* bytes, std::size_t count)
{
    while (filled_ < count) {
        const ssize_t got =
            ::read(pipe_.number(), static_cast<std::uint8_t*>(bytes) + filled_, count - filled_);
        if (got == 0) {
            pipe_.close();
        }
        if (got <= 0) {
            return false;
        }
        filled_ += static_cast<std::size_t>(got);
    }
    return true;
}

void Show::stop()
{
    process_.signal(SIGKILL);
    pipe_.close();
    isStopped_ = true;
}

std::string Show::fault()
{
    if (hasEnded_) {
        return "";
    }
    const int status = process_.wait();
    hasEnded_ = true;
    if (isStopped_ || status == kStatusAfterShow) {
        return "";
    }
    return status > kStatusOfSignals
               ? "the show was ended by signal " + std::to_string(status - kStatusOfSignals)
               : "the show failed";
}
