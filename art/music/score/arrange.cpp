#include "art/music/score/arrange.h"

#include "art/music/score/score_reader.h"

#include <algorithm>
#include <span>
#include <string>

namespace {

using Grid = std::vector<XmCell>; // one cell for each channel

bool isNote(const XmCell& cell)
{
    return cell.note >= 1 && cell.note <= kXmLastNote;
}

bool setsVolume(const XmCell& cell)
{
    return cell.volume >= kXmSetVolume && cell.volume <= kXmSetVolume + 64;
}

XmCell fillIn(const ScoreCell& cell, const ScoreChannel& channel)
{
    XmCell filled;
    filled.note = cell.note.value_or(0);
    const int ownInstrument = isNote(filled) ? channel.instrument : 0;
    filled.instrument = cell.instrument.value_or(static_cast<std::uint8_t>(ownInstrument));
    filled.volume = cell.volume.value_or(0);
    filled.effect = cell.effect ? cell.effect->number : std::uint8_t(0);
    filled.parameter = cell.effect ? cell.effect->parameter : std::uint8_t(0);
    return filled;
}

// Notes, releases and volumes are repeated; slides and other effects are not.
XmCell echoOf(const XmCell& source, int percent)
{
    XmCell echo;
    echo.note = source.note;
    echo.instrument = source.instrument;
    if (isNote(source) || setsVolume(source)) {
        const int volume = setsVolume(source) ? source.volume - kXmSetVolume : 64;
        echo.volume = static_cast<std::uint8_t>(kXmSetVolume + ((volume * percent + 50) / 100));
    }
    return echo;
}

void overlay(XmCell& below, const XmCell& above)
{
    below.note = above.note != 0 ? above.note : below.note;
    below.instrument = above.instrument != 0 ? above.instrument : below.instrument;
    below.volume = above.volume != 0 ? above.volume : below.volume;
    if (above.effect != 0 || above.parameter != 0) {
        below.effect = above.effect;
        below.parameter = above.parameter;
    }
}

// Panning belongs to notes that start their sample afresh: an instrument number resets it.
void pan(XmCell& cell, int panning)
{
    if (!isNote(cell) || cell.instrument == 0) {
        return;
    }
    if (cell.effect == 0 && cell.parameter == 0) {
        cell.effect = kXmEffectPanning;
        cell.parameter = static_cast<std::uint8_t>(panning);
    } else if (cell.volume == 0) {
        cell.volume = static_cast<std::uint8_t>(kXmSetPanning + (panning >> 4));
    }
}

// What a channel's echo leaves in the row that follows the earlier ones.
XmCell echoIn(const ScoreChannel& channel, const std::vector<Grid>& earlier)
{
    if (!channel.echo || std::size_t(channel.echo->rows) > earlier.size()) {
        return {};
    }
    const Grid& row = earlier[earlier.size() - std::size_t(channel.echo->rows)];
    return echoOf(row[std::size_t(channel.echo->source)], channel.echo->percent);
}

Grid fillInRow(const Score& score, const ScorePattern& pattern, int row,
               const std::vector<Grid>& earlier)
{
    Grid grid;
    for (int c = 0; c < pattern.channels; ++c) {
        const ScoreChannel& channel = score.channels[std::size_t(c)];
        const ScoreCell& own = pattern.at(row, c);
        const bool silencesEcho = own.clears || own.note.has_value();
        XmCell cell = silencesEcho ? XmCell() : echoIn(channel, earlier);
        overlay(cell, fillIn(own, channel));
        grid.push_back(cell);
    }
    return grid;
}

// All rows of the piece in the order of playing, with the echoes written out.
std::vector<Grid> unroll(const Score& score)
{
    std::vector<Grid> rows;
    for (const int order : score.orders) {
        const ScorePattern& pattern = score.patterns[std::size_t(order)];
        for (int row = 0; row < pattern.rows; ++row) {
            rows.push_back(fillInRow(score, pattern, row, rows));
        }
    }
    return rows;
}

bool setsSpeed(const XmCell& cell)
{
    constexpr int kFirstTempo = 0x20;
    return cell.effect == kXmEffectSpeed && cell.parameter < kFirstTempo;
}

// Writes a row's speed where one is set already, or into the first empty effect column. The last
// channel is left alone: it belongs to the picture.
void setSpeed(XmPattern& pattern, int row, int ticks)
{
    XmCell* place = nullptr;
    for (int c = pattern.channels() - 2; c >= 0; --c) {
        XmCell& cell = pattern.at(row, c);
        if (setsSpeed(cell)) {
            place = &cell;
            break;
        }
        place = cell.effect == 0 && cell.parameter == 0 ? &cell : place;
    }
    if (place == nullptr) {
        throw ScoreError("row " + std::to_string(row) + ": no effect column is free for a speed");
    }
    place->effect = kXmEffectSpeed;
    place->parameter = static_cast<std::uint8_t>(ticks);
}

// The speeds of a pattern that swings; behind one, a straight pattern begins with the song's own.
void writeSpeeds(XmPattern& pattern, const std::optional<ScoreSwing>& swing, bool swungBefore,
                 int speed)
{
    if (!swing && swungBefore) {
        setSpeed(pattern, 0, speed);
    }
    for (int row = 0; swing && row < pattern.rows(); ++row) {
        setSpeed(pattern, row, row % 2 == 0 ? swing->even : swing->odd);
    }
}

std::uint8_t findOrAdd(std::vector<XmPattern>& patterns, const XmPattern& pattern)
{
    const auto found = std::find(patterns.begin(), patterns.end(), pattern);
    const auto index = static_cast<std::uint8_t>(found - patterns.begin());
    if (found == patterns.end()) {
        patterns.push_back(pattern);
    }
    return index;
}

// A pattern of these rows, each note where its channel sits.
XmPattern patternOf(const Score& score, std::span<const Grid> rows)
{
    const int channels = static_cast<int>(score.channels.size());
    XmPattern pattern(static_cast<int>(rows.size()), channels);
    for (int row = 0; row < pattern.rows(); ++row) {
        for (int c = 0; c < channels; ++c) {
            XmCell cell = rows[std::size_t(row)][std::size_t(c)];
            if (const auto panning = score.channels[std::size_t(c)].panning) {
                pan(cell, *panning);
            }
            pattern.at(row, c) = cell;
        }
    }
    return pattern;
}

bool isDeclared(const Score& score, int number)
{
    return std::any_of(score.instruments.begin(), score.instruments.end(),
                       [number](const ScoreInstrument& player) { return player.number == number; });
}

} // namespace

