// A packed file:
//
//      kind        1 byte      what follows after the length and the sum
//      length      4 bytes     of the file, lowest byte first, like all numbers here
//      sum         4 bytes     CRC-32 of the file
//      a module's samples      how many, then the first byte and the length in bytes of each
//      the coded bits
#include "web/pack/packed_file.h"

#include "web/pack/models.h"

#include <cstring>
#include <utility>

namespace {

enum Kind : std::uint8_t { kPlain, kPicture, kModule };

constexpr std::size_t kHeaderBytes = 9;
constexpr std::size_t kTgaHeaderBytes = 18;
constexpr std::uint32_t kLargestFile = 64U << 20U;

// A stretch of 16-bit samples, each given as the difference from the one before.
struct Stretch {
    std::uint32_t first;  // byte
    std::uint32_t length; // bytes, even
};

std::uint32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t place, std::size_t size)
{
    std::uint32_t number = 0;
    for (std::size_t i = size; i-- > 0;) {
        number = (number << 8U) | bytes[place + i];
    }
    return number;
}

void append(Bytes& bytes, std::uint32_t number)
{
    for (int i = 0; i < 4; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(number >> (8U * static_cast<unsigned>(i))));
    }
}

std::uint32_t sumOf(std::span<const std::uint8_t> bytes)
{
    std::uint32_t sum = 0xffffffffU;
    for (const std::uint8_t byte : bytes) {
        sum ^= byte;
        for (int i = 0; i < 8; ++i) {
            sum = (sum >> 1U) ^ (0xedb88320U & (0U - (sum & 1U)));
        }
    }
    return ~sum;
}

struct PictureSize {
    std::size_t width;
    std::size_t height;
    std::size_t pixelSize;

    [[nodiscard]] std::size_t bytes() const { return width * height * pixelSize; }
};

PictureSize pictureSize(std::span<const std::uint8_t> header)
{
    return {numberAt(header, 12, 2), numberAt(header, 14, 2), header[16] / 8U};
}

// A picture as a plain one: its header, then its pixels in the file's order. Nothing for files that
// are no picture of true colours or greys, or have more than a header and pixels.
std::optional<Bytes> plainPicture(std::span<const std::uint8_t> file)
{
    constexpr unsigned kRunLength = 8;
    if (file.size() < kTgaHeaderBytes) {
        return std::nullopt;
    }
    const PictureSize size = pictureSize(file);
    const unsigned type = file[2];
    const bool isKnown = (type & ~kRunLength) == 2 || (type & ~kRunLength) == 3;
    if (file[0] != 0 || file[1] != 0 || !isKnown || file[16] % 8 != 0 || size.pixelSize < 1 ||
        size.pixelSize > 4 || size.bytes() == 0 || size.bytes() > kLargestFile) {
        return std::nullopt;
    }

    Bytes plain(file.begin(), file.begin() + kTgaHeaderBytes);
    plain[2] = static_cast<std::uint8_t>(type & ~kRunLength);
    std::size_t place = kTgaHeaderBytes;
    const std::size_t wanted = kTgaHeaderBytes + size.bytes();
    if ((type & kRunLength) == 0) {
        plain.assign(file.begin(), file.end());
        plain[2] = static_cast<std::uint8_t>(type);
    } else {
        while (plain.size() < wanted && place < file.size()) {
            const unsigned packet = file[place++];
            const std::size_t count = (packet & 127U) + 1;
            const bool repeats = packet >= 128;
            const std::size_t bytes = (repeats ? 1 : count) * size.pixelSize;
            if (bytes > file.size() - place) {
                return std::nullopt;
            }
            for (std::size_t i = 0; i < (repeats ? count : 1); ++i) {
                plain.insert(plain.end(), file.begin() + static_cast<std::ptrdiff_t>(place),
                             file.begin() + static_cast<std::ptrdiff_t>(place + bytes));
            }
            place += bytes;
        }
        if (place != file.size()) {
            return std::nullopt;
        }
    }
    return plain.size() == wanted ? std::optional(std::move(plain)) : std::nullopt;
}

// Where an XM file has its samples of 16 bits. None if the file is not built as such files are.
std::vector<Stretch> samplesOf(std::span<const std::uint8_t> file)
{
    constexpr std::size_t kOrders = 60; // where the second header begins
    constexpr unsigned kSixteenBits = 16;
    std::vector<Stretch> stretches;
    bool isWhole = file.size() >= 80 && std::memcmp(file.data(), "Extended Module: ", 17) == 0;
    std::size_t place = 0;
    const auto number = [&](std::size_t offset, std::size_t size) -> std::uint32_t {
        isWhole = isWhole && place + offset + size <= file.size();
        return isWhole ? numberAt(file, place + offset, size) : 0;
    };

    place = kOrders;
    const std::uint32_t patterns = number(10, 2);
    const std::uint32_t instruments = number(12, 2);
    place += number(0, 4);
    for (std::uint32_t i = 0; i < patterns && isWhole; ++i) {
        place += std::size_t{number(0, 4)} + number(7, 2);
    }
    for (std::uint32_t i = 0; i < instruments && isWhole; ++i) {
        const std::uint32_t count = number(27, 2);
        const std::uint32_t headerSize = count > 0 ? number(29, 4) : 0;
        place += number(0, 4);
        std::vector<std::pair<std::uint32_t, bool>> sizes;
        for (std::uint32_t k = 0; k < count && isWhole; ++k) {
            sizes.emplace_back(number(0, 4), (number(14, 1) & kSixteenBits) != 0);
            place += headerSize;
        }
        for (const auto& [size, isSixteen] : sizes) {
            isWhole = isWhole && size <= file.size() && place <= file.size() - size;
            if (isSixteen && size % 2 == 0 && size > 0) {
                stretches.push_back({static_cast<std::uint32_t>(place), size});
            }
            place += size;
        }
    }
    return isWhole ? stretches : std::vector<Stretch>{};
}

