// Pattern tables as pictures of 128 by 128 pixels: 16 by 16 tiles in the order of the table, the
// values 0 to 3 of a pixel as four greys.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace bw {

inline constexpr std::array<uint32_t, 4> kTileGreys{0x000000, 0x555555, 0xAAAAAA, 0xFFFFFF};

// The picture as a PNG file.
std::vector<uint8_t> TilePicture(std::span<const uint8_t> table);

// Fills the table from a PNG file whose every pixel is one of the four greys, whatever its colour
// type. The result is what is wrong with the picture, and the table then stays as it was.
std::optional<std::string> ReadTilePicture(std::span<const uint8_t> png, std::span<uint8_t> table);

}  // namespace bw
