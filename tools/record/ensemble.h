// The shows of a recording. Usually there is one; several draw by turns, a frame each, and one more
// is heard. Each plays the whole show by itself, and skips what is not its own. Parts that are
// joined take the place of a show that draws and of one that is heard.
#pragma once

#include "tools/record/frames.h"
#include "tools/record/record_options.h"
#include "tools/record/show.h"
#include "tools/record/source.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <poll.h>
#include <set>
#include <string>
#include <vector>

class Ensemble {
public:
    // Starts the shows; `take` gets every frame from `wanted.from` on, in order, as soon as it is
    // complete. More than one show draws only if all pictures are wanted. Throws RecordError.
    Ensemble(const RecordOptions& options, const Wanted& wanted, std::function<void(Frame)> take);

    // True until all has come, or the shows were stopped.
    [[nodiscard]] bool isOpen() const;

    // appendTo() adds what to poll for; serve() then reads a little.
    void appendTo(std::vector<pollfd>& waits) const;
    void serve();

    // Ends the shows at once.
    void stop();

    // After the end: completes the last frame.
    void finish() { frames_.finish(); }

    // After the end: why it is not the one that was wanted, or nothing.
    std::string fault();

    // Frames that have to be drawn too: wanted pictures that depend on them were left out. If all
    // pictures are wanted, the shows have been stopped at the first of these.
    [[nodiscard]] const std::set<std::uint64_t>& missing() const { return missing_; }

    // The number of frames so far, skipped ones included.
    [[nodiscard]] std::uint64_t seen() const { return frames_.seen(); }

    // Who draws, once that is known.
    [[nodiscard]] const std::string& renderer() const { return renderer_; }

private:
    struct Packet {
        PacketHeader header;
        std::vector<std::uint8_t> bytes;
    };
    struct Player {
        std::unique_ptr<Source> source;
        bool draws = true;
        std::deque<Packet> waiting = {}; // pictures that are to come in their turn
    };

    [[nodiscard]] Player& turn();
    [[nodiscard]] bool isRead(const Player& player) const;
    void take(Player& player, const PacketHeader& header, std::vector<std::uint8_t> bytes);
    void passOn();
    bool complete(Packet& packet);
    void endWith(Player& last);

    FrameRate rate_;
    std::uint64_t from_;
    std::uint64_t next_; // frame
    bool needsAll_;
    std::vector<Player> players_; // those who draw first
    std::size_t drawing_;         // how many
    FrameAssembler frames_;
    std::vector<std::uint8_t> latest_; // picture, if others draw the one before each
    std::set<std::uint64_t> missing_;
    std::string renderer_;
    std::string fault_;
    bool isOver_ = false;
};
