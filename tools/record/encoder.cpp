#include "tools/record/encoder.h"

#include "tools/record/output_file.h"
#include "tools/record/record_error.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace {

constexpr int kPicturesNumber = 100; // file descriptors in ffmpeg, higher than any of ours
constexpr int kSoundNumber = 101;
constexpr std::size_t kMaxWaitingPictures = 2;
// ffmpeg reads the sound about a second later than the pictures; this is six minutes of it.
constexpr std::size_t kMaxWaitingSoundBytes = std::size_t{64} << 20U;
constexpr std::size_t kMaxWaitingBytesOfSoundAlone = std::size_t{1} << 20U;
constexpr std::size_t kMaxMessageBytes = 4096; // a little more may be kept

constexpr const char* kFewWords = "SVT_LOG=1"; // an encoder that does not know ffmpeg's -loglevel

PartMark markOf(const RecordOptions& options)
{
    PartMark mark{*options.part, *options.frames, options.rate, options.size, {}};
    for (const std::string& argument : options.programArguments) {
        mark.arguments += ' ' + argument;
    }
    return mark;
}

std::string sizeText(PictureSize size)
{
    return std::to_string(size.width) + 'x' + std::to_string(size.height);
}

// With "file:", ffmpeg does not take a film's name for an option or a protocol.
std::string fileName(const std::filesystem::path& film)
{
    return "file:" + film.string();
}

Command ffmpegCommand(const RecordOptions& options, const FilmFormat& format,
                      const std::filesystem::path& file)
{
    // With -xerror, ffmpeg also fails if it cannot close the film.
    std::vector<std::string> words = {"ffmpeg",    "-y",    "-nostdin", "-hide_banner",
                                      "-loglevel", "error", "-xerror"};
    const auto add = [&](const std::vector<std::string>& more) {
        words.insert(words.end(), more.begin(), more.end());
    };
    if (format.pictures) {
        const std::string rate =
            std::to_string(options.rate.frames) + '/' + std::to_string(options.rate.seconds);
        add({"-f", "rawvideo", "-pixel_format", "rgb24", "-video_size", sizeText(options.size),
             "-framerate", rate, "-thread_queue_size", "2", "-i",
             "pipe:" + std::to_string(kPicturesNumber)});
    }
    if (format.sound) {
        add({"-f", "s16le", "-ar", "44100", "-ac", "2", "-thread_queue_size", "4", "-i",
             "pipe:" + std::to_string(kSoundNumber)});
    }
    add(format.pictureOptions);
    add(format.options);
    if (options.part) {
        add({"-metadata", std::string(kPartTag) + '=' + markOf(options).text()});
    }
    add({fileName(file)});
    return {words, {kFewWords}};
}

// Not every machine has each encoder, and a film can be long.
void tryOut(const RecordOptions& options, const FilmFormat& format)
{
    std::vector<std::string> words = {
        "ffmpeg",    "-nostdin", "-hide_banner",
        "-loglevel", "error",    "-f",
        "lavfi",     "-i",       "color=size=" + sizeText(options.size)};
    words.insert(words.end(), format.pictureOptions.begin(), format.pictureOptions.end());
    words.insert(words.end(), {"-frames:v", "2", "-f", "null", "-"});
    const Outcome outcome = outcomeOf({words, {kFewWords}});
    if (outcome.status != 0) {
        throw RecordError("the encoder " + options.quality.encoder + " does not work here: " +
                          outcome.text.substr(0, outcome.text.find('\n')));
    }
}

} // namespace

FilmFormat formatOf(const RecordOptions& options)
{
    return options.part ? losslessFormat() : filmFormat(options.film, options.quality);
}

