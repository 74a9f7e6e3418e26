#include "designer/tools/pointer_edits.h"

#include <algorithm>
#include <array>
#include <utility>

#include "designer/model/attribute_table.h"
#include "designer/model/tiles.h"
#include "designer/tools/attribute_tools.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

// The strip's next cell, as far as there is one.
constexpr int kLastStripCell = kStripCells - 1;

template <typename Value>
Views Set(Value& field, const Value& value, Views shownIn) {
    if (field == value) return {};
    field = value;
    return shownIn;
}

bool IsStripCell(int32_t cell) {
    return cell >= 0 && cell <= kLastStripCell;
}

size_t CodeOf(int cell) {
    return static_cast<size_t>(cell) + size_t{kFirstStripCode};
}

// The current attribute byte; nullptr for a place beside the table.
uint8_t* CurrentAttributeByte(WorkingCopy& copy) {
    const int64_t place = copy.AttrBytePos.X + int64_t{copy.AttrBytePos.Y} * 8;
    if (place < 0 || place >= static_cast<int64_t>(kAttributeSize)) return nullptr;
    return &copy.Store().Attributes[static_cast<size_t>(place)];
}

Views SetQuadrant(WorkingCopy& copy, Pos quadrant, int palette) {
    uint8_t* attribute = CurrentAttributeByte(copy);
    if (attribute == nullptr) return {};
    *attribute = copy.CurrentAttribute = WithQuadrantPalette(*attribute, quadrant, palette);
    return View::kNameTable | View::kAttribute;
}

Views ShowColour(WorkingCopy& copy, uint8_t colour) {
    const Pos place{colour & 15, colour >> 4};
    return Set(copy.SystemPalettePos, place, View::kSystemPalette);
}

Views SetQuadrantAndEntry(WorkingCopy& copy, Pos quadrant) {
    Views stale = Set(copy.AttrQuadrantPos, quadrant, View::kAttribute);
    const int palette = QuadrantPalette(copy.CurrentAttribute, quadrant);
    return stale | SetCurrentEntry(copy, kBkg, palette * 4 + 1);
}

// The next cell, row by row. The last one is found by a product with 30, not with the 32 columns
// that a row has; users know that the current place leaves the screen at the bottom by nearly two
// rows before it stops, so it stays.
void AdvanceNameCell(Pos& cell) {
    constexpr int32_t kRowFactor = 30;
    constexpr int32_t kStop = 959;
    if (cell.Y * kRowFactor + cell.X >= kStop) return;
    cell = cell.X == kScreenColumns - 1 ? Pos{0, cell.Y + 1} : Pos{cell.X + 1, cell.Y};
}

// Where AdvanceNameCell can lead to. Other places come from damaged states only.
bool IsNameCell(Pos cell) {
    return cell.X >= 0 && cell.X < kScreenColumns && cell.Y >= 0 && cell.Y < kScreenColumns;
}

Views SetSelectedPalette(TileItem& item, uint8_t palette) {
    if (!item.IsSelected()) return {};
    return Set(item.Palette, palette, View::kNameTable);
}

void Rename(std::vector<TileItem>& items, uint8_t from, uint8_t to) {
    for (TileItem& item : items)
        if (item.Tile == from) item.Tile = to;
}

void RenameTile(DesignStore& store, PatternTable table, uint8_t from, uint8_t to) {
    if (table == kBkg) {
        Rename(store.BkgTileList, from, to);
        std::ranges::replace(store.CharMapData, from, to);
        return;
    }
    Rename(store.SpriteTileList, from, to);
    Rename(store.ArrowTileList, from, to);
    if (store.ArrowTile.Tile == from) store.ArrowTile.Tile = to;
}

}  // namespace

Views SetCurrentTile(WorkingCopy& copy, PatternTable table, Pos tile) {
    return table == kBkg
               ? Set(copy.BkgTilePos, tile, View::kBkgTileList | View::kBkgTileEditor)
               : Set(copy.SpTilePos, tile, View::kSpriteTileList | View::kSpriteTileEditor);
}

Views SetCurrentEntry(WorkingCopy& copy, PatternTable table, int entry) {
    // Tile list, editor and strip show their tiles in the current sub-palette.
    return table == kBkg
               ? Set(copy.BkgPalettePos.X, entry,
                     View::kBkgPalette | View::kBkgTileList | View::kBkgTileEditor |
                         View::kSourceStrip)
               : Set(copy.SpPalettePos.X, entry,
                     View::kSpritePalette | View::kSpriteTileList | View::kSpriteTileEditor);
}

