// The per-frame operations on 32-bit pixels in their plainest form, byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>

void plainSetAlpha(std::uint8_t* pixels, std::size_t count, std::uint8_t alpha);
void plainSetColourKeyAlpha(std::uint8_t* pixels, std::size_t count, std::uint8_t r, std::uint8_t g,
                            std::uint8_t b, std::uint8_t a);
