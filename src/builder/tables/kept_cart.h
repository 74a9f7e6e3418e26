// An earlier cart whose games stay where they are in a new one, so that only what changed has to be
// burned.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "builder/layout/bank_layout.h"
#include "builder/layout/kept_layout.h"
#include "builder/tables/cart_file.h"
#include "builder/tables/cart_tables.h"

namespace bw {

// Which sectors of the flash have to be burned again.
struct SectorChanges {
    static constexpr uint32_t kBytes = 128 * 1024;  // of a sector
    uint32_t sectors = 0;                           // of the new ROM
    std::vector<uint32_t> changed;                  // rising numbers from the ROM's start
};

class KeptCart {
  public:
    // As ReadCart.
    static FileResult<KeptCart> Open(const std::filesystem::path& path);

    BoardType Board() const { return tables_.board; }
    // The places of the cart's games where data begins that may be that of the items: of the same
    // length and sum. Reads the whole cart once.
    std::vector<KeptPlace> PlacesFor(std::span<const MulticartItem> items) const;
    // Gives what the layout leaves unused in a new ROM the cart's bytes, so that no sector changes
    // without need, and compares. `rom` holds the ROM from `start` on. What the cart doesn't have
    // counts as erased.
    FileResult<SectorChanges> FillGaps(const LayoutResult& layout, File& rom, uint64_t start,
                                       uint64_t bytes) const;

  private:
    KeptCart(CartFile file, CartTables tables)
        : file_(std::move(file)), tables_(std::move(tables)) {}

    CartFile file_;  // stays open: the path may be that of the new cart
    CartTables tables_;
};

}  // namespace bw
