#include "art/music/score/score_reader.h"

#include "art/music/score/cells.h"
#include "art/music/score/words.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <utility>

namespace {

constexpr int kPatternRows = 64; // of a pattern that says no other number
constexpr int kMaxRows = 256;
constexpr int kMaxChannels = 32;
constexpr int kMaxIncludes = 16; // one within the other
constexpr std::size_t kAny = SIZE_MAX;

class ScoreReader {
public:
    void readFile(const std::filesystem::path& path)
    {
        // Asked for first: opening a pipe would wait for a writer.
        std::error_code error;
        const bool isFile = std::filesystem::is_regular_file(path, error);
        std::ifstream stream(isFile ? path : "");
        require(stream.good(), "cannot read " + path.string());
        read(stream, path);
    }

    void read(std::istream& stream, const std::filesystem::path& path)
    {
        require(++depth_ <= kMaxIncludes, "includes go round in a circle");
        const std::filesystem::path outer = std::exchange(path_, path);
        int line = 0;
        for (std::string text; std::getline(stream, text);) {
            ++line;
            place_ = path.string() + ":" + std::to_string(line) + ": ";
            try {
                readLine(text.substr(0, text.find(';')));
            } catch (const LineFault& fault) {
                throw ScoreError(place_ + fault.what());
            }
        }
        path_ = outer;
        --depth_;
    }

    // Names in the order list may stand before their patterns, so they are looked up at the end.
    Score finish()
    {
        for (const std::string& name : patternNames_) {
            score_.patterns.push_back(blocks_.at(name));
        }
        for (const OrderName& order : orderNames_) {
            const auto found = std::find(patternNames_.begin(), patternNames_.end(), order.pattern);
            if (found == patternNames_.end()) {
                throw ScoreError(order.place + "no pattern " + inQuotes(order.pattern));
            }
            score_.orders.push_back(static_cast<int>(found - patternNames_.begin()));
        }
        if (score_.orders.empty()) {
            throw ScoreError(place_ + "the score has no order list");
        }
        return std::move(score_);
    }

private:
    struct OrderName {
        std::string place;
        std::string pattern;
    };

    struct Statement {
        void (ScoreReader::*read)(const Words&);
        std::size_t fewest; // arguments
        std::size_t most;
        const char* usage;
    };

    // The statement that begins with this word, or null.
    static const Statement* findStatement(const std::string& word)
    {
        static const std::map<std::string, Statement> kStatements = {
            {"title",      {&ScoreReader::readTitle, 1, kAny, "title NAME"}               },
            {"tempo",      {&ScoreReader::readTempo, 1, 1, "tempo BEATS"}                 },
            {"speed",      {&ScoreReader::readSpeed, 1, 1, "speed TICKS"}                 },
            {"instrument", {&ScoreReader::readInstrument, 2, 2, "instrument NUMBER NAME"} },
            {"channel",    {&ScoreReader::readChannel, 1, kAny, "channel NAME ..."}       },
            {"order",      {&ScoreReader::readOrder, 2, kAny, "order SECTION PATTERN ..."}},
            {"block",      {&ScoreReader::readBlock, 2, 2, "block NAME ROWS"}             },
            {"pattern",    {&ScoreReader::readPattern, 1, 2, "pattern NAME [ROWS]"}       },
            {"play",       {&ScoreReader::readPlay, 2, kAny, "play BLOCK ROW ..."}        },
            {"swing",      {&ScoreReader::readSwing, 2, 2, "swing EVEN ODD"}              },
            {"include",    {&ScoreReader::readInclude, 1, 1, "include FILE"}              },
        };
        const auto found = kStatements.find(word);
        return found == kStatements.end() ? nullptr : &found->second;
    }

    void readLine(const std::string& line)
    {
        const Words words = splitWords(line);
        if (words.empty()) {
            return;
        }
        if (const Statement* statement = findStatement(words[0])) {
            const std::size_t arguments = words.size() - 1;
            require(arguments >= statement->fewest && arguments <= statement->most,
                    std::string("expected: ") + statement->usage);
            (this->*statement->read)(words);
        } else if (line.find('|') != std::string::npos) {
            readTableLine(line);
        } else if (line.find(':') != std::string::npos) {
            readPhrase(line);
        } else {
            complain("no statement " + inQuotes(words[0]));
        }
    }

