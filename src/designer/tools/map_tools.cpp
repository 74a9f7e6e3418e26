#include "designer/tools/map_tools.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <string_view>
#include <utility>

#include "designer/model/tiles.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

constexpr int kFirstCode = 32;  // the characters of the font
constexpr int kCodeCount = 64;

using ByteSet = std::bitset<256>;

void AddCharacters(ByteSet& set, std::u16string_view text) {
    for (const char16_t character : text)
        if (character < set.size()) set.set(character);
}

// The digits that page numbers need: up to the number of pages, 9 at most.
int LastDigit(const WorkingCopy& copy) {
    if (copy.PageItemCount <= 0) return 0;
    const int64_t count = static_cast<int64_t>(copy.AllItemTextList.size());
    return static_cast<int>(
        std::min<int64_t>(9, (count + copy.PageItemCount - 1) / copy.PageItemCount));
}

// The characters that the menu prints by the map. The texts placed on the screen are not among them
// in MapUsedCharacters and are in ClearUnusedBkgTiles, so the caller adds those.
ByteSet PrintedCharacters(const WorkingCopy& copy) {
    ByteSet set;
    for (const std::u16string& name : copy.AllItemTextList)
        AddCharacters(set, name);
    AddCharacters(set, copy.Store().CaptionText);
    if (copy.ShowPageNumber) {
        AddCharacters(set, copy.PageNumberText);
        for (int digit = 0; digit <= LastDigit(copy); ++digit)
            set.set(size_t{'0'} + static_cast<size_t>(digit));
    }
    return set;
}

// Tall sprites of an even number show a pair of the background table.
void AddBkgTilesOfSprites(ByteSet& tiles, const DesignStore& store) {
    if (store.BigSprite == 0) return;
    for (const TileItem& sprite : store.SpriteTileList) {
        if (sprite.Tile % 2 != 0) continue;
        tiles.set(sprite.Tile);
        tiles.set(sprite.Tile | 1u);
    }
}

TileSet BkgTilesInUse(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    ByteSet characters = PrintedCharacters(copy);
    for (const TextItem& text : store.CustomText)
        AddCharacters(characters, text.Text);
    TileSet used;
    for (size_t code = 0; code < characters.size(); ++code)
        if (characters.test(code)) used.set(store.CharMapData[code]);
    for (const TileItem& item : store.BkgTileList)
        used.set(item.Tile);
    AddBkgTilesOfSprites(used, store);
    return used;
}

TileSet SpriteTilesInUse(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    const bool tall = store.BigSprite != 0;
    TileSet used;
    const auto add = [&](const TileItem& item) {
        used.set(tall ? item.Tile & 0xFEu : item.Tile);
        used.set(tall ? item.Tile | 1u : item.Tile);
    };
    for (const std::vector<TileItem>* list : {&store.SpriteTileList, &store.ArrowTileList})
        for (const TileItem& item : *list)
            if (!tall || item.Tile % 2 != 0) add(item);
    add(store.ArrowTile);  // whatever its parity
    return used;
}

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

TileSet TilesInUse(const WorkingCopy& copy, PatternTable table) {
    return table == PatternTable::kBackground ? BkgTilesInUse(copy) : SpriteTilesInUse(copy);
}

Views ClearUnusedBkgTiles(WorkingCopy& copy) {
    BlankUnused(copy.Store(), PatternTable::kBackground, BkgTilesInUse(copy));
    return TableViews(PatternTable::kBackground);
}

Views ClearUnusedSpriteTiles(WorkingCopy& copy) {
    BlankUnused(copy.Store(), PatternTable::kSprites, SpriteTilesInUse(copy));
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