// The bytes between the stretches, and then the stretches' samples. Differences are added up for
// coding.
template <class Coder>
void codeModule(Coder& coder, std::span<std::uint8_t> file, const std::vector<Stretch>& stretches)
{
    Bytes between;
    const auto eachGap = [&](auto&& visit) {
        std::size_t from = 0;
        for (const Stretch& stretch : stretches) {
            visit(file.subspan(from, stretch.first - from));
            from = std::size_t{stretch.first} + stretch.length;
        }
        visit(file.subspan(from));
    };
    eachGap([&](auto gap) { between.insert(between.end(), gap.begin(), gap.end()); });
    codeBytes(coder, between);
    auto next = between.begin();
    eachGap([&](auto gap) {
        const auto end = next + static_cast<std::ptrdiff_t>(gap.size());
        std::copy(next, end, gap.begin());
        next = end;
    });

    SampleCoder sampleCoder;
    std::vector<std::int16_t> samples;
    for (const Stretch& stretch : stretches) {
        const std::span<std::uint8_t> bytes = file.subspan(stretch.first, stretch.length);
        samples.resize(bytes.size() / 2);
        std::uint32_t sum = 0;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            sum += numberAt(bytes, 2 * i, 2);
            samples[i] = static_cast<std::int16_t>(sum);
        }
        sampleCoder.code(coder, samples);
        std::uint32_t before = 0;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto sample = static_cast<std::uint16_t>(samples[i]);
            const std::uint32_t difference = sample - before;
            before = sample;
            bytes[2 * i] = static_cast<std::uint8_t>(difference);
            bytes[2 * i + 1] = static_cast<std::uint8_t>(difference >> 8U);
        }
    }
}

template <class Coder>
void codeFile(Coder& coder, Kind kind, std::span<std::uint8_t> file,
              const std::vector<Stretch>& stretches)
{
    if (kind == kPicture) {
        codeBytes(coder, file.first(kTgaHeaderBytes));
        const PictureSize size = pictureSize(file);
        if (file.size() == kTgaHeaderBytes + size.bytes() && size.pixelSize >= 1 &&
            size.pixelSize <= 4) {
            codePixels(coder, file.subspan(kTgaHeaderBytes), size.width, size.pixelSize);
        }
    } else {
        codeModule(coder, file, stretches);
    }
}

bool areInOrder(const std::vector<Stretch>& stretches, std::size_t fileSize)
{
    std::size_t end = 0;
    for (const Stretch& stretch : stretches) {
        if (stretch.first < end || stretch.length % 2 != 0 || stretch.first > fileSize ||
            stretch.length > fileSize - stretch.first) {
            return false;
        }
        end = std::size_t{stretch.first} + stretch.length;
    }
    return true;
}

} // namespace

Bytes pack(Bytes file)
{
    Kind kind = kPlain;
    std::vector<Stretch> stretches;
    if (std::optional<Bytes> picture = plainPicture(file)) {
        kind = kPicture;
        file = std::move(*picture);
    } else if (stretches = samplesOf(file); !stretches.empty()) {
        kind = kModule;
    }

    Bytes packed = {kind};
    append(packed, static_cast<std::uint32_t>(file.size()));
    append(packed, sumOf(file));
    if (kind == kModule) {
        append(packed, static_cast<std::uint32_t>(stretches.size()));
        for (const Stretch& stretch : stretches) {
            append(packed, stretch.first);
            append(packed, stretch.length);
        }
    }
    BitEncoder encoder;
    codeFile(encoder, kind, file, stretches);
    const Bytes bits = encoder.finish();
    packed.insert(packed.end(), bits.begin(), bits.end());
    return packed;
}

std::optional<Bytes> unpack(std::span<const std::uint8_t> packed)
{
    if (packed.size() < kHeaderBytes || packed[0] > kModule) {
        return std::nullopt;
    }
    const Kind kind{packed[0]};
    const std::uint32_t length = numberAt(packed, 1, 4);
    const std::uint32_t sum = numberAt(packed, 5, 4);
    if (length > kLargestFile || (kind == kPicture && length < kTgaHeaderBytes)) {
        return std::nullopt;
    }
    packed = packed.subspan(kHeaderBytes);

    std::vector<Stretch> stretches;
    if (kind == kModule) {
        const std::size_t count = packed.size() >= 4 ? numberAt(packed, 0, 4) : 0;
        if (packed.size() < 4 || count > packed.size() / 8) {
            return std::nullopt;
        }
        for (std::size_t i = 0; i < count; ++i) {
            stretches.push_back({numberAt(packed, 4 + 8 * i, 4), numberAt(packed, 8 + 8 * i, 4)});
        }
        if (4 + 8 * count > packed.size() || !areInOrder(stretches, length)) {
            return std::nullopt;
        }
        packed = packed.subspan(4 + 8 * count);
    }

    Bytes file(length);
    BitDecoder decoder(packed);
    codeFile(decoder, kind, file, stretches);
    return sumOf(file) == sum ? std::optional(std::move(file)) : std::nullopt;
}
