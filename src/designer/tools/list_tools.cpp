#include "designer/tools/list_tools.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

#include "designer/model/attribute_table.h"
#include "designer/model/tiles.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

std::vector<TileItem>& ListOf(WorkingCopy& copy, PatternTable table) {
    return table == PatternTable::kBackground ? copy.Store().BkgTileList
                                              : copy.Store().SpriteTileList;
}

bool IsShown(const WorkingCopy& copy, PatternTable table) {
    return table == PatternTable::kBackground ? copy.Show_Bg_Tile : copy.Show_Sp_Tile;
}

// Any bit counts here, as files can bring others along.
bool IsMarked(const TileItem& item) {
    return item.Selected != 0;
}

// The items that a command with a selection acts on: the marked ones, or all where none or all are.
template <typename Action>
void ForMarkedOrAll(std::vector<TileItem>& items, Action action) {
    const auto marked = std::ranges::count_if(items, IsMarked);
    const bool some = marked != 0 && marked != std::ssize(items);
    for (TileItem& item : items)
        if (!some || IsMarked(item)) action(item);
}

// Positions come from files and go round at the ends of their 32 bits.
int32_t Sum(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

int32_t Product(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

void SetFlag(TileItem& item, uint8_t flag, bool on) {
    item.Flags = static_cast<uint8_t>(on ? item.Flags | flag : item.Flags & ~flag);
}

// The number of the first sprite tile that equals the background tile, or of the first blank one,
// which then takes it; kTileCount if there is neither.
int SpriteTileFor(DesignStore& store, int bkgTile) {
    const ConstTile wanted = TileAt(std::as_const(store), PatternTable::kBackground, bkgTile);
    for (int tile = 0; tile < kTileCount; ++tile) {
        if (std::ranges::equal(TileAt(store, PatternTable::kSprites, tile), wanted)) return tile;
    }
    const int blank = FirstBlankTile(store, PatternTable::kSprites, 0);
    if (blank != kTileCount) {
        std::ranges::copy(wanted, TileAt(store, PatternTable::kSprites, blank).begin());
    }
    return blank;
}

uint8_t PaletteAt(const DesignStore& store, Pos cell) {
    const bool onScreen =
        cell.X >= 0 && cell.X < kScreenColumns && cell.Y >= 0 && cell.Y < kScreenRows;
    return static_cast<uint8_t>(onScreen ? AttributePalette(store.Attributes, cell.X, cell.Y) : 0);
}

}  // namespace

Views SelectAllItems(WorkingCopy& copy, PatternTable table) {
    if (!IsShown(copy, table)) return {};
    for (TileItem& item : ListOf(copy, table))
        item.Selected |= TileItem::kSelected;
    return View::kNameTable | View::kCheckBoxes;
}

Views InvertItemSelection(WorkingCopy& copy, PatternTable table) {
    if (!IsShown(copy, table)) return {};
    for (TileItem& item : ListOf(copy, table))
        item.Selected ^= TileItem::kSelected;
    return View::kNameTable | View::kCheckBoxes;
}

Views ClearItems(WorkingCopy& copy, PatternTable table) {
    ListOf(copy, table).clear();
    if (table == PatternTable::kBackground) {
        copy.nextBkgIndex = 0;
        return View::kNameTable;
    }
    copy.nextSpriteIndex = 0;
    return View::kSpriteTiles | View::kNameTable | View::kCheckBoxes;
}

Views RemoveSelectedItems(WorkingCopy& copy) {
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        std::erase_if(ListOf(copy, table), [](const TileItem& item) { return item.IsSelected(); });
    }
    return View::kNameTable | View::kCheckBoxes;
}

Views MoveItems(WorkingCopy& copy, PatternTable table, int32_t x, int32_t y) {
    ForMarkedOrAll(ListOf(copy, table), [&](TileItem& item) {
        item.X = Sum(item.X, x);
        item.Y = Sum(item.Y, y);
    });
    return View::kNameTable;
}

Views SetSpriteFlag(WorkingCopy& copy, uint8_t flag, bool on) {
    const auto set = [&](TileItem& item) {
        if (item.IsSelected()) SetFlag(item, flag, on);
    };
    DesignStore& store = copy.Store();
    std::ranges::for_each(store.SpriteTileList, set);
    if (copy.document.BigCursor != 0) {
        std::ranges::for_each(store.ArrowTileList, set);
    } else {
        set(store.ArrowTile);
    }
    return View::kNameTable;
}

bool CanSetSpriteFlag(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    if (std::ranges::any_of(store.SpriteTileList, IsMarked)) return true;
    return copy.document.BigCursor != 0 ? std::ranges::any_of(store.ArrowTileList, IsMarked)
                                        : IsMarked(store.ArrowTile);
}

Views SwapSpriteTables(WorkingCopy& copy) {
    if (copy.Store().BigSprite == 0) return {};
    ForMarkedOrAll(copy.Store().SpriteTileList, [](TileItem& item) { item.Tile ^= 1; });
    return View::kNameTable;
}

Views SwapAllSpriteTables(WorkingCopy& copy) {
    if (copy.Store().BigSprite == 0) return {};
    for (TileItem& item : copy.Store().SpriteTileList)
        item.Tile ^= 1;
    return View::kNameTable;
}

Views SplitTallSprites(WorkingCopy& copy) {
    std::vector<TileItem> halves;
    halves.reserve(copy.Store().SpriteTileList.size() * 2);
    for (TileItem half : copy.Store().SpriteTileList) {
        half.Tile &= 0xFE;
        halves.push_back(half);
        half.Y = Sum(half.Y, 8);
        half.Tile |= 1;
        halves.push_back(half);
    }
    copy.nextSpriteIndex = Renumber(halves);
    copy.Store().SpriteTileList = std::move(halves);
    return View::kNameTable;
}

Views MakeSpritesOfTiles(WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    if (store.BigSprite != 0) return {};
    std::vector<TileItem> staying;
    for (const TileItem& item : store.BkgTileList) {
        if (!item.IsSelected()) {
            staying.push_back(item);
            continue;
        }
        const int tile = SpriteTileFor(store, item.Tile);
        if (tile == kTileCount) break;
        // A sprite shows a line below its Y byte.
        store.SpriteTileList.push_back({.Index = copy.nextSpriteIndex++,
                                        .X = Product(item.X, 8),
                                        .Y = Sum(Product(item.Y, 8), -1),
                                        .Tile = static_cast<uint8_t>(tile),
                                        .Palette = PaletteAt(store, {item.X, item.Y})});
    }
    copy.nextBkgIndex = Renumber(staying);
    store.BkgTileList = std::move(staying);
    return TableViews(PatternTable::kSprites);
}

Views SetBigCursor(WorkingCopy& copy, bool on) {
    copy.document.BigCursor = on ? 1 : 0;
    return View::kNameTable | View::kCheckBoxes;
}

Views SetBigSprite(WorkingCopy& copy, bool on) {
    copy.Store().BigSprite = on ? 1 : 0;
    SpreadLargeCursor(copy.Store());
    return View::kNameTable | View::kSpriteTileList | View::kSpriteTileEditor | View::kCheckBoxes;
}

}  // namespace bw
