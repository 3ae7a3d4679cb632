// How likely the bytes of a file, the pixels of a picture and the samples of a sound are, and with
// that their coding. Each is one function for both directions: with an encoder it reads what it is
// given, with a decoder it fills it in.
#pragma once

#include "web/pack/bit_coder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

// A number of `kBits` bits, its highest bit first, each bit with odds that depend on those above
// it.
template <int kBits>
class BitTree {
public:
    template <class Coder>
    unsigned code(Coder& coder, unsigned value)
    {
        unsigned node = 1;
        for (int i = kBits - 1; i >= 0; --i) {
            const int bit = static_cast<int>(value >> static_cast<unsigned>(i)) & 1;
            node = 2 * node + static_cast<unsigned>(coder.code(bit, odds_[node]));
        }
        return node - (1U << kBits);
    }

private:
    std::array<Odds, std::size_t{1} << kBits> odds_;
};

// Numbers from 0 on in classes, four to an octave; the last of `levels` has all that are larger.
inline std::size_t levelOf(unsigned number, std::size_t levels)
{
    if (number < 4) {
        return std::min<std::size_t>(number, levels - 1);
    }
    const auto octave = static_cast<unsigned>(std::bit_width(number)); // 3 and more
    const unsigned quarter = (number >> (octave - 3)) & 3U;
    return std::min<std::size_t>(4 * (octave - 2) + quarter, levels - 1);
}

// Bytes, each after the one before it.
template <class Coder>
void codeBytes(Coder& coder, std::span<std::uint8_t> bytes)
{
    std::vector<BitTree<8>> afterByte(256);
    std::uint8_t before = 0;
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(afterByte[before].code(coder, byte));
        before = byte;
    }
}

// Pixels of 1 to 4 bytes, rows back to back. A byte is guessed from its neighbours to the left and
// above, for colours after the second one with the second one's step from there; what is coded is
// how far off the guess is, by how much the neighbours differ and how far off the pixel's byte
// before was.
template <class Coder>
void codePixels(Coder& coder, std::span<std::uint8_t> pixels, std::size_t width,
                std::size_t pixelSize)
{
    constexpr std::array<std::size_t, 4> kOrder = {1, 0, 2, 3}; // green first, alpha last
    constexpr std::size_t kActivities = 13;
    constexpr std::size_t kErrors = 7;
    // For each byte of a pixel.
    std::vector<BitTree<8>> trees(4 * kActivities * kErrors);
    std::vector<int> differences(pixels.size()); // from the second byte
    const std::size_t rowBytes = width * pixelSize;

    for (std::size_t pixel = 0; pixel + pixelSize <= pixels.size(); pixel += pixelSize) {
        const bool hasLeft = pixel % rowBytes != 0;
        const bool hasAbove = pixel >= rowBytes;
        const bool hasRight = (pixel + pixelSize) % rowBytes != 0;
        int green = 0;
        unsigned errorBefore = 0;
        for (std::size_t step = 0; step < pixelSize; ++step) {
            const std::size_t channel = pixelSize < 3 ? step : kOrder[step];
            const std::size_t here = pixel + channel;
            const bool fromGreen = pixelSize >= 3 && (channel == 0 || channel == 2);
            const auto at = [&](std::size_t back) { return differences[here - back]; };
            const int left = hasLeft ? at(pixelSize) : hasAbove ? at(rowBytes) : 0;
            const int above = hasAbove ? at(rowBytes) : left;
            const int corner = hasLeft && hasAbove ? at(rowBytes + pixelSize) : above;
            const int right = hasRight && hasAbove ? at(rowBytes - pixelSize) : above;

            const int plane = left + above - corner;
            const int middle = std::clamp(plane, std::min(left, above), std::max(left, above));
            const int guess = std::clamp(middle + (fromGreen ? green : 0), 0, 255);
            const auto activity = static_cast<unsigned>(
                std::abs(left - corner) + std::abs(above - corner) + std::abs(above - right));
            BitTree<8>& tree =
                trees[(channel * kActivities + levelOf(activity, kActivities)) * kErrors +
                      levelOf(errorBefore, kErrors)];
            const auto error = static_cast<std::uint8_t>(
                tree.code(coder, static_cast<std::uint8_t>(pixels[here] - guess)));
            pixels[here] = static_cast<std::uint8_t>(guess + error);
            errorBefore = static_cast<unsigned>(std::abs(static_cast<std::int8_t>(error)));
            if (channel == 1) {
                green = pixels[here];
            }
            differences[here] = pixels[here] - (fromGreen ? green : 0);
        }
    }
}

