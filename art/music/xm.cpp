#include "art/music/xm.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr int kVersion = 0x0104;
constexpr int kOrderSlots = 256;
constexpr int kHeaderBytes = 20 + kOrderSlots; // counted from the field that holds it
constexpr int kPatternHeaderBytes = 9;
constexpr int kInstrumentBytes = 263;
constexpr int kEmptyInstrumentBytes = 29;
constexpr int kSampleHeaderBytes = 40;
constexpr int kNameBytes = 22;
constexpr int kMaxChannels = 32;
constexpr int kMaxPatterns = 256;
constexpr int kMaxRows = 256;
constexpr int kMaxInstruments = 128;
constexpr int kMaxSamples = 16;
constexpr int kEnvelopePoints = 12;
constexpr int kMaxEffect = 35;

void require(bool holds, const std::string& complaint)
{
    if (!holds) {
        throw std::invalid_argument(complaint);
    }
}

bool within(int value, int low, int high)
{
    return value >= low && value <= high;
}

// Little-endian bytes, appended one after another.
class ByteWriter {
public:
    void u8(int value) { bytes_.push_back(static_cast<std::uint8_t>(value)); }

    void u16(int value)
    {
        u8(value);
        u8(value >> 8);
    }

    void u32(int value)
    {
        u16(value);
        u16(value >> 16);
    }

    // Cut or filled up to `length` bytes.
    void text(const std::string& value, std::size_t length, char filler = '\0')
    {
        for (std::size_t i = 0; i < length; ++i) {
            u8(i < value.size() ? value[i] : filler);
        }
    }

    void append(const std::vector<std::uint8_t>& other)
    {
        bytes_.insert(bytes_.end(), other.begin(), other.end());
    }

    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

private:
    std::vector<std::uint8_t> bytes_;
};

// A cell's first byte has bit 7 set and tells which of its five bytes follow, unless all five do.
void writeCell(ByteWriter& out, const XmCell& cell)
{
    constexpr int kPacked = 0x80;
    constexpr int kAll = 0x1F;
    const std::array<std::uint8_t, 5> fields = {cell.note, cell.instrument, cell.volume,
                                                cell.effect, cell.parameter};
    int present = 0;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        present |= fields[i] != 0 ? 1 << i : 0;
    }
    if (present != kAll) {
        out.u8(kPacked | present);
    }
    for (const std::uint8_t field : fields) {
        if (field != 0) {
            out.u8(field);
        }
    }
}

void writePattern(ByteWriter& out, const XmPattern& pattern)
{
    ByteWriter cells;
    for (int row = 0; row < pattern.rows(); ++row) {
        for (int channel = 0; channel < pattern.channels(); ++channel) {
            writeCell(cells, pattern.at(row, channel));
        }
    }
    require(cells.bytes().size() <= 0xFFFF, "a pattern packs to more than 65535 bytes");
    out.u32(kPatternHeaderBytes);
    out.u8(0); // packing type
    out.u16(pattern.rows());
    out.u16(static_cast<int>(cells.bytes().size()));
    out.append(cells.bytes());
}

void writeEnvelopePoints(ByteWriter& out, const XmEnvelope& envelope)
{
    for (std::size_t i = 0; i < kEnvelopePoints; ++i) {
        const bool used = i < envelope.points.size();
        out.u16(used ? envelope.points[i].tick : 0);
        out.u16(used ? envelope.points[i].value : 0);
    }
}

int envelopeType(const XmEnvelope& envelope)
{
    return (envelope.points.empty() ? 0 : 1) | (envelope.sustain >= 0 ? 2 : 0);
}

void writeSampleHeader(ByteWriter& out, const XmSample& sample)
{
    constexpr int kForwardLoop = 0x01;
    constexpr int kSixteenBits = 0x10;
    out.u32(2 * static_cast<int>(sample.data.size()));
    out.u32(2 * sample.loopStart);
    out.u32(2 * sample.loopLength);
    out.u8(sample.volume);
    out.u8(sample.finetune);
    out.u8(kSixteenBits | (sample.loopLength > 0 ? kForwardLoop : 0));
    out.u8(sample.panning);
    out.u8(sample.relativeNote);
    out.u8(0);
    out.text(sample.name, kNameBytes);
}

