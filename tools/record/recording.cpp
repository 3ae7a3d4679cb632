#include "tools/record/recording.h"

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

constexpr int kAskAgainMs = 5;
constexpr int kForEver = -1;

std::multimap<std::uint64_t, std::string> stillsByFrame(const RecordOptions& options)
{
    std::multimap<std::uint64_t, std::string> stills;
    for (const StillTime& still : options.stills) {
        stills.emplace(options.frameOf(still), still.fileName());
    }
    return stills;
}

struct Streams {
    bool pictures = false;
    bool sound = false;
};

// What the film and the lists are made of; the stills come besides.
Streams streamsOf(const RecordOptions& options)
{
    Streams streams{!options.hashes.empty() || !options.pixels.empty(), !options.hashes.empty()};
    if (!options.film.empty()) {
        const FilmFormat format = formatOf(options);
        streams.pictures = streams.pictures || format.pictures;
        streams.sound = streams.sound || format.sound;
    }
    return streams;
}

std::string listOf(const std::set<std::uint64_t>& frames)
{
    std::string list;
    for (const std::uint64_t frame : frames) {
        list += std::to_string(frame) + ',';
    }
    return list;
}

std::set<std::uint64_t> framesOf(const std::multimap<std::uint64_t, std::string>& stills)
{
    std::set<std::uint64_t> frames;
    for (const auto& [frame, name] : stills) {
        frames.insert(frame);
    }
    return frames;
}

} // namespace

Recording::Recording(const RecordOptions& options)
    : options_(options), needsSound_(streamsOf(options).sound),
      needsAllPictures_(streamsOf(options).pictures), stills_(stillsByFrame(options)),
      next_(options.firstFrame()), progress_(options.rate, next_, expectedEnd(options))
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
    std::string fault;
    try {
        do {
            startShows();
            play(signals);
        } while (startsAgain());
        fault = isInterrupted_ ? "" : shows_->fault();
        isWhole_ = !isInterrupted_ && fault.empty();
        finish(signals);
    } catch (const RecordError&) {
        // The film is completed as far as it goes, unless it is ffmpeg that has failed.
        shows_.reset();
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
    if (!fault.empty()) {
        throw RecordError(fault);
    }
    if (!isInterrupted_) {
        checkOutputs();
    }
    return !isInterrupted_;
}

// What the next run of the show has to send; nearly always there is only one.
Wanted Recording::wanted() const
{
    constexpr int kMaxSkippingRuns = 2;
    Wanted wanted{next_, options_.endFrame(), needsSound_, "all"};
    wanted.drawn = listOf(missing_);
    if (!needsAllPictures_) {
        wanted.pictures = listOf(framesOf(stills_));
    }
    if (runs_ > 0 && !needsAllPictures_) {
        // The sound is there already.
        wanted.from = options_.firstFrame();
        wanted.to = stills_.rbegin()->first + 1;
        wanted.sound = false;
    }
    if (runs_ >= kMaxSkippingRuns) {
        wanted.drawn = "all";
    }
    return wanted;
}

void Recording::play(const FileDescriptor& signals)
{
    while (showPlays()) {
        serve(signals);
    }
    const bool isAbandoned = needsAllPictures_ && !shows_->missing().empty();
    if (!isInterrupted_ && !isAbandoned) {
        shows_->finish();
    }
}

// A picture that depends on a skipped frame could not be sent: nothing is shown in its pass, and
// what is still on the screen was not drawn. Then the show is played again with that frame.
bool Recording::startsAgain()
{
    if (isInterrupted_ || shows_->missing().empty()) {
        return false;
    }
    missing_.insert(shows_->missing().begin(), shows_->missing().end());
    ++runs_;
    return true;
}

void Recording::startShows()
{
    progress_.enter(options_.joinsParts ? "opening the parts"
                    : runs_ == 0        ? "starting the show"
                                        : "starting the show again, for frames that others need");
    shows_.emplace(options_, wanted(), [this](Frame frame) { takeFrame(std::move(frame)); });
}