Encoder::Encoder(const RecordOptions& options)
    : film_(options.film), pictureBytes_(static_cast<std::size_t>(options.size.width) *
                                         static_cast<std::size_t>(options.size.height) * 3)
{
    const FilmFormat format = formatOf(options);
    requireFile(film_);
    if (!options.quality.encoder.empty()) {
        tryOut(options, format);
    }
    if (!format.isManyFiles) {
        part_.emplace(film_);
    }
    Command command = ffmpegCommand(options, format, part_ ? part_->path() : film_);
    Pipe pictures = makePipe();
    Pipe sound = makePipe();
    Pipe messages = makePipe();
    command.descriptors = {
        {pictures.readEnd.number(),  kPicturesNumber},
        {sound.readEnd.number(),     kSoundNumber   },
        {messages.writeEnd.number(), STDERR_FILENO  },
    };
    try {
        ffmpeg_ = Process(command);
    } catch (const RecordError& error) {
        throw RecordError(std::string(error.what()) + "; on Debian, the package ffmpeg has it");
    }
    messages_ = std::move(messages.readEnd);
    setNonBlocking(messages_);
    if (format.pictures) {
        pictures_.open(std::move(pictures.writeEnd));
    }
    if (format.sound) {
        sound_.open(std::move(sound.writeEnd));
    }
}

Encoder::~Encoder()
{
    // Before the pipes are closed: at the end of its input ffmpeg would complete the film.
    ffmpeg_.kill();
}

void Encoder::push(Frame frame)
{
    pictures_.push(std::move(frame.picture));
    const auto bytes = std::as_bytes(frame.sound);
    std::vector<std::uint8_t> sound(bytes.size());
    std::memcpy(sound.data(), bytes.data(), bytes.size());
    sound_.push(std::move(sound));
}

void Encoder::finish()
{
    isFinishing_ = true;
    serve();
}

// While pictures wait it is busy, unless ffmpeg may be waiting for sound before it reads them.
bool Encoder::isBusy() const
{
    const bool hasSound = !sound_.pipe().isOpen() || sound_.waiting() > 0 || sound_.isUnread();
    if (!pictures_.pipe().isOpen()) {
        return sound_.waiting() > kMaxWaitingBytesOfSoundAlone;
    }
    return pictures_.waiting() > (kMaxWaitingPictures - 1) * pictureBytes_ && hasSound;
}

void Encoder::appendTo(std::vector<pollfd>& waits) const
{
    waits.push_back({messages_.number(), POLLIN, 0});
    for (const PipeQueue* queue : {&pictures_, &sound_}) {
        if (queue->pipe().isOpen() && queue->waiting() > 0) {
            waits.push_back({queue->pipe().number(), POLLOUT, 0});
        }
    }
}

void Encoder::serve()
{
    readMessages();
    for (PipeQueue* queue : {&pictures_, &sound_}) {
        const bool isRead = queue->write();
        if (!isRead || (isFinishing_ && queue->waiting() == 0)) {
            queue->close();
        }
    }
    if (sound_.pipe().isOpen() && pictures_.pipe().isOpen() &&
        sound_.waiting() > kMaxWaitingSoundBytes) {
        throw RecordError("ffmpeg does not read the sound for " + film_.string());
    }
}

void Encoder::readMessages()
{
    std::array<char, 1024> text{};
    ssize_t count = 0;
    while (messages_.isOpen() &&
           (count = ::read(messages_.number(), text.data(), text.size())) >= 0) {
        if (count == 0) {
            messages_.close();
        } else if (messageText_.size() < kMaxMessageBytes) {
            messageText_.append(text.data(), static_cast<std::size_t>(count));
        }
    }
}

std::filesystem::path Encoder::complete(bool isWhole)
{
    if (const int status = ffmpeg_.wait(); status != 0) {
        throw RecordError("ffmpeg cannot make " + film_.string() + ": " +
                          (remark().empty() ? "status " + std::to_string(status) : remark()));
    }
    if (!part_) {
        return film_;
    }
    return isWhole ? part_->replace() : part_->keep();
}

std::string Encoder::remark() const
{
    return messageText_.substr(0, messageText_.find('\n'));
}
