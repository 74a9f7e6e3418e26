// A game of a cart as an image of its own, to see what it shows without the cart.
#pragma once

#include <filesystem>

#include "builder/tables/cart_tables.h"
#include "support/file_problem.h"

namespace bw {

// Writes a plain iNES image (NES 2.0 where the sizes need it) with the bytes that the tables name.
// Streams; a place beyond the file's end reads as 0xFF.
FileResult<> WriteAloneImage(const std::filesystem::path& cart, const CartTables& tables,
                             const CartGame& game, const std::filesystem::path& image);

}  // namespace bw
