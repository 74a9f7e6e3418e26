// The design as it is edited: the store that builds read, and what else the screen is made of.
#pragma once

#include <cstdint>

#include "designer/model/design_store.h"

namespace bw {

// A place; each field says in which unit it counts. Two signed 32-bit numbers when stored.
struct Pos {
    static constexpr size_t kStoredSize = 8;

    int32_t X = 0;
    int32_t Y = 0;

    bool operator==(const Pos&) const = default;
};

// Plain values: copy it for a snapshot. The positions are tile columns and rows and may lie outside
// the screen; the store's three addresses follow them only when the design is stored.
struct DesignDocument {
    DesignStore store;
    Pos CaptionPos{12, 2};
    Pos PageNumberPos{13, 27};
    Pos ItemPos{9, 5};
    uint8_t BigCursor = 0;  // non-zero: the large cursor ArrowTileList, not ArrowTile
};

// Numbers the items from 0 on and gives their count.
template <typename Item>
uint32_t Renumber(std::vector<Item>& items) {
    uint32_t next = 0;
    for (Item& item : items)
        item.Index = next++;
    return next;
}

// The video memory address of a place on the screen. A place outside gives the address that the
// same arithmetic leads to, which may lie outside the screen's part of the memory.
uint32_t PpuAddress(const Pos& place);

// Where the console shows a place: a column beside the screen counts on in the neighbouring row.
// The row is beyond the screen's where the address is.
Pos ConsoleCell(const Pos& place);

// Puts the small cursor's default tile to the left of the first item.
void ResetSmallCursor(DesignDocument& document);

// Gives a large cursor of fewer than 4 sprites its default tiles and its place beside the first
// item, its sprites side by side. A longer one stays as it is.
void RebuildShortLargeCursor(DesignDocument& document);

// Puts the sprites of a large cursor of 4 beside and below the first one, which is moved into the
// screen first.
void SpreadLargeCursor(DesignStore& store);

// Hands an edited design on to builds: the three addresses to the document's own store, and to the
// settings all values that LoadDesignData and a build read from there. Weeds CustomText of texts
// that lie outside the screen and numbers the lists anew. False if a value can't be written.
bool StoreDesign(DesignDocument& document, SettingsStore& settings);

}  // namespace bw
