// A game of a cart as an image of its own, to see what it shows without the cart.
#pragma once

#include <filesystem>

#include "builder/tables/cart_tables.h"
#include "support/file_problem.h"

namespace bw {

// Writes a plain iNES image with the bytes that the tables name: any size that they can tell fits
// its header. Streams; a place beyond the ROM's end reads as 0xFF. The PRG of a small game comes
// several times over where the board can't show less (128 KB on COOLBOY and MINDKIDS), which the
// game doesn't see.
FileResult<> WriteAloneImage(const std::filesystem::path& cart, const CartTables& tables,
                             const CartGame& game, const std::filesystem::path& image);

}  // namespace bw
