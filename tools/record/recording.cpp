#include "tools/record/recording.h"

#include "tools/record/film_format.h"
#include "tools/record/png_file.h"
#include "tools/record/record_error.h"
#include "tools/record/show_length.h"

#include <cstdio>
#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

constexpr int kStatusAfterShow = 1;   // of the show, if it did not fail
constexpr int kStatusOfSignals = 128; // plus the signal's number, as Process::wait returns it
constexpr int kAskAgainMs = 5;
constexpr int kForEver = -1;

std::multimap<std::uint64_t, std::string> stillsByFrame(const RecordOptions& options)
{
    std::multimap<std::uint64_t, std::string> stills;
    for (const StillTime& still : options.stills) {
        stills.emplace(options.frameOf(still), still.time + ".png");
    }
    return stills;
}

std::string wantedPictures(const RecordOptions& options)
{
    const bool filmHasPictures =
        !options.film.empty() && filmFormat(options.film, options.crf).pictures;
    if (filmHasPictures || !options.hashes.empty() || !options.pixels.empty()) {
        return "all";
    }
    std::string wanted;
    for (const auto& [frame, name] : stillsByFrame(options)) {
        wanted += std::to_string(frame) + ',';
    }
    return wanted;
}

std::optional<std::uint64_t> expectedEnd(const RecordOptions& options)
{
    if (options.endFrame()) {
        return options.endFrame();
    }
    const std::optional<std::uint64_t> samples = expectedSamples(options);
    return samples ? std::optional(options.rate.firstFrameHearing(*samples)) : std::nullopt;
}

} // namespace

Recording::Recording(const RecordOptions& options)
    : options_(options), stills_(stillsByFrame(options)),
      progress_(options.rate, expectedEnd(options)),
      frames_(options.rate, options.firstFrame(),
              [this](Frame frame) { takeFrame(std::move(frame)); }),
      show_(options, wantedPictures(options))
{
    std::error_code error;
    if (!options.stills.empty() &&
        (std::filesystem::create_directories(options.stillsFolder, error), error)) {
        throw RecordError("cannot make " + options.stillsFolder.string() + ": " + error.message());
    }
    if (!options.hashes.empty()) {
        hashes_.emplace(options.hashes);
    }
    if (!options.pixels.empty()) {
        pixels_.emplace(options.pixels);
    }
    if (!options.film.empty()) {
        encoder_.emplace(options);
    }
}

bool Recording::run(const FileDescriptor& signals)
{
    try {
        while (show_.pipe().isOpen()) {
            serve(signals);
        }
        if (!isInterrupted_) {
            frames_.finish();
        }
        finish(signals);
    } catch (const RecordError&) {
        // The film is completed as far as it goes, unless it is ffmpeg that has failed.
        show_.stop();
        hashes_.reset();
        pixels_.reset();
        if (encoder_ && encoder_->isDone()) {
            encoder_.reset();
        }
        try {
            finish(signals);
        } catch (const RecordError&) { // NOLINT(bugprone-empty-catch): the first reason counts
        }
        progress_.clear();
        throw;
    }
    progress_.clear();
    if (taken_ > 0) {
        report();
    } else if (isInterrupted_) {
        std::fputs("kso: nothing was recorded\n", stderr);
    }
    if (!isInterrupted_) {
        checkShow();
    }
    return !isInterrupted_;
}

// Waits until a signal, the show or the encoder can go on, and lets it.
void Recording::serve(const FileDescriptor& signals)
{
    std::vector<pollfd> waits = {
        {signals.number(), POLLIN, 0}
    };
    const bool isBusy = encoder_ && encoder_->isBusy();
    const bool readsShow = show_.pipe().isOpen() && !isBusy;
    if (readsShow) {
        waits.push_back({show_.pipe().number(), POLLIN, 0});
    }
    if (encoder_) {
        encoder_->appendTo(waits);
    }
    ::poll(waits.data(), waits.size(), isBusy ? kAskAgainMs : kForEver);

    if (waits.front().revents != 0) {
        interrupt(signals);
    }
    if (readsShow && show_.pipe().isOpen()) {
        show_.read([this](const PacketHeader& header, std::vector<std::uint8_t> bytes) {
            take(header, std::move(bytes));
        });
    }
    if (encoder_) {
        encoder_->serve();
        if (encoder_->isDone() && show_.pipe().isOpen()) {
            encoder_->complete();
            throw RecordError("ffmpeg ended " + options_.film.string() + " before the show's end");
        }
    }
}

