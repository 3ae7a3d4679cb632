#pragma once

#include "tools/record/film_part.h"
#include "tools/record/source.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What the parts of a film hold, either the pictures or the sound, one part after the other:
// packets like the show's.
class PartReader : public Source {
public:
    // `kind` is PacketKind::picture or PacketKind::sound. Throws RecordError.
    PartReader(std::vector<FilmPart> parts, PacketKind kind);

    void read(const Take& take) override;
    [[nodiscard]] const FileDescriptor& pipe() const override { return pipe_; }
    void stop() override;
    std::string fault() override { return fault_; }

private:
    void open();
    void close();
    void pass(const Take& take);
    [[nodiscard]] bool isWhole() const;

    std::vector<FilmPart> parts_;
    PacketKind kind_;
    std::size_t part_ = 0; // the one that is read
    std::uint64_t frame_;  // the next one
    std::uint64_t sample_; // the next one
    Process ffmpeg_;
    FileDescriptor pipe_;
    FileDescriptor messages_;
    std::vector<std::uint8_t> bytes_; // of the next packet
    std::size_t filled_ = 0;
    std::string fault_;
};