XmModule arrange(const Score& score)
{
    XmModule module;
    module.title = score.title;
    module.speed = score.speed;
    module.tempo = score.tempo;
    module.channels = static_cast<int>(score.channels.size());

    const std::vector<Grid> rows = unroll(score);
    std::size_t next = 0;
    bool swungBefore = false;
    for (const int order : score.orders) {
        const ScorePattern& source = score.patterns[std::size_t(order)];
        const auto count = static_cast<std::size_t>(source.rows);
        XmPattern pattern = patternOf(score, std::span(rows).subspan(next, count));
        next += count;
        writeSpeeds(pattern, source.swing, swungBefore, score.speed);
        swungBefore = source.swing.has_value();
        module.orders.push_back(findOrAdd(module.patterns, pattern));
    }
    return module;
}

void checkPlayers(const Score& score)
{
    for (const ScorePattern& pattern : score.patterns) {
        for (int row = 0; row < pattern.rows; ++row) {
            for (int c = 0; c < pattern.channels; ++c) {
                const ScoreCell& cell = pattern.at(row, c);
                const ScoreChannel& channel = score.channels[static_cast<std::size_t>(c)];
                const bool hasNote = cell.note && *cell.note <= kXmLastNote;
                const int player = cell.instrument.value_or(hasNote ? channel.instrument : 0);
                const bool needsPlayer = hasNote && !cell.instrument;
                if ((player != 0 && !isDeclared(score, player)) || (player == 0 && needsPlayer)) {
                    throw ScoreError("pattern " + pattern.name + ", row " + std::to_string(row) +
                                     ", channel " + channel.name +
                                     ": no such instrument: " + std::to_string(player));
                }
            }
        }
    }
}
