#include "tools/record/part_reader.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace {

constexpr int kPipeNumber = 100; // in ffmpeg, higher than any of ours
constexpr std::size_t kSoundBytes = 65536;
constexpr std::size_t kSampleBytes = kSoundChannels * sizeof(std::int16_t);

std::size_t pictureBytes(const PictureSize& size)
{
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 3;
}

Command decoderOf(const std::filesystem::path& file, PacketKind kind)
{
    Command command{
        {"ffmpeg", "-nostdin", "-hide_banner", "-loglevel", "error", "-xerror", "-i",
         "file:" + file.string()}
    };
    const auto add = [&](std::initializer_list<const char*> words) {
        command.words.insert(command.words.end(), words.begin(), words.end());
    };
    if (kind == PacketKind::picture) {
        add({"-map", "0:v", "-fps_mode", "passthrough", "-f", "rawvideo", "-pix_fmt", "rgb24"});
    } else {
        add({"-map", "0:a", "-f", "s16le"});
    }
    command.words.push_back("pipe:" + std::to_string(kPipeNumber));
    return command;
}

} // namespace

PartReader::PartReader(std::vector<FilmPart> parts, PacketKind kind)
    : parts_(std::move(parts)), kind_(kind), frame_(parts_.front().mark.frames.first),
      sample_(parts_.front().mark.rate.samplesBefore(frame_))
{
    open();
}

void PartReader::open()
{
    const FilmPart& part = parts_[part_];
    Pipe data = makePipe();
    Pipe messages = makePipe();
    Command command = decoderOf(part.file, kind_);
    command.descriptors = {
        {data.writeEnd.number(),     kPipeNumber  },
        {messages.writeEnd.number(), STDERR_FILENO},
    };
    ffmpeg_ = Process(command);
    pipe_ = std::move(data.readEnd);
    messages_ = std::move(messages.readEnd);
    setNonBlocking(pipe_);
    setNonBlocking(messages_);
    bytes_.resize(kind_ == PacketKind::picture ? pictureBytes(part.mark.size) : kSoundBytes);
    filled_ = 0;
}

void PartReader::read(const Take& take)
{
    ssize_t got = 0;
    while (filled_ < bytes_.size() &&
           (got = ::read(pipe_.number(), bytes_.data() + filled_, bytes_.size() - filled_)) > 0) {
        filled_ += static_cast<std::size_t>(got);
    }
    const bool hasEnded = filled_ < bytes_.size() && got == 0;
    if (filled_ == bytes_.size() || (hasEnded && kind_ == PacketKind::sound && filled_ > 0)) {
        pass(take);
    }
    if (hasEnded) {
        close();
    }
}

void PartReader::pass(const Take& take)
{
    std::vector<std::uint8_t> bytes(bytes_.size());
    bytes.swap(bytes_);
    bytes.resize(std::exchange(filled_, 0));
    const auto count = static_cast<std::uint32_t>(bytes.size());
    if (kind_ == PacketKind::picture) {
        take({kind_, count, frame_++}, std::move(bytes));
    } else {
        const std::uint64_t begin = sample_;
        sample_ += bytes.size() / kSampleBytes;
        take({kind_, count, begin}, std::move(bytes));
    }
}

bool PartReader::isWhole() const
{
    const PartMark& mark = parts_[part_].mark;
    if (kind_ == PacketKind::picture) {
        return filled_ == 0 && frame_ > mark.frames.first &&
               frame_ == mark.frames.end.value_or(frame_);
    }
    return !mark.frames.end || sample_ == mark.rate.samplesBefore(*mark.frames.end);
}

// A part has been read to its end: the next one follows, if there is one. Where a file ends too
// early, ffmpeg says so, but does not fail.
void PartReader::close()
{
    pipe_.close();
    const int status = ffmpeg_.wait();
    std::array<char, 1024> text{};
    const ssize_t count = ::read(messages_.number(), text.data(), text.size());
    const std::string message(text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (status != 0) {
        fault_ = "cannot read " + parts_[part_].file.string() + ": " +
                 message.substr(0, message.find('\n'));
    } else if (!message.empty() || !isWhole()) {
        fault_ = parts_[part_].file.string() + " is not whole; record this part again";
    } else if (++part_ < parts_.size()) {
        open();
    }
}

void PartReader::stop()
{
    ffmpeg_.kill();
    pipe_.close();
}