// Samples are stored as differences, modulo 65536.
void writeSampleData(ByteWriter& out, const XmSample& sample)
{
    int previous = 0;
    for (const int value : sample.data) {
        out.u16(value - previous);
        previous = value;
    }
}

// Everything about the samples that belongs to the instrument: which one a note plays, envelopes,
// vibrato, fadeout.
void writePlaying(ByteWriter& out, const XmInstrument& instrument)
{
    for (const std::uint8_t index : instrument.keymap) {
        out.u8(index);
    }
    writeEnvelopePoints(out, instrument.volume);
    writeEnvelopePoints(out, instrument.panning);
    out.u8(static_cast<int>(instrument.volume.points.size()));
    out.u8(static_cast<int>(instrument.panning.points.size()));
    for (const XmEnvelope* envelope : {&instrument.volume, &instrument.panning}) {
        out.u8(std::max(envelope->sustain, 0));
        out.u16(0); // loop start and end
    }
    out.u8(envelopeType(instrument.volume));
    out.u8(envelopeType(instrument.panning));
    out.u8(0); // vibrato waveform: sine
    out.u8(instrument.vibratoSweep);
    out.u8(instrument.vibratoDepth);
    out.u8(instrument.vibratoRate);
    out.u16(instrument.fadeout);
    out.text("", kNameBytes); // reserved
}

void writeInstrument(ByteWriter& out, const XmInstrument& instrument)
{
    const bool isSilent = instrument.samples.empty();
    out.u32(isSilent ? kEmptyInstrumentBytes : kInstrumentBytes);
    out.text(instrument.name, kNameBytes);
    out.u8(0); // type
    out.u16(static_cast<int>(instrument.samples.size()));
    if (isSilent) {
        return;
    }
    out.u32(kSampleHeaderBytes);
    writePlaying(out, instrument);
    for (const XmSample& sample : instrument.samples) {
        writeSampleHeader(out, sample);
    }
    for (const XmSample& sample : instrument.samples) {
        writeSampleData(out, sample);
    }
}

void checkCell(const XmCell& cell, const std::string& where)
{
    require(cell.note <= kXmKeyOff, where + ": note above 97");
    require(cell.instrument <= kMaxInstruments, where + ": instrument above 128");
    require(cell.effect <= kMaxEffect, where + ": effect above 35 (Z)");
}

void checkPattern(const XmPattern& pattern, const XmModule& module, const std::string& where)
{
    require(within(pattern.rows(), 1, kMaxRows), where + ": 1 to 256 rows");
    require(pattern.channels() == module.channels, where + ": not the module's channel count");
    for (int row = 0; row < pattern.rows(); ++row) {
        for (int channel = 0; channel < pattern.channels(); ++channel) {
            checkCell(pattern.at(row, channel), where + ", row " + std::to_string(row) +
                                                    ", channel " + std::to_string(channel));
        }
    }
}

void checkEnvelope(const XmEnvelope& envelope, const std::string& where)
{
    const int count = static_cast<int>(envelope.points.size());
    require(count <= kEnvelopePoints, where + ": more than 12 envelope points");
    require(within(envelope.sustain, -1, std::max(count - 1, -1)),
            where + ": sustain is not one of the envelope's points");
    for (int i = 0; i < count; ++i) {
        const XmEnvelopePoint& point = envelope.points[static_cast<std::size_t>(i)];
        const int earliest = i == 0 ? 0 : envelope.points[static_cast<std::size_t>(i - 1)].tick + 1;
        require(within(point.tick, earliest, 0xFFFF), where + ": envelope ticks do not rise");
        require(within(point.value, 0, 64), where + ": envelope value outside 0 to 64");
    }
}