Views ActivatePalette(WorkingCopy& copy, PatternTable side) {
    return Set(copy.SpritePaletteActive, side == kSprites,
               View::kBkgPalette | View::kSpritePalette);
}

int CurrentPalette(const WorkingCopy& copy, PatternTable table) {
    return std::clamp((table == kBkg ? copy.BkgPalettePos : copy.SpPalettePos).X / 4, 0, 3);
}

Views SetSourceCharacter(WorkingCopy& copy, int cell) {
    const uint8_t tile = copy.Store().CharMapData[CodeOf(cell)];
    return Set(copy.MapSourcePos, Pos{cell, 0}, View::kSourceStrip) |
           SetCurrentTile(copy, kBkg, TilePlace(tile)) | ActivatePalette(copy, kBkg);
}

Views SetTargetCharacter(WorkingCopy& copy, int cell) {
    return Set(copy.MapTargetPos, Pos{cell, 0}, View::kTargetStrip);
}

Views MapCharacter(WorkingCopy& copy, int cell, uint8_t tile) {
    // All texts on the screen are drawn through the map.
    return Set(copy.Store().CharMapData[CodeOf(cell)], tile, View::kSourceStrip | View::kNameTable);
}

Views QuickMapCharacter(WorkingCopy& copy, Pos tile) {
    Views stale = SetCurrentTile(copy, kBkg, tile);
    if (!IsStripCell(copy.MapSourcePos.X)) return stale;
    stale |= MapCharacter(copy, copy.MapSourcePos.X, TileNumber(tile));
    const int32_t next = std::min(copy.MapSourcePos.X + 1, kLastStripCell);
    return stale | Set(copy.MapSourcePos.X, next, View::kSourceStrip);
}

Views QuickReplaceTile(WorkingCopy& copy, PatternTable table) {
    if (!IsStripCell(copy.MapTargetPos.X)) return {};
    const int tile = CurrentTile(copy, table);
    const ConstTile font = FontTile(copy.Store(), static_cast<int>(CodeOf(copy.MapTargetPos.X)));
    std::ranges::copy(font, TileAt(copy.Store(), table, tile).begin());
    Views stale = TableViews(table);
    const int next = std::min(tile + 1, kTileCount - 1);
    stale |= SetCurrentTile(copy, table, TilePlace(static_cast<unsigned>(next)));
    // The background's side even for the sprite table: a font is drawn in the colours of texts,
    // and users are used to find that palette active.
    return stale | ActivatePalette(copy, kBkg);
}

Views PlaceTile(WorkingCopy& copy, PatternTable table) {
    Pos& cell = copy.NameCellPos;
    if (!IsNameCell(cell)) return {};
    const auto tile = static_cast<uint8_t>(CurrentTile(copy, table));
    if (table == kBkg) {
        copy.Store().BkgTileList.push_back(
            {.Index = copy.nextBkgIndex++, .X = cell.X, .Y = cell.Y, .Tile = tile});
    } else {
        copy.Store().SpriteTileList.push_back(
            {.Index = copy.nextSpriteIndex++, .X = cell.X * 8, .Y = cell.Y * 8, .Tile = tile});
    }
    AdvanceNameCell(cell);
    return View::kNameTable | SetAttributeCell(copy, {cell.X / 2, cell.Y / 2}, false);
}

Views SetAttributeCell(WorkingCopy& copy, Pos cell, bool paint) {
    Views stale = Set(copy.AttrCellPos, cell, View::kNameTable);
    stale |= Set(copy.AttrBytePos, Pos{cell.X / 2, cell.Y / 2}, View::kNameTable);
    if (const uint8_t* attribute = CurrentAttributeByte(copy)) {
        stale |= Set(copy.CurrentAttribute, *attribute, View::kAttribute);
    }
    const Pos quadrant{cell.X & 1, cell.Y & 1};
    // Painting leaves the current quadrant alone: a stroke over the screen mustn't change what the
    // attribute view is about.
    return stale | (paint ? SetQuadrant(copy, quadrant, CurrentPalette(copy, kBkg))
                          : SetQuadrantAndEntry(copy, quadrant));
}

Views SetCurrentQuadrant(WorkingCopy& copy, Pos quadrant) {
    Views stale = SetQuadrantAndEntry(copy, quadrant);
    return stale |
           ShowColour(copy, copy.Store().BkgPalette[static_cast<size_t>(copy.BkgPalettePos.X)]);
}

