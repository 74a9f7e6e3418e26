// The games of a cart as far as its tables and its manifest tell.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "builder/tables/cart_tables.h"
#include "language/language.h"
#include "rom/image_crcs.h"
#include "rom/ines_header.h"
#include "support/file_problem.h"

namespace bw {

// One game of the menu.
struct CartEntry {
    std::u16string name;  // as the menu has it, without the number that the settings put before it
    InesHeader header;    // of an image of this game
    uint32_t prgOffset = 0;  // bytes from the ROM's start
    uint32_t prgBytes = 0;   // of the image
    uint32_t chrOffset = 0;
    uint32_t chrBytes = 0;         // 0: CHR RAM
    std::optional<DataCrcs> crcs;  // as the manifest has them
    // What is only likely, since the tables don't tell it and no manifest does.
    bool mapperGuessed = false;  // the board runs others by the same registers
    bool sizeGuessed = false;    // the board shows the PRG several times over

    uint64_t Bytes() const { return uint64_t{prgBytes} + chrBytes; }
};

struct CartContents {
    CartTables tables;
    bool hasManifest = false;
    std::vector<CartEntry> games;  // in the menu's order
};

// As ReadCart. Of a manifest only those entries count that agree with the tables; the other games
// are told of as if there were none.
FileResult<CartContents> ReadCartContents(const std::filesystem::path& cart);

// What isn't known of a game, in words; empty if all is.
std::u16string NotKnownText(const CartEntry& game, Language language);

}  // namespace bw
