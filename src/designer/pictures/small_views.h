// The designer's small views, each drawn whole onto a surface of its size. All colours of tiles
// come from the tile image, which has been redrawn for the working copy.
#pragma once

#include <optional>

#include "designer/model/working_copy.h"
#include "designer/pictures/marks.h"
#include "designer/pictures/surface.h"
#include "designer/pictures/tile_image.h"

namespace bw {

inline constexpr int kListCell = 16;  // pixels of a tile in a pattern view, of a palette entry, of
                                      // a pixel in a tile editor, of a character in a strip
inline constexpr int kPatternViewSize = 16 * kListCell;
inline constexpr int kTileEditorSize = 8 * kListCell;
inline constexpr int kAttributeViewSize = 128;

Surface MakePatternView();    // kPatternViewSize square
Surface MakeTileEditor();     // kTileEditorSize square
Surface MakeAttributeView();  // kAttributeViewSize square
Surface MakePaletteView();    // 16 cells
Surface MakeSystemPalette();  // 16 by 4 cells
Surface MakeStrip();          // kStripCells cells

// A pattern table in the current sub-palette, with grid, selection and the current tile.
void DrawPatternView(Surface& view, PatternTable table, const WorkingCopy& copy,
                     const TileImage& tiles, const std::optional<RubberBand>& band);

// The current tile, 16 pixels a pixel.
void DrawTileEditor(Surface& view, PatternTable table, const WorkingCopy& copy,
                    const TileImage& tiles);

// The four fields of CurrentAttribute as quarters in the second colour of their sub-palettes.
void DrawAttributeView(Surface& view, const WorkingCopy& copy);

void DrawPaletteView(Surface& view, PatternTable table, const WorkingCopy& copy);
void DrawSystemPalette(Surface& view, const WorkingCopy& copy);

// The default font, from MakeFontImage.
void DrawTargetStrip(Surface& view, const WorkingCopy& copy, const Surface& font);

// The tiles that the character map gives.
void DrawSourceStrip(Surface& view, const WorkingCopy& copy, const TileImage& tiles);

}  // namespace bw
