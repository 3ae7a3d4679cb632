#include "tools/record/ensemble.h"

#include "tools/record/part_reader.h"

#include <algorithm>
#include <cstring>
#include <thread>
#include <utility>

namespace {

constexpr std::size_t kMaxWaitingPictures = 3;                // of a show
constexpr std::uint64_t kMaxSamplesAhead = kSamplesPerSecond; // of the pictures

constexpr const char* kAll = "all";

// Each of several shows has its share of the processor's cores.
int threadsOf(int jobs)
{
    const auto cores = static_cast<int>(std::thread::hardware_concurrency());
    return jobs > 1 ? std::max(1, cores / jobs) : 0;
}

} // namespace

Ensemble::Ensemble(const RecordOptions& options, const Wanted& wanted,
                   std::function<void(Frame)> take)
    : rate_(options.rate), from_(wanted.from), next_(wanted.from),
      needsAll_(wanted.pictures == kAll),
      drawing_(needsAll_ ? static_cast<std::size_t>(options.jobs) : 1),
      frames_(options.rate, wanted.from, wanted.sound, std::move(take))
{
    if (!options.parts.empty()) {
        drawing_ = 1;
        players_.push_back({std::make_unique<PartReader>(options.parts, PacketKind::picture)});
        if (wanted.sound) {
            players_.push_back(
                {std::make_unique<PartReader>(options.parts, PacketKind::sound), false});
        }
        return;
    }
    if (drawing_ == 1) {
        players_.push_back({std::make_unique<Show>(options, wanted)});
        return;
    }
    for (std::size_t i = 0; i < drawing_; ++i) {
        Wanted share = wanted;
        share.sound = false;
        share.turn = std::to_string(i) + '/' + std::to_string(drawing_);
        share.drawingThreads = threadsOf(options.jobs);
        players_.push_back({std::make_unique<Show>(options, share)});
    }
    if (wanted.sound) {
        Wanted heard = wanted;
        heard.pictures = "";
        players_.push_back({std::make_unique<Show>(options, heard), false});
    }
}

bool Ensemble::isOpen() const
{
    return std::ranges::any_of(players_, [](const Player& each) { return each.source->isOpen(); });
}

Ensemble::Player& Ensemble::turn()
{
    return players_[next_ % drawing_];
}

bool Ensemble::isRead(const Player& player) const
{
    if (!player.source->isOpen() || isOver_) {
        return player.source->isOpen();
    }
    return player.draws ? player.waiting.size() < kMaxWaitingPictures
                        : frames_.heard() < rate_.samplesBefore(next_ + 1) + kMaxSamplesAhead;
}

void Ensemble::appendTo(std::vector<pollfd>& waits) const
{
    for (const Player& player : players_) {
        if (isRead(player)) {
            waits.push_back({player.source->pipe().number(), POLLIN, 0});
        }
    }
}

void Ensemble::serve()
{
    for (Player& player : players_) {
        if (isRead(player)) {
            player.source->read([&](const PacketHeader& header, std::vector<std::uint8_t> bytes) {
                take(player, header, std::move(bytes));
            });
        }
    }
    passOn();
    if (Player& last = turn(); !isOver_ && last.waiting.empty() && !last.source->isOpen()) {
        endWith(last);
    }
    if (Player& heard = players_.back(); !isOver_ && !heard.draws && !heard.source->isOpen() &&
                                         frames_.needsSound() && !turn().waiting.empty()) {
        endWith(heard);
    }
}

void Ensemble::take(Player& player, const PacketHeader& header, std::vector<std::uint8_t> bytes)
{
    const bool isEarly = header.position < from_;
    if (header.kind == PacketKind::started) {
        renderer_.assign(bytes.begin(), bytes.end());
    } else if (header.kind == PacketKind::sound || isEarly) {
        frames_.add(header, std::move(bytes));
    } else if (!isOver_ && (header.kind != PacketKind::unseen || drawing_ == 1)) {
        player.waiting.push_back({header, std::move(bytes)});
    }
}

void Ensemble::passOn()
{
    while (!isOver_ && !frames_.needsSound() && !turn().waiting.empty()) {
        Packet packet = std::move(turn().waiting.front());
        turn().waiting.pop_front();
        if (complete(packet)) {
            ++next_;
            if (drawing_ > 1) {
                latest_ = packet.bytes;
            }
            frames_.add(packet.header, std::move(packet.bytes));
        } else if (needsAll_) {
            stop(); // what comes after it is wanted too
        }
    }
}

// False if the packet's picture is missing and cannot be had.
bool Ensemble::complete(Packet& packet)
{
    if (packet.header.kind != PacketKind::missing) {
        return true;
    }
    MissingPicture missing;
    std::memcpy(&missing, packet.bytes.data(), sizeof missing);
    if (!missing.isHeld || latest_.empty()) {
        missing_.insert(missing.drawn);
        return false;
    }
    packet.header.kind = PacketKind::picture;
    packet.bytes = latest_;
    return true;
}

// This show has ended in its turn, or has no more sound where more is needed. If it was the music's
// end, so do all others; if not, they would go on.
void Ensemble::endWith(Player& last)
{
    isOver_ = true;
    if (players_.size() > 1) {
        fault_ = last.source->fault();
        if (!fault_.empty()) {
            stop();
        }
    }
}

void Ensemble::stop()
{
    isOver_ = true;
    for (Player& player : players_) {
        player.source->stop();
    }
}

std::string Ensemble::fault()
{
    for (Player& player : players_) {
        if (fault_.empty()) {
            fault_ = player.source->fault();
        }
    }
    return fault_;
}
