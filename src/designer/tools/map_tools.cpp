#include "designer/tools/map_tools.h"

#include <algorithm>
#include <array>
#include <utility>

#include "designer/model/tiles.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/tile_tools.h"
#include "designer/tools/used_tiles.h"

namespace bw {
namespace {

constexpr int kFirstCode = 32;  // the characters of the font
constexpr int kCodeCount = 64;

void CopyCharacter(DesignStore& store, int code, int tile) {
    std::ranges::copy(FontTile(store, code),
                      TileAt(store, PatternTable::kBackground, tile).begin());
    store.CharMapData[static_cast<size_t>(code)] = static_cast<uint8_t>(tile);
}

// A character that isn't wanted takes no tile, but the search for a blank one runs for it all the
// same, so that the walk ends where the table is full even if only such characters are left.
void MapCharacters(WorkingCopy& copy, const ByteSet& wanted) {
    DesignStore& store = copy.Store();
    int tile = CurrentTile(copy, PatternTable::kBackground);
    for (int code = kFirstCode; code < kFirstCode + kCodeCount && tile < kTileCount; ++code) {
        tile = FirstBlankTile(store, PatternTable::kBackground, tile);
        if (tile == kTileCount) return;
        if (wanted.test(static_cast<size_t>(code))) CopyCharacter(store, code, tile++);
    }
}

void BlankUnused(DesignStore& store, PatternTable table, const ByteSet& used) {
    for (int tile = 0; tile < kTileCount; ++tile)
        if (!used.test(static_cast<size_t>(tile))) {
            std::ranges::fill(TileAt(store, table, tile), uint8_t{0});
        }
}

void MoveTile(DesignStore& store, PatternTable table, int from, int to) {
    const Tile source = TileAt(store, table, from);
    std::ranges::copy(source, TileAt(store, table, to).begin());
    std::ranges::fill(source, uint8_t{0});
}

void Follow(uint8_t& tile, int from, int to) {
    if (tile == from) tile = static_cast<uint8_t>(to);
}

void FollowSprites(DesignStore& store, int from, int to) {
    for (std::vector<TileItem>* list : {&store.SpriteTileList, &store.ArrowTileList})
        for (TileItem& item : *list)
            Follow(item.Tile, from, to);
    Follow(store.ArrowTile.Tile, from, to);
}

// Drops the items whose tile is blank and numbers the rest.
uint32_t DropBlankItems(const DesignStore& store, PatternTable table,
                        std::vector<TileItem>& items) {
    std::erase_if(items,
                  [&](const TileItem& item) { return IsBlank(TileAt(store, table, item.Tile)); });
    return Renumber(items);
}

// Moves each tile down into the first gap; `follow` is told where a tile went.
template <typename FollowTile>
void CloseGaps(DesignStore& store, PatternTable table, FollowTile follow) {
    for (int gap = 1; gap < kTileCount; ++gap) {
        if (!IsBlank(TileAt(store, table, gap))) continue;
        int tile = gap + 1;
        while (tile < kTileCount && IsBlank(TileAt(store, table, tile)))
            ++tile;
        if (tile == kTileCount) return;
        MoveTile(store, table, tile, gap);
        follow(tile, gap);
    }
}

// Pairs of tiles. The pair right behind a gap stays where it is, and only odd numbers, those of the
// sprite table, are followed.
void CloseGapsBetweenPairs(DesignStore& store) {
    const auto blank = [&](int pair) {
        return IsBlank(TileAt(store, PatternTable::kSprites, pair * 2)) &&
               IsBlank(TileAt(store, PatternTable::kSprites, pair * 2 + 1));
    };
    constexpr int kPairs = kTileCount / 2;
    for (int gap = 0; gap < kPairs; ++gap) {
        if (!blank(gap)) continue;
        int pair = gap + 2;
        while (pair < kPairs && blank(pair))
            ++pair;
        if (pair >= kPairs) continue;
        for (const int half : {0, 1})
            MoveTile(store, PatternTable::kSprites, pair * 2 + half, gap * 2 + half);
        FollowSprites(store, pair * 2 + 1, gap * 2 + 1);
    }
}

}  // namespace

Views MapAllCharacters(WorkingCopy& copy) {
    MapCharacters(copy, ByteSet().set());
    return TableViews(PatternTable::kBackground);
}

Views MapUsedCharacters(WorkingCopy& copy) {
    ByteSet wanted = PrintedCharacters(copy);
    // These are tile numbers among character codes. Designs have been mapped that way all along, so
    // it stays.
    AddBkgTilesOfSprites(wanted, copy.Store());
    copy.Store().CharMapData.fill(0);
    MapCharacters(copy, wanted);
    return TableViews(PatternTable::kBackground) | View::kSourceStrip | View::kTargetStrip;
}

Views ClearUnusedBkgTiles(WorkingCopy& copy) {
    BlankUnused(copy.Store(), PatternTable::kBackground,
                TilesInUse(copy, PatternTable::kBackground));
    return TableViews(PatternTable::kBackground);
}

Views ClearUnusedSpriteTiles(WorkingCopy& copy) {
    BlankUnused(copy.Store(), PatternTable::kSprites, TilesInUse(copy, PatternTable::kSprites));
    return TableViews(PatternTable::kSprites);
}

Views OrganiseBkgTiles(WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    copy.nextBkgIndex = DropBlankItems(store, PatternTable::kBackground, store.BkgTileList);
    CloseGaps(store, PatternTable::kBackground, [&](int from, int to) {
        for (TileItem& item : store.BkgTileList)
            Follow(item.Tile, from, to);
        for (uint8_t& tile : store.CharMapData)
            Follow(tile, from, to);
    });
    return TableViews(PatternTable::kBackground);
}

Views OrganiseSpriteTiles(WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    if (store.BigSprite != 0) {
        CloseGapsBetweenPairs(store);
        return TableViews(PatternTable::kSprites);
    }
    copy.nextSpriteIndex = DropBlankItems(store, PatternTable::kSprites, store.SpriteTileList);
    CloseGaps(store, PatternTable::kSprites,
              [&](int from, int to) { FollowSprites(store, from, to); });
    return TableViews(PatternTable::kSprites);
}

Views CopyFont(WorkingCopy& copy, PatternTable table) {
    const int first = CurrentTile(copy, table);
    for (int i = 0; i < kCodeCount && first + i < kTileCount; ++i) {
        std::ranges::copy(FontTile(copy.Store(), kFirstCode + i),
                          TileAt(copy.Store(), table, first + i).begin());
    }
    return TableViews(table);
}

Views ResetCharMap(WorkingCopy& copy) {
    SetDefaultCharMap(copy.Store());
    return View::kNameTable;
}

}  // namespace bw
