#include "tools/record/frames.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

void FrameAssembler::add(const PacketHeader& header, std::vector<std::uint8_t> bytes)
{
    if (header.kind == PacketKind::sound) {
        addSound(header.position, bytes);
    } else if (header.kind == PacketKind::picture || header.kind == PacketKind::unseen) {
        seen_ = std::max(seen_, header.position + 1);
        if (header.position >= first_) {
            waiting_ = Frame{header.position, std::move(bytes), {}};
        }
    }
    if (waiting_ && (!hasSound_ || heard() >= rate_.samplesBefore(waiting_->number + 1))) {
        passOn();
    }
}

void FrameAssembler::finish()
{
    if (waiting_) {
        const std::uint64_t end = rate_.samplesBefore(waiting_->number + 1);
        sound_.resize((end - soundBegin_) * kSoundChannels, 0);
        passOn();
    }
}

// Sound may come again from an earlier position on; it replaces what was there.
void FrameAssembler::addSound(std::uint64_t position, std::span<const std::uint8_t> bytes)
{
    const std::size_t kept = (position - soundBegin_) * kSoundChannels;
    sound_.resize(kept + bytes.size() / sizeof(std::int16_t));
    std::memcpy(sound_.data() + kept, bytes.data(), bytes.size());
}

void FrameAssembler::passOn()
{
    const std::uint64_t end = rate_.samplesBefore(waiting_->number + 1);
    const std::size_t count = hasSound_ ? (end - soundBegin_) * kSoundChannels : 0;
    waiting_->sound = std::span(sound_).first(count);
    take_(std::move(*waiting_));
    waiting_.reset();
    sound_.erase(sound_.begin(), sound_.begin() + static_cast<std::ptrdiff_t>(count));
    soundBegin_ = end;
}
