// Colours that the console doesn't show, tiles that nothing shows, and cells without a tile.
#include <bitset>

#include "builder/design_check/console_sprites.h"
#include "builder/design_check/design_checks.h"
#include "builder/tables/design_compile.h"
#include "designer/model/tiles.h"
#include "designer/tools/used_tiles.h"

namespace bw {
namespace {

constexpr size_t kPaletteColours = 4;
constexpr unsigned kColourMask = 0x3F;  // the console ignores the upper bits

void CheckBackdrop(const DesignStore& store, PatternTable side, FindingList& findings) {
    const bool background = side == PatternTable::kBackground;
    const auto& palette = background ? store.BkgPalette : store.SpritePalette;
    const unsigned backdrop = store.SpritePalette[0] & kColourMask;
    for (size_t entry = 0; entry < palette.size(); entry += kPaletteColours) {
        const unsigned colour = palette[entry] & kColourMask;
        if (colour == backdrop) continue;
        findings.Add(FindingSeverity::kWarning,
                     background ? TextId::kFindingBkgBackdrop : TextId::kFindingSpriteBackdrop,
                     PaletteEntry{side, static_cast<uint8_t>(entry)}, entry / kPaletteColours,
                     colour, backdrop);
    }
}

// Tiles of the table that a tool would blank, where there is no blank one left.
void CheckUnused(const WorkingCopy& copy, PatternTable table, FindingList& findings) {
    if (FirstBlankTile(copy.Store(), table, 0) != kTileCount) return;
    TileSet used = TilesInUse(copy, table);
    const bool background = table == PatternTable::kBackground;
    if (background && copy.Store().BigSprite != 0) {
        // A tall cursor shows tiles of the background, which the tool doesn't count.
        for (const TileItem& part : CursorTiles(copy.document))
            if (part.Tile % 2 == 0) used.set(part.Tile).set(part.Tile | 1u);
    }
    // Cells and sprites without a tile of their own show tile 0.
    int first = 1;
    while (first < kTileCount && used.test(static_cast<size_t>(first)))
        ++first;
    if (first == kTileCount) return;
    const size_t unused = kTileCount - used.count() - (used.test(0) ? 0 : 1);
    findings.Add(FindingSeverity::kNote,
                 background ? TextId::kFindingUnusedBkgTiles : TextId::kFindingUnusedSpriteTiles,
                 TableTile{table, static_cast<uint8_t>(first)}, unused,
                 static_cast<unsigned>(first),
                 findings.Words(background ? TextId::kClearUnusedBackgroundTiles
                                           : TextId::kClearUnusedSpriteTiles));
}

// The designer shows the backdrop there.
void CheckEmptyCells(const DesignStore& store, FindingList& findings) {
    if (IsBlank(TileAt(store, PatternTable::kBackground, 0))) return;
    std::bitset<size_t{kScreenColumns} * kScreenRows> filled;
    const auto fill = [&](int32_t column, int32_t row) {
        filled.set(static_cast<size_t>(row) * kScreenColumns + static_cast<size_t>(column));
    };
    for (const TileItem& item : store.BkgTileList) {
        const bool onScreen =
            item.X >= 0 && item.X < kScreenColumns && item.Y >= 0 && item.Y < kScreenRows;
        if (onScreen) fill(item.X, item.Y);
    }
    for (const TextItem& item : store.CustomText) {
        const ShownText shown = ShownPart(item);
        for (size_t i = 0; i < shown.text.size(); ++i)
            if (shown.text[i] != u' ') fill(static_cast<int32_t>(shown.column + i), item.Y);
    }
    if (filled.all()) return;
    int32_t first = 0;
    while (filled.test(static_cast<size_t>(first)))
        ++first;
    const ScreenCell cell{first % kScreenColumns, first / kScreenColumns};
    findings.Add(FindingSeverity::kWarning, TextId::kFindingEmptyCells, cell,
                 filled.size() - filled.count(), cell.column, cell.row);
}

}  // namespace

void CheckTables(const CheckedDesign& design, FindingList& findings) {
    const DesignStore& store = design.copy.Store();
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        CheckBackdrop(store, table, findings);
        CheckUnused(design.copy, table, findings);
    }
    CheckEmptyCells(store, findings);
}

}  // namespace bw