// Guesses the next number of a series as the sum of the latest ones, weighted so that it would have
// been best for the past, of which the recent counts more: ordinary least squares, solved anew
// every few numbers. Only the four operations and square roots, in a fixed order: both sides have
// to come to the same guess, on any machine.
class LeastSquares {
public:
    [[nodiscard]] double guess() const
    {
        double sum = 0.0;
        for (std::size_t i = 0; i < kSize; ++i) {
            sum += weights_[i] * latest_[i];
        }
        return sum;
    }

    void learn(double number)
    {
        for (std::size_t r = 0; r < kSize; ++r) {
            const double share = (1.0 - kMemory) * latest_[r];
            for (std::size_t c = 0; c <= r; ++c) {
                products_[r][c] = kMemory * products_[r][c] + share * latest_[c];
            }
            withNext_[r] = kMemory * withNext_[r] + share * number;
        }
        std::copy_backward(latest_.begin(), latest_.end() - 1, latest_.end());
        latest_[0] = number;
        if (++learned_ % kEvery == 0) {
            solve();
        }
    }

private:
    static constexpr std::size_t kSize = 24;
    static constexpr double kMemory = 0.998;
    static constexpr unsigned kEvery = 16;
    static constexpr double kRidge = 0.01; // keeps the system solvable in silence

    // By Cholesky's decomposition; the weights stay if there is none.
    void solve()
    {
        Square lower{};
        Row solution{};
        for (std::size_t r = 0; r < kSize; ++r) {
            double rest = withNext_[r];
            for (std::size_t c = 0; c <= r; ++c) {
                double sum = products_[r][c] + (r == c ? kRidge : 0.0);
                for (std::size_t i = 0; i < c; ++i) {
                    sum -= lower[r][i] * lower[c][i];
                }
                if (r != c) {
                    lower[r][c] = sum / lower[c][c];
                    rest -= lower[r][c] * solution[c];
                } else if (sum > 0.0) {
                    lower[r][r] = std::sqrt(sum);
                } else {
                    return;
                }
            }
            solution[r] = rest / lower[r][r];
        }
        for (std::size_t r = kSize; r-- > 0;) {
            double rest = solution[r];
            for (std::size_t i = r + 1; i < kSize; ++i) {
                rest -= lower[i][r] * solution[i];
            }
            solution[r] = rest / lower[r][r];
        }
        weights_ = solution;
    }

    using Row = std::array<double, kSize>;
    using Square = std::array<Row, kSize>;

    Row weights_{};
    Row latest_{};
    Row withNext_{};
    Square products_{}; // lower half
    unsigned learned_ = 0;
};

// Samples of 16 bits. What is coded is how far off the guess is: how many bits its magnitude has,
// by how large the latest ones were, and then these bits.
class SampleCoder {
public:
    template <class Coder>
    void code(Coder& coder, std::span<std::int16_t> samples)
    {
        for (std::int16_t& sample : samples) {
            const int guess = nearest(past_.guess());
            const int error = codeError(coder, static_cast<std::int16_t>(sample - guess));
            sample = static_cast<std::int16_t>(guess + error);
            past_.learn(sample);
        }
    }

private:
    static constexpr unsigned kFineBits = 3;
    static constexpr std::size_t kLevels = 64;

    static int nearest(double guess)
    {
        return std::isfinite(guess)
                   ? static_cast<int>(std::lrint(std::clamp(guess, -32768.0, 32767.0)))
                   : 0;
    }

    template <class Coder>
    int codeError(Coder& coder, int error)
    {
        const std::size_t level = levelOf(size_ / 16, kLevels);
        const auto magnitude = static_cast<unsigned>(std::abs(error));
        const unsigned length =
            lengths_[level].code(coder, static_cast<unsigned>(std::bit_width(magnitude)));
        unsigned coded = length > 0 ? 1 : 0;
        unsigned fine = 1;
        for (unsigned i = 1; i < length; ++i) {
            const auto bit = static_cast<int>(magnitude >> (length - 1 - i)) & 1;
            Odds& odds = i <= kFineBits ? fine_[length][fine] : rest_;
            const auto got = static_cast<unsigned>(coder.code(bit, odds));
            if (i > kFineBits) {
                rest_ = Odds{};
            }
            coded = 2 * coded + got;
            fine = i < kFineBits ? 2 * fine + got : fine;
        }
        size_ = size_ - size_ / 12 + 16 * coded;
        if (coded == 0) {
            return 0;
        }
        const int negative = coder.code(error < 0 ? 1 : 0, sign_);
        return negative != 0 ? -static_cast<int>(coded) : static_cast<int>(coded);
    }

    LeastSquares past_;
    unsigned size_ = 0; // 192 times the mean of the latest errors' magnitudes
    std::array<BitTree<5>, kLevels> lengths_;
    std::array<std::array<Odds, 1U << kFineBits>, 18> fine_;
    Odds rest_;
    Odds sign_;
};
