// The games of a cart as far as its tables and its manifest tell, and taking them out as images.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "builder/tables/cart_manifest.h"
#include "builder/tables/cart_tables.h"
#include "language/language.h"
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
    // What of the header is only likely, since the tables don't tell it and there is no manifest.
    bool mapperGuessed = false;
    bool mirroringUnknown = false;  // of mappers that switch it
    bool sizeGuessed = false;       // the board shows more than the game may have had
};

struct CartContents {
    CartTables tables;
    bool hasManifest = false;
    std::vector<CartEntry> games;  // in the menu's order
};

// As ReadCart.
FileResult<CartContents> ReadCartContents(const std::filesystem::path& cart);

// What is known and what isn't of a game, in words; empty if all is.
std::u16string NotKnownText(const CartEntry& game, Language language);

enum class SplitEnd : uint8_t {
    kRight,     // the data has the manifest's sums
    kWrong,     // it hasn't: the image is written all the same, and told of
    kNotKnown,  // no sums to compare with
    kCutShort,  // the file ends before the game does: not written
    kExists,    // a file of that name is there: not written
    kNotWritten,
};
struct SplitGame {
    std::filesystem::path file;
    SplitEnd end = SplitEnd::kNotKnown;
    std::optional<FileProblem> problem;  // kNotWritten
};

// Writes the games into the folder (made if need be), named "001 NAME.nes". No file is replaced;
// one that is there with just these bytes counts as written. `progress` (games done, in all) gives
// false to stop; the result then has the games up to there. A problem: the folder can't be made.
FileResult<std::vector<SplitGame>> SplitCart(
    const std::filesystem::path& cart, const CartContents& contents,
    const std::filesystem::path& folder, const std::function<bool(size_t, size_t)>& progress = {});

}  // namespace bw
