// What differs between a cart and what a programmer has read back of it, or another cart: byte by
// byte, told by game and by sector of the flash.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "builder/carts/cart_contents.h"

namespace bw {

// Bytes of the ROM, not of the files: container headers are left aside on both sides.
struct CartDifference {
    uint64_t begin = 0;
    uint64_t end = 0;
};

struct GameDifference {
    uint32_t game = 0;   // in the menu, from 0
    uint64_t bytes = 0;  // of it that differ
};

struct CartComparison {
    // Of the cart; but filling at its end that the dump doesn't have doesn't count.
    uint64_t romBytes = 0;
    uint64_t dumpBytes = 0;     // of the other file, behind a container's header if it has one
    uint64_t missingBytes = 0;  // of the cart's end that the dump doesn't have
    // Behind the cart's end: all 0xFF (erased flash), or something else.
    uint64_t behindBytes = 0;
    bool behindErased = true;
    uint64_t differing = 0;             // bytes; those that are missing count
    uint64_t menuBytes = 0;             // of them in the menu
    std::vector<GameDifference> games;  // that differ, in the menu's order
    std::vector<uint32_t> sectors;      // that differ, by number from the ROM's start
    uint64_t sectorsInAll = 0;
    uint32_t sectorBytes = 0;
    std::vector<CartDifference> places;  // the first 1,000 runs of bytes that differ

    bool Same() const { return differing == 0; }
};

inline constexpr uint32_t kSectorSizes[] = {4, 64, 128, 256};  // KB

// `dump` is a cart in any container or bare bytes. `sectorBytes`: one of kSectorSizes, in bytes.
// Streams both. `progress`: bytes done, in all;
// false stops with std::errc::operation_canceled.
FileResult<CartComparison> CompareCart(
    const std::filesystem::path& cart, const CartContents& contents,
    const std::filesystem::path& dump, uint32_t sectorBytes,
    const std::function<bool(uint64_t, uint64_t)>& progress = {});

}  // namespace bw
