#include "sound/xm_patterns.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <string_view>

namespace {

constexpr std::string_view kMagic = "Extended Module: ";
constexpr std::size_t kFixedHeaderBytes = 80; // everything in front of the order list
constexpr std::size_t kHeaderSizeAt = 60;     // the size counts from this field itself

constexpr unsigned kByteRowsVersion = 0x0102; // pattern headers with a byte for the rows
constexpr unsigned kPatternsFirstVersion = 0x0104;

constexpr unsigned kDefaultRows = 64;
constexpr std::uint32_t kFullInstrumentHeaderBytes = 263;
constexpr std::uint32_t kShortInstrumentHeaderBytes = 29; // up to the number of samples
constexpr std::uint32_t kSampleHeaderBytes = 40;

constexpr std::uint8_t kZxxEffect = 0x23;

// A cell whose first byte has the top bit set stores only the fields whose bits are set too;
// any other cell is five bytes: note, instrument, volume, effect, parameter.
constexpr unsigned kPackedCell = 0x80;
constexpr unsigned kFieldsBeforeEffect = 0x07;
constexpr unsigned kEffectField = 0x08;
constexpr unsigned kParameterField = 0x10;
constexpr unsigned kAllFields = 0x1F;

// A place in the file, at most its end.
class Place {
public:
    explicit Place(std::span<std::uint8_t> file) : file_(file) {}

    [[nodiscard]] bool holds(std::uint64_t bytes) const { return bytes <= file_.size() - at_; }

    // Goes on; false if the file ends before that.
    bool skip(std::uint64_t bytes)
    {
        if (!holds(bytes)) {
            return false;
        }
        at_ += static_cast<std::size_t>(bytes);
        return true;
    }

    // The next bytes; only after holds() was true for them.
    [[nodiscard]] std::span<std::uint8_t> bytes(std::size_t count) const
    {
        return file_.subspan(at_, count);
    }
    [[nodiscard]] unsigned u8(std::size_t offset) const { return bytes(offset + 1)[offset]; }
    [[nodiscard]] unsigned u16(std::size_t offset) const
    {
        return u8(offset) | (u8(offset + 1) << 8U);
    }
    [[nodiscard]] std::uint32_t u32(std::size_t offset) const
    {
        return u16(offset) | (std::uint32_t{u16(offset + 2)} << 16U);
    }

private:
    std::span<std::uint8_t> file_;
    std::size_t at_ = 0;
};

// Takes the Zxx effects out of one pattern's data. If it ends early, its other cells are empty.
void takeFromPattern(std::span<std::uint8_t> data, unsigned pattern, unsigned rows,
                     unsigned channels, std::vector<ZxxCell>& cells)
{
    std::size_t at = 0;
    const std::uint64_t count = std::uint64_t{rows} * channels;
    for (std::uint64_t cell = 0; cell < count && at < data.size(); ++cell) {
        unsigned fields = kAllFields;
        if ((data[at] & kPackedCell) != 0) {
            fields = data[at] & kAllFields;
            ++at;
        }
        at += static_cast<std::size_t>(std::popcount(fields & kFieldsBeforeEffect));

        const std::size_t effectAt = at;
        const bool hasEffect = (fields & kEffectField) != 0 && effectAt < data.size();
        at += (fields & kEffectField) != 0 ? 1 : 0;
        const std::size_t parameterAt = at;
        const bool hasParameter = (fields & kParameterField) != 0 && parameterAt < data.size();
        at += (fields & kParameterField) != 0 ? 1 : 0;

        if (hasEffect && data[effectAt] == kZxxEffect) {
            cells.push_back({.pattern = static_cast<std::uint16_t>(pattern),
                             .row = static_cast<std::uint16_t>(cell / channels),
                             .parameter = hasParameter ? data[parameterAt] : std::uint8_t{0}});
            data[effectAt] = 0;
            if (hasParameter) {
                data[parameterAt] = 0;
            }
        }
    }
}

bool walkPatterns(Place& place, unsigned version, unsigned patterns, unsigned channels,
                  std::vector<ZxxCell>& cells)
{
    const bool byteRows = version == kByteRowsVersion;
    const std::uint32_t fixedBytes = byteRows ? 8 : 9;
    for (unsigned pattern = 0; pattern < patterns; ++pattern) {
        if (!place.holds(fixedBytes)) {
            return false;
        }
        const std::uint32_t headerBytes = place.u32(0);
        const unsigned rows = byteRows ? place.u8(5) + 1 : place.u16(5);
        const unsigned dataBytes = place.u16(fixedBytes - 2);
        if (headerBytes < fixedBytes || !place.holds(std::uint64_t{headerBytes} + dataBytes)) {
            return false;
        }
        place.skip(headerBytes);
        takeFromPattern(place.bytes(dataBytes), pattern, rows == 0 ? kDefaultRows : rows, channels,
                        cells);
        place.skip(dataBytes);
    }
    return true;
}

// Walks over the headers of one instrument and its samples. Some trackers write short instrument
// headers, so the size that each header states is used; sample headers always have the same size,
// whatever the instrument states.
bool walkInstrument(Place& place)
{
    if (!place.holds(4)) {
        return false;
    }
    const std::uint32_t stated = place.u32(0);
    const std::uint32_t headerBytes = stated == 0 ? kFullInstrumentHeaderBytes : stated;
    if (!place.holds(headerBytes)) {
        return false;
    }
    const unsigned samples = headerBytes < kShortInstrumentHeaderBytes ? 0 : place.u16(27);
    return place.skip(headerBytes) && place.skip(std::uint64_t{samples} * kSampleHeaderBytes);
}

} // namespace

SoundError takeZxxCells(std::span<std::uint8_t> file, std::vector<ZxxCell>& cells)
{
    cells.clear();
    if (file.size() < kMagic.size() ||
        !std::equal(kMagic.begin(), kMagic.end(), file.begin(),
                    [](char expected, std::uint8_t byte) {
                        return static_cast<unsigned char>(expected) == byte;
                    })) {
        return SoundError::unknownFormat;
    }
    Place place(file);
    if (!place.holds(kFixedHeaderBytes)) {
        return SoundError::unreadableFile;
    }
    const unsigned version = place.u16(58);
    const std::uint32_t headerBytes = place.u32(kHeaderSizeAt);
    const unsigned channels = place.u16(68);
    const unsigned patterns = place.u16(70);
    const unsigned instruments = place.u16(72);
    if (version < kByteRowsVersion || version > kPatternsFirstVersion) {
        return SoundError::unknownVersion;
    }
    if (kHeaderSizeAt + std::uint64_t{headerBytes} < kFixedHeaderBytes) {
        return SoundError::unreadableFile;
    }
    // Old files have all headers first, then the patterns, then all samples; newer ones have the
    // patterns first.
    bool walked = place.skip(kHeaderSizeAt + std::uint64_t{headerBytes});
    for (unsigned i = 0; i < instruments && version < kPatternsFirstVersion && walked; ++i) {
        walked = walkInstrument(place);
    }
    walked = walked && walkPatterns(place, version, patterns, channels, cells);
    return walked ? SoundError::none : SoundError::unreadableFile;
}
