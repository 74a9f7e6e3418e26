// Decides where in the ROM the PRG and CHR data of every game and of the menu lie.
//
// A game sees its PRG (and CHR) through an address mask, so either starts at a multiple of its own
// length. Within that rule the allocator packs tightly, lets identical data share one place, and
// uses the hole below the menu. PRG and CHR live in one address space.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "rom/board_tables.h"
#include "rom/multicart_item.h"

namespace bw {

// A hole in the ROM that can still take data; bytes.
struct FreeRegion {
    uint64_t offset;
    uint64_t length;
};

struct LayoutResult {
    std::vector<MulticartItem> items;  // games and menu with their offsets, in order of index
    uint32_t prgTotal = 0;             // bytes, each distinct PRG CRC counted once
    uint32_t chrTotal = 0;
    uint32_t total = 0;
    uint32_t romSize = 0;  // bytes, a multiple of 16 KB; the largest number if it doesn't fit
};

// Enlarges chrUnits to the next of 1, 2, 4, 8, 16, 32. Counts above 32 stay as they are.
void RoundChrUnits(std::span<MulticartItem> items);

// COOLBOY and MINDKIDS can't mask less than 128 KB but for NROM games: other games of 1 to 7 PRG
// units get 8.
void ApplyPrgMinimum(std::span<MulticartItem> items);

// Where the board starts a menu of this many 16 KB units; bytes.
uint32_t MenuOffset(uint32_t prgUnits, BoardType board);

// Lays out whatever it gets; the limits of the boards are the caller's to test. A menu without PRG
// gives an empty result.
LayoutResult Allocate(MulticartItem menu, std::vector<MulticartItem> games, BoardType board);

// What is left to tell of a layout whose items have their places: its sums, its size by the end of
// the last byte in use, and the items' order.
void FinishLayout(LayoutResult& layout, uint64_t end);

// Two games can have the same data but different spans (a mapper 4 game enlarged to 128 KB beside
// its NROM twin). Sharing then may give the larger one a place that isn't aligned to it or that
// reaches into other data. Such a ROM must not be written.
struct LayoutConflict {
    const MulticartItem* first;  // items of the layout; the same one twice if it just lies wrong
    const MulticartItem* second;
};
std::optional<LayoutConflict> FindLayoutConflict(const LayoutResult& layout);

}  // namespace bw
