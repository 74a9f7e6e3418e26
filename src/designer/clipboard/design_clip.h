// What copy and cut take out of a design and paste puts into one: tiles of the pattern tables,
// sprites, pieces of the screen.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"
#include "language/language.h"

namespace bw {

using ClipTiles = std::map<uint8_t, std::array<uint8_t, kTileBytes>>;  // by their numbers

// Plain values. All items lie on the screen, and none is selected or numbered.
struct DesignClip {
    ClipTiles bkgTiles = {};
    ClipTiles spriteTiles = {};
    // One for each cell; its Palette is the sub-palette that it has there.
    std::vector<TileItem> items = {};
    std::vector<TileItem> sprites = {};

    bool Empty() const;
    bool operator==(const DesignClip&) const = default;
};

// Takes out of a clip from elsewhere what can't be in one.
void KeepRules(DesignClip& clip);

// All that is selected, whether it is shown or not: of the screen the topmost selected tile of each
// cell, of sprites the first 255. With nothing of these kinds selected it is the tile in use of the
// active side, of tall sprites the pair. What lies off the screen is left out.
DesignClip ClipOfSelection(const WorkingCopy& copy);

struct ClipCounts {
    size_t tiles = 0;
    size_t items = 0;
    size_t sprites = 0;

    size_t All() const { return tiles + items + sprites; }
    bool operator==(const ClipCounts&) const = default;
};
ClipCounts CountsOf(const DesignClip& clip);
// "2 tile(s), 1 sprite(s)": those that there are any of.
std::u16string CountsText(const ClipCounts& counts, Language language);

struct Pasted {
    Views stale;
    ClipCounts placed;
    ClipCounts lost;  // beyond a limit
};

// One step of the undo history: what is pasted becomes all that is selected.
// - Tiles go to the active side's table from its current tile on, with the gaps that they had; a
// clip
//   of both tables puts each into its own. Those behind a table's end are lost.
// - Items keep their layout; its top left corner goes to the current place of the screen,
// NameCellPos.
//   A cell of the attribute table that they cover whole, in one sub-palette, takes that.
// - Sprites keep theirs, beside items that of the whole clip; alone they go to the current place,
// and
//   a little further where some stand exactly there. Items and sprites off the screen are lost, and
//   sprites beyond 255.
Pasted PasteClip(WorkingCopy& copy, const DesignClip& clip);

}  // namespace bw
