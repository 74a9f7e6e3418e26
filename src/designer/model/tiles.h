// The tiles of a design: their pixels and the marks on them.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

using Tile = std::span<uint8_t, kTileBytes>;
using ConstTile = std::span<const uint8_t, kTileBytes>;

// A pattern table in the pixels of both.
std::span<uint8_t, kPatternTableSize> TableIn(std::array<uint8_t, kChrDataSize>& data,
                                              PatternTable table);

// A tile of the pattern tables; `number` is 0 to 255.
Tile TileAt(DesignStore& store, PatternTable table, int number);
ConstTile TileAt(const DesignStore& store, PatternTable table, int number);
// A character of the default font: a tile of the default background table.
ConstTile FontTile(const DesignStore& store, int number);
bool IsBlank(ConstTile tile);

// The marks on a table's tiles: non-zero, selected.
std::array<uint8_t, 256>& TileMarks(DesignStore& store, PatternTable table);
const std::array<uint8_t, 256>& TileMarks(const DesignStore& store, PatternTable table);

// A pixel of a tile, column and row 0 to 7 each; its colour index is 0 to 3.
int PixelOf(ConstTile tile, Pos pixel);
void SetPixel(Tile tile, Pos pixel, int colour);

// The first blank tile from `first` on; kTileCount if there is none.
int FirstBlankTile(const DesignStore& store, PatternTable table, int first);

// The number of the current tile, 0 for a cursor off the table's start.
int CurrentTile(const WorkingCopy& copy, PatternTable table);

// What a change of a table's pixels makes out of date.
Views TableViews(PatternTable table);

}  // namespace bw
