// What the capture library sends to the recorder through a pipe, in the machine's own byte order: a
// header, then `bytes` bytes.
//
// Sound comes from the first wanted frame's moment on. It runs one sample ahead of the pictures,
// since a frame has heard its own moment; the last frame's may be missing when the program ends by
// itself.
#pragma once

#include <cstdint>

enum class PacketKind : std::uint32_t {
    started, // OpenGL is there; the bytes are its renderer's name
    picture, // position: the frame; red, green, blue, rows top first
    unseen,  // position: a frame whose picture is not needed; no bytes. Without sound, few are sent
    missing, // position: the frame, whose picture depends on a skipped one; a MissingPicture
    sound,   // position: the first sample pair, counted from the first frame; left, right, 16 bits
};

struct PacketHeader {
    PacketKind kind = PacketKind::picture;
    std::uint32_t bytes = 0;
    std::uint64_t position = 0;
};

struct MissingPicture {
    std::uint64_t drawn = 0; // the frame that would have to be drawn too
    bool isHeld = false;     // nothing was drawn since: the picture is that of the frame before
};
