// Arithmetic coding of single bits, each with a probability that follows what came before.
//
// The encoder and the decoder have the same shape, so that a model is written once, as a template
// over either: `code(bit, odds)` writes the bit or ignores it and reads one, and returns it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// How likely a bit is to be 1: the mean of two averages of its past, one quick and one slow.
class Odds {
public:
    // Of 65536.
    [[nodiscard]] std::uint32_t ofOne() const { return (std::uint32_t{quick_} + slow_) / 2; }

    void learn(int bit)
    {
        quick_ = moved(quick_, bit, 4);
        slow_ = moved(slow_, bit, 7);
    }

private:
    static std::uint16_t moved(std::uint16_t odds, int bit, int rate)
    {
        const int target = bit != 0 ? 65535 : 0;
        return static_cast<std::uint16_t>(odds + (target - odds) / (1 << rate));
    }

    std::uint16_t quick_ = 32768;
    std::uint16_t slow_ = 32768;
};

// The interval that both sides narrow with every bit, in 32 bits.
struct Interval {
    std::uint32_t low = 0;
    std::uint32_t high = 0xffffffffU;

    // Where it is divided: ones are below or at it.
    [[nodiscard]] std::uint32_t middle(const Odds& odds) const
    {
        const std::uint64_t size = high - low;
        const std::uint64_t share = odds.ofOne() < 16 ? 16 : odds.ofOne();
        return low + static_cast<std::uint32_t>(size * share / 65552);
    }
    [[nodiscard]] bool agreesOnTopByte() const { return (low ^ high) >> 24U == 0; }
    void dropTopByte()
    {
        low <<= 8U;
        high = (high << 8U) | 0xffU;
    }
};

class BitEncoder {
public:
    int code(int bit, Odds& odds)
    {
        const std::uint32_t middle = interval_.middle(odds);
        (bit != 0 ? interval_.high : interval_.low) = bit != 0 ? middle : middle + 1;
        odds.learn(bit);
        while (interval_.agreesOnTopByte()) {
            bytes_.push_back(static_cast<std::uint8_t>(interval_.low >> 24U));
            interval_.dropTopByte();
        }
        return bit;
    }

    // What was written; nothing may be written afterwards.
    std::vector<std::uint8_t> finish()
    {
        for (int i = 0; i < 4; ++i) {
            bytes_.push_back(static_cast<std::uint8_t>(interval_.low >> 24U));
            interval_.dropTopByte();
        }
        return std::move(bytes_);
    }

private:
    Interval interval_;
    std::vector<std::uint8_t> bytes_;
};

// Reads zeros past the end.
class BitDecoder {
public:
    explicit BitDecoder(std::span<const std::uint8_t> bytes) : bytes_{bytes} // borrowed
    {
        for (int i = 0; i < 4; ++i) {
            value_ = (value_ << 8U) | nextByte();
        }
    }

    int code(int /*bit*/, Odds& odds)
    {
        const std::uint32_t middle = interval_.middle(odds);
        const int bit = value_ <= middle ? 1 : 0;
        (bit != 0 ? interval_.high : interval_.low) = bit != 0 ? middle : middle + 1;
        odds.learn(bit);
        while (interval_.agreesOnTopByte()) {
            interval_.dropTopByte();
            value_ = (value_ << 8U) | nextByte();
        }
        return bit;
    }

private:
    std::uint32_t nextByte() { return next_ < bytes_.size() ? bytes_[next_++] : 0U; }

    Interval interval_;
    std::uint32_t value_ = 0;
    std::span<const std::uint8_t> bytes_;
    std::size_t next_ = 0;
};
