#include "designer/pictures/small_views.h"

#include <algorithm>
#include <array>

#include "designer/model/system_palette.h"

namespace bw {
namespace {

constexpr int kPaletteColumns = 16;

Point LastPixel(const Surface& view) {
    return {view.Width() - 1, view.Height() - 1};
}

// What differs between the two pattern tables.
struct Side {
    const Pos& tile;
    const Pos& pixel;
    const Pos& entry;  // in the side's palette
    const std::array<uint8_t, 256>& selected;
    const std::array<uint8_t, kPaletteSize>& palette;

    Side(PatternTable table, const WorkingCopy& copy)
        : Side(table == PatternTable::kBackground, copy) {}

    int SubPalette() const { return std::clamp(entry.X / 4, 0, kSubPaletteCount - 1); }

  private:
    Side(bool background, const WorkingCopy& copy)
        : tile(background ? copy.BkgTilePos : copy.SpTilePos),
          pixel(background ? copy.BkgPixelPos : copy.SpPixelPos),
          entry(background ? copy.BkgPalettePos : copy.SpPalettePos),
          selected(background ? copy.Store().BkgTileSelected : copy.Store().SpriteTileSelected),
          palette(background ? copy.Store().BkgPalette : copy.Store().SpritePalette) {}
};

SourceRect TileOf(PatternTable table, const TileImage& tiles, Pos tile, int palette) {
    const auto number = static_cast<uint8_t>(tile.Y * kTilesInRow + tile.X);
    return table == PatternTable::kBackground ? tiles.BkgTile(number, palette)
                                              : tiles.SpriteTile(number, palette);
}

// A frame around the current tile, two pixels thick. Of tall sprites it takes in both tiles.
void MarkCurrentTile(Surface& view, Pos tile, bool pair) {
    const int left = pair ? tile.X / 2 * 2 * kListCell : tile.X * kListCell;
    const int width = pair ? 2 * kListCell : kListCell;
    for (const int grow : {0, 1}) {
        Point near{left - grow, tile.Y * kListCell - grow};
        Point far{left + width + grow, (tile.Y + 1) * kListCell + grow};
        ClampPoints(view, near, far);
        DrawFrame(view, near, far, kRed);
    }
}

void MarkStripCell(Surface& strip, Pos cell) {
    DrawGrid(strip, {0, 0}, LastPixel(strip), kGrey, kStripCells, 1, Stroke::kSolid);
    DrawCellFrame(strip, {cell.X, 0}, kListCell, kRed);
}

}  // namespace

Surface MakePatternView() {
    return {kPatternViewSize, kPatternViewSize};
}
Surface MakeTileEditor() {
    return {kTileEditorSize, kTileEditorSize};
}
Surface MakeAttributeView() {
    return {kAttributeViewSize, kAttributeViewSize};
}
Surface MakePaletteView() {
    return {kPaletteColumns * kListCell, kListCell};
}
Surface MakeSystemPalette() {
    return {kPaletteColumns * kListCell, 4 * kListCell};
}
Surface MakeStrip() {
    return {kStripCells * kListCell, kListCell};
}

void DrawPatternView(Surface& view, PatternTable table, const WorkingCopy& copy,
                     const TileImage& tiles, const std::optional<RubberBand>& band) {
    const Side side(table, copy);
    const SourceRect first = TileOf(table, tiles, {0, 0}, side.SubPalette());
    Copy(view, {0, 0}, {first.surface, first.at, kTablePixels, kTablePixels}, {.scale = 2});
    DrawGrid(view, {0, 0}, LastPixel(view), kGrey, 16, 16, Stroke::kDotted);
    for (int tile = 0; tile < 256; ++tile) {
        if (side.selected[static_cast<size_t>(tile)] == 0) continue;
        DrawCellFrame(view, {tile % kTilesInRow, tile / kTilesInRow}, kListCell, kYellow);
    }
    if (band) DrawRubberBand(view, *band);
    MarkCurrentTile(view, side.tile, table == PatternTable::kSprites && copy.Store().BigSprite);
    for (const int y : {64, 128, 192})
        DrawLine(view, {0, y}, {view.Width() - 1, y}, kWhite, Stroke::kDotted);
}

void DrawTileEditor(Surface& view, PatternTable table, const WorkingCopy& copy,
                    const TileImage& tiles) {
    const Side side(table, copy);
    Copy(view, {0, 0}, TileOf(table, tiles, side.tile, side.SubPalette()), {.scale = kListCell});
    DrawGrid(view, {0, 0}, LastPixel(view), kGrey, kTilePixels, kTilePixels, Stroke::kDotted);
    DrawCellFrame(view, PointOf(side.pixel), kListCell, kRed);
}

void DrawAttributeView(Surface& view, const WorkingCopy& copy) {
    for (int quarter = 0; quarter < 4; ++quarter) {
        const auto palette = static_cast<size_t>(copy.CurrentAttribute >> (quarter * 2) & 3);
        FillCell(view, {0, 0}, LastPixel(view),
                 SystemColour(copy.Store().BkgPalette[palette * 4 + 1]), 2, 2,
                 {quarter % 2, quarter / 2});
    }
    DrawGrid(view, {0, 0}, LastPixel(view), kGrey, 4, 4, Stroke::kDotted);
    DrawCellFrame(view, PointOf(copy.AttrQuadrantPos), kAttributeViewSize / 2, kRed);
}

void DrawPaletteView(Surface& view, PatternTable table, const WorkingCopy& copy) {
    const Side side(table, copy);
    for (int entry = 0; entry < kPaletteColumns; ++entry) {
        FillCell(view, {0, 0}, LastPixel(view),
                 SystemColour(side.palette[static_cast<size_t>(entry)]), kPaletteColumns, 1,
                 {entry, 0});
    }
    // The system palette acts on the framed one.
    const bool active = copy.SpritePaletteActive == (table == PatternTable::kSprites);
    if (active) DrawFrame(view, {0, 0}, LastPixel(view), kRed);
    DrawCellFrame(view, {side.entry.X, 0}, kListCell, kYellow);
}

void DrawSystemPalette(Surface& view, const WorkingCopy& copy) {
    for (int entry = 0; entry < static_cast<int>(kConsoleColours.size()); ++entry) {
        FillCell(view, {0, 0}, LastPixel(view), kConsoleColours[static_cast<size_t>(entry)],
                 kPaletteColumns, 4, {entry % kPaletteColumns, entry / kPaletteColumns});
    }
    DrawCellFrame(view, PointOf(copy.SystemPalettePos), kListCell, kYellow);
}

void DrawTargetStrip(Surface& view, const WorkingCopy& copy, const Surface& font) {
    constexpr int kFirstRow = kFirstStripCode / kTilesInRow;
    for (int row = 0; row < kStripCells / kTilesInRow; ++row) {
        Copy(view, {row * kTilesInRow * kListCell, 0},
             {font, {0, (kFirstRow + row) * kTilePixels}, kTablePixels, kTilePixels}, {.scale = 2});
    }
    MarkStripCell(view, copy.MapTargetPos);
}

void DrawSourceStrip(Surface& view, const WorkingCopy& copy, const TileImage& tiles) {
    const int palette = Side(PatternTable::kBackground, copy).SubPalette();
    for (int cell = 0; cell < kStripCells; ++cell) {
        const uint8_t tile = copy.Store().CharMapData[kFirstStripCode + static_cast<size_t>(cell)];
        Copy(view, {cell * kListCell, 0}, tiles.BkgTile(tile, palette), {.scale = 2});
    }
    MarkStripCell(view, copy.MapSourcePos);
}

}  // namespace bw
