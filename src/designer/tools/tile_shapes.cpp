#include "designer/tools/tile_shapes.h"

#include <algorithm>

#include "designer/model/line.h"
#include "designer/model/tiles.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

Tile TileInUse(WorkingCopy& copy, PatternTable table) {
    return TileAt(copy.Store(), table, CurrentTile(copy, table));
}

void Flood(Tile tile, Pos pixel, int from, int to) {
    const bool inside =
        pixel.X >= 0 && pixel.X < kTilePixels && pixel.Y >= 0 && pixel.Y < kTilePixels;
    if (!inside || PixelOf(tile, pixel) != from) return;
    SetPixel(tile, pixel, to);
    for (const Pos step : {Pos{-1, 0}, Pos{1, 0}, Pos{0, -1}, Pos{0, 1}})
        Flood(tile, {pixel.X + step.X, pixel.Y + step.Y}, from, to);
}

}  // namespace

Views DrawTileLine(WorkingCopy& copy, PatternTable table, const ShapeDrag& drag) {
    const Tile tile = TileInUse(copy, table);
    const int colour = CurrentColour(copy, table);
    WalkLine(PointOf(drag.from), PointOf(drag.to), [&](Point at) {
        SetPixel(tile, {at.x, at.y}, colour);
    });
    return SetCurrentPixel(copy, table, drag.to) | TableViews(table);
}

Views DrawTileRectangle(WorkingCopy& copy, PatternTable table, const ShapeDrag& drag) {
    const Tile tile = TileInUse(copy, table);
    const int colour = CurrentColour(copy, table);
    const auto [left, right] = std::minmax(drag.from.X, drag.to.X);
    const auto [top, bottom] = std::minmax(drag.from.Y, drag.to.Y);
    for (int32_t y = top; y <= bottom; ++y)
        for (int32_t x = left; x <= right; ++x) {
            const bool edge = x == left || x == right || y == top || y == bottom;
            if (edge || drag.filled) SetPixel(tile, {x, y}, colour);
        }
    return SetCurrentPixel(copy, table, drag.to) | TableViews(table);
}

Views FillTileArea(WorkingCopy& copy, PatternTable table, Pos pixel) {
    const Tile tile = TileInUse(copy, table);
    const int from = PixelOf(tile, pixel);
    const int to = CurrentColour(copy, table);
    if (from != to) Flood(tile, pixel, from, to);
    return SetCurrentPixel(copy, table, pixel) | TableViews(table);
}

}  // namespace bw
