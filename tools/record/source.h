#pragma once

#include "tools/capture/packets.h"
#include "tools/record/process.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Something that sends packets of the show through a pipe: the show itself, or what it was recorded
// to before.
class Source {
public:
    using Take = std::function<void(const PacketHeader&, std::vector<std::uint8_t>)>;

    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    virtual ~Source() = default;

    // Reads what the pipe holds now, and calls `take` if that completes a packet. Reads one packet
    // at most. Closes the pipe when there are no more.
    virtual void read(const Take& take) = 0;

    [[nodiscard]] virtual const FileDescriptor& pipe() const = 0;
    [[nodiscard]] bool isOpen() const { return pipe().isOpen(); }

    // Ends it at once.
    virtual void stop() = 0;

    // Once the pipe is closed: waits for the end, and returns why it is not the one that was
    // wanted, or nothing.
    virtual std::string fault() = 0;
};