void checkSample(const XmSample& sample, const std::string& where)
{
    const int length = static_cast<int>(sample.data.size());
    require(sample.loopStart >= 0 && sample.loopLength >= 0 &&
                sample.loopLength <= length - sample.loopStart,
            where + ": loop outside the sample");
    require(within(sample.volume, 0, 64), where + ": volume outside 0 to 64");
    require(within(sample.panning, 0, 255), where + ": panning outside 0 to 255");
    require(within(sample.relativeNote, -96, 95), where + ": relative note outside -96 to 95");
    require(within(sample.finetune, -128, 127), where + ": finetune outside -128 to 127");
}

void checkInstrument(const XmInstrument& instrument, const std::string& where)
{
    require(instrument.samples.size() <= kMaxSamples, where + ": more than 16 samples");
    require(within(instrument.fadeout, 0, 0xFFF), where + ": fadeout outside 0 to 4095");
    for (const int value :
         {instrument.vibratoSweep, instrument.vibratoDepth, instrument.vibratoRate}) {
        require(within(value, 0, 0xFF), where + ": vibrato outside 0 to 255");
    }
    checkEnvelope(instrument.volume, where);
    checkEnvelope(instrument.panning, where);
    for (const XmSample& sample : instrument.samples) {
        checkSample(sample, where + ", sample \"" + sample.name + "\"");
    }
    for (const std::uint8_t index : instrument.keymap) {
        require(index == 0 || index < instrument.samples.size(),
                where + ": the keymap names a sample that is not there");
    }
}

void checkModule(const XmModule& module)
{
    require(within(module.channels, 1, kMaxChannels), "1 to 32 channels");
    require(!module.orders.empty() && module.orders.size() <= kOrderSlots, "1 to 256 orders");
    require(!module.patterns.empty() && module.patterns.size() <= kMaxPatterns,
            "1 to 256 patterns");
    require(module.instruments.size() <= kMaxInstruments, "at most 128 instruments");
    require(within(module.speed, 1, 31), "speed outside 1 to 31");
    require(within(module.tempo, 32, 255), "tempo outside 32 to 255");
    require(within(module.restart, 0, static_cast<int>(module.orders.size()) - 1),
            "restart outside the order list");
    for (const std::uint8_t order : module.orders) {
        require(order < module.patterns.size(), "the order list names a pattern that is not there");
    }
    for (std::size_t i = 0; i < module.patterns.size(); ++i) {
        checkPattern(module.patterns[i], module, "pattern " + std::to_string(i));
    }
    for (const XmInstrument& instrument : module.instruments) {
        checkInstrument(instrument, "instrument \"" + instrument.name + "\"");
    }
}

void writeHeader(ByteWriter& out, const XmModule& module)
{
    constexpr int kTitleBytes = 20;
    constexpr int kLinearSlides = 1;
    out.text("Extended Module: ", 17);
    out.text(module.title, kTitleBytes, ' ');
    out.u8(0x1A);
    out.text(module.tracker, kTitleBytes, ' ');
    out.u16(kVersion);
    out.u32(kHeaderBytes);
    out.u16(static_cast<int>(module.orders.size()));
    out.u16(module.restart);
    out.u16(module.channels);
    out.u16(static_cast<int>(module.patterns.size()));
    out.u16(static_cast<int>(module.instruments.size()));
    out.u16(kLinearSlides);
    out.u16(module.speed);
    out.u16(module.tempo);
    for (std::size_t i = 0; i < kOrderSlots; ++i) {
        out.u8(i < module.orders.size() ? module.orders[i] : 0);
    }
}

} // namespace

std::vector<std::uint8_t> writeXm(const XmModule& module)
{
    checkModule(module);
    ByteWriter out;
    writeHeader(out, module);
    for (const XmPattern& pattern : module.patterns) {
        writePattern(out, pattern);
    }
    for (const XmInstrument& instrument : module.instruments) {
        writeInstrument(out, instrument);
    }
    return out.bytes();
}
