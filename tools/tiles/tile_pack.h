// Packs pictures of tiles, written as text, into the console's pattern tables.
//
// A picture file holds, line by line:
//   ; comment                  to the end of the line; empty lines are free
//   tables both                which tables the pictures below go to: background, sprites or both
//   tiles $20 8x1              the pictures of 8 by 1 tiles from tile $20 on: then come 8 lines per
//                              row of tiles, 8 characters per tile. Tiles of one line count on,
//                              the next row of tiles begins 16 tiles later.
// In a picture `.` is colour 0, `#` colour 1, `o` colour 2 and `+` colour 3; blanks don't count.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// Both tables of 256 tiles of 16 bytes, background first (NESdev wiki, PPU pattern tables).
struct PatternTables {
    static constexpr size_t kTiles = 256;
    static constexpr size_t kTileBytes = 16;

    std::array<uint8_t, 2 * kTiles * kTileBytes> bytes{};
    std::array<bool, 2 * kTiles> drawn{};
};

// Draws the pictures of `text` into `tables`. `name` is the file's name for messages. Gives one
// message "name:line: what" per fault; a fault in a picture's line leaves that line blank.
std::vector<std::string> PackTiles(std::string_view text, const std::string& name,
                                   PatternTables& tables);

}  // namespace bw
