// Files of the show, packed for a page: without loss, and smaller than general packers make them,
// since pictures are packed as pixels and a module's samples as sound.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// Packs a TGA picture, an XM module or, less well, anything else.
Bytes pack(Bytes file);

// The file again: of a picture one with the same pixels, which are not run-length encoded, of all
// else the same bytes. Nothing if it was cut or damaged.
std::optional<Bytes> unpack(std::span<const std::uint8_t> packed);
