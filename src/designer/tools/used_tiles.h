// Which tiles of the pattern tables something on the screen shows.
#pragma once

#include <bitset>
#include <string_view>

#include "designer/model/working_copy.h"

namespace bw {

using ByteSet = std::bitset<256>;  // character codes
using TileSet = std::bitset<kTileCount>;

void AddCharacters(ByteSet& set, std::u16string_view text);

// The characters that the menu prints by the character map: names, caption, page numbers. The texts
// placed on the screen are not among them.
ByteSet PrintedCharacters(const WorkingCopy& copy);

// The tiles of what is printed and of the texts placed on the screen.
TileSet TilesOfCharacters(const WorkingCopy& copy);

// Tall sprites of an even number show a pair of the background table.
void AddBkgTilesOfSprites(TileSet& tiles, const DesignStore& store);

// The tiles of a table in use by any of these, by tiles on the screen or by sprites and cursors.
// Cells without a tile count for none.
TileSet TilesInUse(const WorkingCopy& copy, PatternTable table);

}  // namespace bw