// Waits until a signal, the show or one of the outputs can go on, and lets it.
void Recording::serve(const FileDescriptor& signals)
{
    std::vector<pollfd> waits = {
        {signals.number(), POLLIN, 0}
    };
    const bool isBusy = (encoder_ && encoder_->isBusy()) || (pixels_ && pixels_->isBusy());
    const bool readsShow = showPlays() && !isBusy;
    if (readsShow) {
        shows_->appendTo(waits);
    }
    if (encoder_) {
        encoder_->appendTo(waits);
    }
    if (pixels_) {
        pixels_->appendTo(waits);
    }
    ::poll(waits.data(), waits.size(), isBusy ? kAskAgainMs : kForEver);

    if (waits.front().revents != 0) {
        interrupt(signals);
    }
    if (readsShow && showPlays()) {
        readShows();
    }
    if (pixels_) {
        pixels_->serve();
    }
    if (encoder_) {
        encoder_->serve();
        if (encoder_->isDone() && showPlays()) {
            encoder_->complete(false);
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
        throw RecordError("stopped before all was written");
    }
    isInterrupted_ = true;
    if (shows_) {
        shows_->stop();
    }
}

void Recording::readShows()
{
    const bool wasKnown = runs_ > 0 || !shows_->renderer().empty();
    shows_->serve();
    if (!wasKnown && !shows_->renderer().empty()) {
        progress_.clear();
        std::fprintf(stderr, "kso: %s draws\n", shows_->renderer().c_str());
    }
    progress_.show(options_.joinsParts ? "joining" : "recording", shows_->seen());
}

void Recording::takeFrame(Frame frame)
{
    if (!frame.picture.empty()) {
        const auto [begin, end] = stills_.equal_range(frame.number);
        for (auto still = begin; still != end; ++still) {
            writePng(options_.stillsFolder / still->second, options_.size, frame.picture);
        }
        stills_.erase(begin, end);
    }
    if (frame.number < next_) {
        return; // taken in an earlier run
    }
    next_ = frame.number + 1;
    ++taken_;
    if (hashes_) {
        hashes_->add(frame);
    }
    if (pixels_) {
        pixels_->push(frame);
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
    while (pixels_ && !pixels_->isDone()) {
        serve(signals);
    }
    pixels_.reset();
    if (taken_ == 0) {
        encoder_.reset();
    }
    if (encoder_) {
        progress_.enter("closing the film");
        encoder_->finish();
        while (!encoder_->isDone()) {
            serve(signals);
        }
        completeFilm();
    }
}

void Recording::completeFilm()
{
    if (options_.part && !isWhole_) {
        encoder_.reset(); // what is joined has to be whole
        progress_.clear();
        std::fprintf(stderr, "kso: this part is not whole, and nothing is left of it\n");
        return;
    }
    filmPlace_ = encoder_->complete(isWhole_);
    progress_.clear();
    if (!encoder_->remark().empty()) {
        std::fprintf(stderr, "kso: ffmpeg says: %s\n", encoder_->remark().c_str());
    }
    if (filmPlace_ != options_.film) {
        std::fprintf(stderr, "kso: %s stays as it was; what was recorded now is in %s\n",
                     options_.film.c_str(), filmPlace_.c_str());
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
    const std::string to = filmPlace_.empty() ? "" : " to " + filmPlace_.string();
    const char* const done = options_.joinsParts ? "joined" : "recorded";
    std::fprintf(stderr, "kso: %llu frame%s, %s, %s%s in %s\n",
                 static_cast<unsigned long long>(taken_), taken_ == 1 ? "" : "s",
                 clockText(seconds, 2).c_str(), done, to.c_str(), took.c_str());
}

void Recording::checkOutputs() const
{
    if (taken_ == 0) {
        throw RecordError(options_.firstFrame() > 0 ? "the show ended before --from"
                                                    : "the show ended before its first frame");
    }
    if (!stills_.empty()) {
        throw RecordError("the show ended before the still " + stills_.begin()->second);
    }
}
