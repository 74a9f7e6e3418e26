#include "designer/import/tile_room.h"

#include <algorithm>

#include "designer/tools/used_tiles.h"

namespace bw {
namespace {

constexpr PatternTable kTable = PatternTable::kBackground;

void AddPair(ByteSet& tiles, const TileItem& sprite) {
    if (sprite.Tile % 2 != 0) return;
    tiles.set(sprite.Tile);
    tiles.set(sprite.Tile | 1u);
}

ByteSet TilesInUse(const WorkingCopy& copy, const TileArea& area) {
    const DesignStore& store = copy.Store();
    ByteSet used = TilesOfCharacters(copy);
    for (const TileItem& item : store.BkgTileList)
        if (!area.Holds(item.X, item.Y)) used.set(item.Tile);
    AddBkgTilesOfSprites(used, store);
    if (store.BigSprite != 0) {
        AddPair(used, store.ArrowTile);
        std::ranges::for_each(store.ArrowTileList,
                              [&](const TileItem& part) { AddPair(used, part); });
    }
    return used;
}

// Names are printed in capitals.
ByteSet TilesOfAllLetters(const DesignStore& store) {
    ByteSet tiles;
    for (int code = kFirstStripCode + 1; code < kFirstStripCode + kStripCells; ++code) {
        const uint8_t tile = store.CharMapData[static_cast<size_t>(code)];
        if (!IsBlank(TileAt(store, kTable, tile))) tiles.set(tile);
    }
    return tiles;
}

TileRoom::Kept Keep(const DesignStore& store, size_t number) {
    return {.pattern = PatternOf(TileAt(store, kTable, static_cast<int>(number))),
            .number = static_cast<uint8_t>(number)};
}

}  // namespace

DesignRoom RoomFor(const WorkingCopy& copy, const TileArea& area) {
    const DesignStore& store = copy.Store();
    const ByteSet used = TilesInUse(copy, area);
    const ByteSet letters = copy.AllItemTextList.empty() ? TilesOfAllLetters(store) : ByteSet();
    DesignRoom found;
    std::vector<uint8_t> drawn;
    for (size_t number = 0; number < used.size(); ++number) {
        if (number == 0 || used.test(number) || letters.test(number)) {
            found.room.kept.push_back(Keep(store, number));
            if (number != 0 && !used.test(number)) {
                found.reserve.push_back(static_cast<uint8_t>(number));
            }
        } else {
            const bool blank = IsBlank(TileAt(store, kTable, static_cast<int>(number)));
            (blank ? found.room.free : drawn).push_back(static_cast<uint8_t>(number));
        }
    }
    found.room.free.insert(found.room.free.end(), drawn.begin(), drawn.end());
    if (area.IsWholeScreen() && !used.test(0)) found.reserve.push_back(0);
    return found;
}

TileRoom AllTiles(const WorkingCopy& copy) {
    TileRoom room;
    for (size_t number = 0; number < kTileCount; ++number)
        room.kept.push_back(Keep(copy.Store(), number));
    return room;
}

}  // namespace bw