    void readTitle(const Words& words)
    {
        score_.title = words[1];
        for (std::size_t i = 2; i < words.size(); ++i) {
            score_.title += " " + words[i];
        }
    }
    void readTempo(const Words& words) { score_.tempo = readNumber(words[1], 32, 255, "tempo"); }
    void readSpeed(const Words& words) { score_.speed = readNumber(words[1], 1, 31, "speed"); }

    void readInstrument(const Words& words)
    {
        const int number = readNumber(words[1], 1, 128, "instrument", 16);
        const auto same = [number](const ScoreInstrument& i) { return i.number == number; };
        require(std::none_of(score_.instruments.begin(), score_.instruments.end(), same),
                "instrument " + words[1] + " is there already");
        score_.instruments.push_back({number, words[2]});
    }

    // channel NAME [INSTRUMENT] [pan XX] [echo CHANNEL ROWS PERCENT]
    void readChannel(const Words& words)
    {
        require(blocks_.empty(), "channels come before blocks and patterns");
        require(score_.channels.size() < kMaxChannels, "more than 32 channels");
        require(!channelIndex_.contains(words[1]), "channel " + words[1] + " is there already");
        ScoreChannel channel;
        channel.name = words[1];
        for (std::size_t i = 2; i < words.size();) {
            if (words[i] == "pan" && i + 1 < words.size()) {
                channel.panning = readNumber(words[i + 1], 0, 255, "pan", 16);
                i += 2;
            } else if (words[i] == "echo" && i + 3 < words.size()) {
                channel.echo = ScoreEcho{readChannelName(words[i + 1]),
                                         readNumber(words[i + 2], 1, kPatternRows, "echo rows"),
                                         readNumber(words[i + 3], 1, 100, "echo percent")};
                i += 4;
            } else {
                channel.instrument = readNumber(words[i], 1, 128, "instrument", 16);
                ++i;
            }
        }
        channelIndex_[channel.name] = static_cast<int>(score_.channels.size());
        score_.channels.push_back(channel);
    }

    void readOrder(const Words& words)
    {
        if (score_.sections.empty() || score_.sections.back().name != words[1]) {
            score_.sections.push_back({words[1], orderNames_.size()});
        }
        for (std::size_t i = 2; i < words.size(); ++i) {
            orderNames_.push_back({place_, words[i]});
        }
    }

    void readBlock(const Words& words)
    {
        begin(words[1], readNumber(words[2], 1, kMaxRows, "rows"));
    }

    void readPattern(const Words& words)
    {
        begin(words[1],
              words.size() > 2 ? readNumber(words[2], 1, kMaxRows, "rows") : kPatternRows);
        patternNames_.push_back(words[1]);
    }

    // What follows goes into a new grid, until the next one begins.
    void begin(const std::string& name, int rows)
    {
        require(!score_.channels.empty(), "no channels yet");
        require(!blocks_.contains(name), inQuotes(name) + " is there already");
        ScorePattern grid;
        grid.name = name;
        grid.rows = rows;
        grid.channels = static_cast<int>(score_.channels.size());
        grid.cells.resize(std::size_t(grid.rows) * std::size_t(grid.channels));
        current_ = &(blocks_[name] = std::move(grid));
        columns_.clear();
    }

    struct Placement {
        std::optional<int> channel; // instead of the block's own
        int semitones = 0;
        int percent = 100;
    };

    // False if `option` is not an option of `play`.
    bool readPlacement(const std::string& option, const std::string& value, Placement& placement)
    {
        if (option == "on") {
            placement.channel = readChannelName(value);
        } else if (option == "up") {
            placement.semitones = readNumber(value, 0, 48, "up");
        } else if (option == "down") {
            placement.semitones = -readNumber(value, 0, 48, "down");
        } else if (option == "level") {
            placement.percent = readNumber(value, 1, 100, "level");
        } else {
            return false;
        }
        return true;
    }

    // play BLOCK [on CHANNEL] [up N] [down N] [level PERCENT] ROW ...
    void readPlay(const Words& words)
    {
        require(current_ != nullptr, "play stands in a block or a pattern");
        const auto found = blocks_.find(words[1]);
        require(found != blocks_.end(), "no block " + inQuotes(words[1]));
        require(&found->second != current_, "a block cannot play itself");
        Placement placement;
        std::vector<int> rows;
        for (std::size_t i = 2; i < words.size(); ++i) {
            if (i + 1 < words.size() && readPlacement(words[i], words[i + 1], placement)) {
                ++i;
            } else {
                rows.push_back(readNumber(words[i], 0, current_->rows - 1, "row"));
            }
        }
        require(!rows.empty(), "play: no row to begin at");
        for (const int row : rows) {
            put(found->second, row, placement);
        }
    }

