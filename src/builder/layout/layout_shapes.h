// The rule by which a ROM is laid out, over no more than it looks at: how long the data of each
// game is and which games have the same. Cheap enough to lay out a cart hundreds of times for one
// answer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "rom/board_tables.h"

namespace bw {

// One game. Data is numbered from 0, PRG and CHR each for themselves; games with the same number
// share a place.
struct GameShape {
    uint32_t prgSpan;  // bytes in the ROM
    uint32_t chrSpan;  // 0: none
    uint32_t prgData;
    uint32_t chrData;
};

struct ShapeLayout {
    std::vector<uint64_t> prgOffsets;  // by number of data, bytes from the ROM's start
    std::vector<uint64_t> chrOffsets;
    std::vector<uint32_t> order;  // the games as the rule has left them, the menu as games.size()
    uint64_t romSize = 0;         // bytes, a multiple of 16 KB
};

// `menuUnits` of 16 KB, not 0. Games of equal length go in the order that they are given in.
ShapeLayout LayOutShapes(uint32_t menuUnits, BoardType board, std::span<const GameShape> games);

}  // namespace bw