// The first signal ends the recording as if the show had ended; the second one gives up the film.
void Recording::interrupt(const FileDescriptor& signals)
{
    signalfd_siginfo info{};
    if (::read(signals.number(), &info, sizeof info) != sizeof info) {
        return;
    }
    if (isInterrupted_) {
        encoder_.reset();
        throw RecordError("stopped before the film was complete");
    }
    isInterrupted_ = true;
    show_.stop();
}

void Recording::take(const PacketHeader& header, std::vector<std::uint8_t> bytes)
{
    if (header.kind == PacketKind::started) {
        const std::string renderer(bytes.begin(), bytes.end());
        std::fprintf(stderr, "kso: %s draws\n", renderer.c_str());
        return;
    }
    frames_.add(header, std::move(bytes));
    progress_.show(frames_.seen());
}

void Recording::takeFrame(Frame frame)
{
    ++taken_;
    const auto [begin, end] = stills_.equal_range(frame.number);
    for (auto still = begin; still != end; ++still) {
        writePng(options_.stillsFolder / still->second, options_.size, frame.picture);
    }
    stills_.erase(begin, end);
    if (hashes_) {
        hashes_->add(frame);
    }
    if (pixels_) {
        pixels_->add(frame);
    }
    if (encoder_) {
        encoder_->push(std::move(frame));
    }
}

void Recording::finish(const FileDescriptor& signals)
{
    if (hashes_) {
        hashes_->close();
        hashes_.reset();
    }
    if (pixels_) {
        pixels_->close();
        pixels_.reset();
    }
    if (taken_ == 0) {
        encoder_.reset();
    }
    if (encoder_) {
        encoder_->finish();
        while (!encoder_->isDone()) {
            serve(signals);
        }
        if (const std::string remark = encoder_->complete(); !remark.empty()) {
            progress_.clear();
            std::fprintf(stderr, "kso: ffmpeg says: %s\n", remark.c_str());
        }
    }
}

void Recording::report()
{
    const std::string took = clockText(progress_.elapsedSeconds(), 1);
    if (options_.onlyStills()) {
        const std::size_t made = options_.stills.size() - stills_.size();
        std::fprintf(stderr, "kso: %zu still%s in %s, made in %s\n", made, made == 1 ? "" : "s",
                     options_.stillsFolder.c_str(), took.c_str());
        return;
    }
    const double seconds = static_cast<double>(taken_ * options_.rate.seconds) /
                           static_cast<double>(options_.rate.frames);
    const std::string to = options_.film.empty() ? "" : " to " + options_.film.string();
    std::fprintf(stderr, "kso: %llu frame%s, %s, recorded%s in %s\n",
                 static_cast<unsigned long long>(taken_), taken_ == 1 ? "" : "s",
                 clockText(seconds, 2).c_str(), to.c_str(), took.c_str());
}

void Recording::checkShow()
{
    const int status = show_.wait();
    if (status > kStatusOfSignals) {
        throw RecordError("the show was ended by signal " +
                          std::to_string(status - kStatusOfSignals));
    }
    if (status != kStatusAfterShow) {
        throw RecordError("the show failed");
    }
    if (taken_ == 0) {
        throw RecordError(options_.firstFrame() > 0 ? "the show ended before --from"
                                                    : "the show ended before its first frame");
    }
    if (!stills_.empty()) {
        throw RecordError("the show ended before the still " + stills_.begin()->second);
    }
}