Views PickBkgEntry(WorkingCopy& copy, int entry) {
    Views stale = SetCurrentEntry(copy, kBkg, entry);
    stale |= SetQuadrant(copy, copy.AttrQuadrantPos, entry / 4);
    return stale | ShowColour(copy, copy.Store().BkgPalette[static_cast<size_t>(entry)]);
}

Views PickSpriteEntry(WorkingCopy& copy, int entry) {
    DesignStore& store = copy.Store();
    const auto palette = static_cast<uint8_t>(entry / 4);
    Views stale = SetCurrentEntry(copy, kSprites, entry);
    for (std::vector<TileItem>* list : {&store.SpriteTileList, &store.ArrowTileList})
        for (TileItem& item : *list)
            stale |= SetSelectedPalette(item, palette);
    stale |= SetSelectedPalette(store.ArrowTile, palette);
    return stale | ShowColour(copy, store.SpritePalette[static_cast<size_t>(entry)]);
}

Views PickTileColour(WorkingCopy& copy, PatternTable table, Pos pixel) {
    const DesignStore& store = copy.Store();
    const int colour = PixelOf(TileAt(store, table, CurrentTile(copy, table)), pixel);
    const int entry = CurrentPalette(copy, table) * 4 + colour;
    const auto& palette = table == kBkg ? store.BkgPalette : store.SpritePalette;
    return SetCurrentEntry(copy, table, entry) | ActivatePalette(copy, table) |
           ShowColour(copy, palette[static_cast<size_t>(entry)]);
}

Views PickColour(WorkingCopy& copy, Pos cell) {
    const auto colour = static_cast<uint8_t>(cell.Y * 16 + cell.X);
    Views stale = ShowColour(copy, colour);
    const PatternTable side = copy.SpritePaletteActive ? kSprites : kBkg;
    const int32_t entry = (side == kBkg ? copy.BkgPalettePos : copy.SpPalettePos).X;
    if (entry < 0 || entry >= static_cast<int32_t>(kPaletteSize)) return stale;
    auto& palette = side == kBkg ? copy.Store().BkgPalette : copy.Store().SpritePalette;
    const Views shownIn = side == kBkg ? View::kBkgPalette | View::kAttribute | View::kSourceStrip
                                       : Views(View::kSpritePalette);
    return stale | Set(palette[static_cast<size_t>(entry)], colour, TableViews(side) | shownIn);
}

Views DragTile(WorkingCopy& copy, PatternTable table, TileDrag drag) {
    DesignStore& store = copy.Store();
    const bool pair = table == kSprites && store.BigSprite != 0;
    const auto count = pair ? 2 : 1;
    const int from = pair ? drag.from & 0xFE : drag.from;
    const int to = pair ? drag.to & 0xFE : drag.to;
    std::array<uint8_t, 2 * kTileBytes> pixels{};
    const auto forEachTile = [&](int first, auto action) {
        for (int i = 0; i < count; ++i)
            action(
                TileAt(store, table, first + i),
                Tile(std::span(pixels).subspan(static_cast<size_t>(i) * kTileBytes, kTileBytes)));
    };
    const auto save = [](Tile tile, Tile saved) { std::ranges::copy(tile, saved.begin()); };
    const auto put = [](Tile tile, Tile saved) { std::ranges::copy(saved, tile.begin()); };
    forEachTile(from, save);
    if (drag.move) {
        forEachTile(from, [](Tile tile, Tile) { std::ranges::fill(tile, uint8_t{0}); });
        // Tall sprites that show the sprite table name a pair by its odd tile; an even number means
        // the background table and isn't touched.
        const int low = pair ? 1 : 0;
        RenameTile(store, table, static_cast<uint8_t>(from | low), static_cast<uint8_t>(to | low));
    }
    forEachTile(to, put);
    if (drag.copy) forEachTile(from, put);
    return TableViews(table) | View::kSourceStrip |
           SetCurrentTile(copy, table, TilePlace(static_cast<unsigned>(to)));
}

Views DragTileAcross(WorkingCopy& copy, PatternTable from, uint8_t tile, uint8_t to) {
    const PatternTable other = from == kBkg ? kSprites : kBkg;
    std::ranges::copy(TileAt(std::as_const(copy.Store()), from, tile),
                      TileAt(copy.Store(), other, to).begin());
    return TableViews(other) | View::kSourceStrip;
}

}  // namespace bw
