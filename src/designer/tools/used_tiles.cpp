#include "designer/tools/used_tiles.h"

#include <algorithm>

namespace bw {
namespace {

// The digits that page numbers need: up to the number of pages, 9 at most.
int LastDigit(const WorkingCopy& copy) {
    if (copy.PageItemCount <= 0) return 0;
    const int64_t count = static_cast<int64_t>(copy.AllItemTextList.size());
    return static_cast<int>(
        std::min<int64_t>(9, (count + copy.PageItemCount - 1) / copy.PageItemCount));
}

}  // namespace

void AddCharacters(ByteSet& set, std::u16string_view text) {
    for (const char16_t character : text)
        if (character < set.size()) set.set(character);
}

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

TileSet TilesOfCharacters(const WorkingCopy& copy) {
    ByteSet characters = PrintedCharacters(copy);
    for (const TextItem& text : copy.Store().CustomText)
        AddCharacters(characters, text.Text);
    TileSet tiles;
    for (size_t code = 0; code < characters.size(); ++code)
        if (characters.test(code)) tiles.set(copy.Store().CharMapData[code]);
    return tiles;
}

void AddBkgTilesOfSprites(TileSet& tiles, const DesignStore& store) {
    if (store.BigSprite == 0) return;
    for (const TileItem& sprite : store.SpriteTileList) {
        if (sprite.Tile % 2 != 0) continue;
        tiles.set(sprite.Tile);
        tiles.set(sprite.Tile | 1u);
    }
}

namespace {

TileSet BkgTilesInUse(const WorkingCopy& copy) {
    TileSet used = TilesOfCharacters(copy);
    for (const TileItem& item : copy.Store().BkgTileList)
        used.set(item.Tile);
    AddBkgTilesOfSprites(used, copy.Store());
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

}  // namespace

TileSet TilesInUse(const WorkingCopy& copy, PatternTable table) {
    return table == PatternTable::kBackground ? BkgTilesInUse(copy) : SpriteTilesInUse(copy);
}

}  // namespace bw