    void put(const ScorePattern& block, int firstRow, const Placement& placement)
    {
        require(firstRow + block.rows <= current_->rows,
                "block " + block.name + " runs past the last row");
        int used = -1;
        for (int row = 0; row < block.rows; ++row) {
            for (int channel = 0; channel < block.channels; ++channel) {
                const ScoreCell& cell = block.at(row, channel);
                if (isEmpty(cell)) {
                    continue;
                }
                require(!placement.channel || used == -1 || used == channel,
                        "block " + block.name + " has several channels, so it has no other place");
                used = channel;
                overlay(current_->at(firstRow + row, placement.channel.value_or(channel)),
                        softened(transposed(cell, placement.semitones), placement.percent));
            }
        }
    }

    // Two rows together keep their length, and so does a bar.
    void readSwing(const Words& words)
    {
        require(current_ != nullptr && !patternNames_.empty() &&
                    current_->name == patternNames_.back(),
                "swing stands in a pattern");
        const int even = readNumber(words[1], 1, 31, "swing");
        const int odd = readNumber(words[2], 1, 31, "swing");
        require(even + odd == 2 * score_.speed,
                "swing: two rows have " + std::to_string(2 * score_.speed) + " ticks");
        current_->swing = ScoreSwing{even, odd};
    }

    void readInclude(const Words& words) { readFile(path_.parent_path() / words[1]); }

    // "| kick | snare" names the columns of the rows that follow: "16 | x v40 | ...".
    void readTableLine(const std::string& line)
    {
        require(current_ != nullptr, "a table stands in a block or a pattern");
        Words cells = splitAt(line, '|');
        const Words row = splitWords(cells[0]);
        cells.erase(cells.begin());
        if (!cells.empty() && splitWords(cells.back()).empty()) {
            cells.pop_back();
        }
        if (row.empty()) {
            nameColumns(cells);
            return;
        }
        require(row.size() == 1, "a row has one number");
        require(cells.size() <= columns_.size(), "more cells than named columns");
        const int number = readNumber(row[0], 0, current_->rows - 1, "row");
        for (std::size_t i = 0; i < cells.size(); ++i) {
            putCell(cells[i], current_->at(number, columns_[i]));
        }
    }

    void nameColumns(const Words& cells)
    {
        columns_.clear();
        for (const std::string& cell : cells) {
            const Words names = splitWords(cell);
            require(names.size() == 1, "a column has one name");
            columns_.push_back(readChannelName(names[0]));
        }
    }

    // "bass: 00 D-2, 06 F-2 v40" is one channel, read along instead of down.
    void readPhrase(const std::string& line)
    {
        require(current_ != nullptr, "a phrase stands in a block or a pattern");
        const std::size_t colon = line.find(':');
        const Words names = splitWords(line.substr(0, colon));
        require(names.size() == 1, "a phrase has one channel");
        const int channel = readChannelName(names[0]);
        for (const std::string& piece : splitAt(line.substr(colon + 1), ',')) {
            const Words words = splitWords(piece);
            require(words.size() >= 2, "expected a row and its cell, found " + inQuotes(piece));
            const int row = readNumber(words[0], 0, current_->rows - 1, "row");
            putCell(piece.substr(piece.find(words[0]) + words[0].size()),
                    current_->at(row, channel));
        }
    }

    [[nodiscard]] int readChannelName(const std::string& name) const
    {
        const auto found = channelIndex_.find(name);
        require(found != channelIndex_.end(), "no channel " + inQuotes(name));
        return found->second;
    }

    Score score_;
    std::map<std::string, ScorePattern> blocks_; // patterns too: a pattern may play another
    Words patternNames_;
    std::map<std::string, int> channelIndex_;
    std::vector<OrderName> orderNames_;
    ScorePattern* current_ = nullptr; // in blocks_
    std::vector<int> columns_;        // channels
    std::filesystem::path path_;
    std::string place_; // "file:line: "
    int depth_ = 0;
};

} // namespace

Score readScore(const std::filesystem::path& path)
{
    ScoreReader reader;
    try {
        reader.readFile(path);
    } catch (const LineFault& fault) {
        throw ScoreError(fault.what());
    }
    return reader.finish();
}

Score readScoreText(const std::string& text, const std::filesystem::path& name)
{
    ScoreReader reader;
    std::istringstream stream(text);
    reader.read(stream, name);
    return reader.finish();
}
