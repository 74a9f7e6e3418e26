// A layout that leaves games where an earlier cart has them, so that only what changed has to be
// burned.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "builder/layout/bank_layout.h"

namespace bw {

// Data that lies in the earlier cart: PRG or CHR of one of its games.
struct KeptPlace {
    uint32_t offset = 0;  // bytes from the ROM's start
    uint32_t bytes = 0;
    uint32_t crc = 0;  // of these bytes
};

// As Allocate, but data that one of the places has (same sum and length) stays there wherever the
// board can use it from there (aligned to its span, clear of the menu and of other data). All else
// goes into the gaps in between, the largest first, then behind. `keptBytes`, if given, receives
// how many bytes have stayed where they were.
LayoutResult AllocateKeeping(MulticartItem menu, std::vector<MulticartItem> games, BoardType board,
                             std::span<const KeptPlace> places, uint64_t* keptBytes = nullptr);

}  // namespace bw
