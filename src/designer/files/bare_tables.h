// Tables without a header, as other programs of the console's developers read and write them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "designer/model/working_copy.h"

namespace bw {

inline constexpr size_t kNameTableSize = 960;
inline constexpr size_t kVideoMemorySize = 16384;
inline constexpr size_t kSpritesInMemory = 64;

// Tiles from the number `first` on, 0 to 255. None leave their pattern table.
void ReadTiles(std::span<const uint8_t> bytes, PatternTable table, size_t first,
               DesignStore& store);
// The marked tiles in their order; the whole table if `marked` is false or none is marked.
std::vector<uint8_t> StoredTiles(PatternTable table, bool marked, const DesignStore& store);

// Adds an item for each tile that isn't 0; bytes behind the screen's end aren't read.
void ReadNameTable(std::span<const uint8_t> bytes, WorkingCopy& copy);
// What the view of the name table shows. `selected`: of the tiles only the selected ones, if any.
std::vector<uint8_t> StoredNameTable(bool selected, const WorkingCopy& copy);

// A byte for each of 32 by 32 cells (NESdev wiki, MMC5, "Extended attributes"): bits 7-6 the
// palette, the others 0.
std::vector<uint8_t> StoredMmc5Attributes(const DesignStore& store);

// Replaces the sprites. See LoadPart for what is left out.
void ReadSprites(std::span<const uint8_t> bytes, WorkingCopy& copy);
// Records that hold no sprite are F8 throughout. `odd`: only those with odd tile numbers, if any
// sprite is selected. Nothing if more than 64 are on the screen.
std::optional<std::vector<uint8_t>> StoredSprites(bool odd, const DesignStore& store);

// An image of the console's video memory: pattern tables, the screen's name table and attributes at
// `screen`, palettes. Replaces the lists but the large cursor. The image has exactly 16384 bytes.
void ReadVideoMemory(std::span<const uint8_t, kVideoMemorySize> image, size_t screen,
                     WorkingCopy& copy);

}  // namespace bw
