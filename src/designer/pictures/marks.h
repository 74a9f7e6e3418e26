// Grids, frames and lines drawn straight into a surface. Corners are points on the surface, both
// included; marks are cut at its edges. Dotted: only every second pixel of a line is set, starting
// with the second.
#pragma once

#include "designer/pictures/rubber_bands.h"
#include "designer/pictures/surface.h"

namespace bw {

inline constexpr Colour kGrey = 0x808080;
inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kGreen = 0x00FF00;
inline constexpr Colour kRed = 0xFF0000;
inline constexpr Colour kYellow = 0xFFFF00;
inline constexpr Colour kCyan = 0x00FFFF;
inline constexpr Colour kMagenta = 0xFF00FF;

enum class Stroke { kSolid, kDotted };

// Both points moved onto the surface.
void ClampPoints(const Surface& surface, Point& a, Point& b);

// The rectangle from a to b divided into cells of (its width / columns, its height / rows),
// truncated; the rest stays at the right and the bottom. Lines stand at the left and top edges of
// the cells and at the right and bottom edges of the whole. Columns and rows below 1 count as 1.
void DrawGrid(Surface& surface, Point a, Point b, Colour colour, int columns, int rows,
              Stroke stroke);

// One cell of such a grid, filled.
void FillCell(Surface& surface, Point a, Point b, Colour colour, int columns, int rows, Point cell);

void FillRect(Surface& surface, Point a, Point b, Colour colour);

// Four edges. One that lies outside the surface is left out.
void DrawFrame(Surface& surface, Point a, Point b, Colour colour, Stroke stroke = Stroke::kSolid);

// Bresenham's line, both ends included.
void DrawLine(Surface& surface, Point a, Point b, Colour colour, Stroke stroke = Stroke::kSolid);

// A frame around a cell of a view that is divided into squares, on the lines of its grid; at the
// view's far edges on the last pixels.
void DrawCellFrame(Surface& surface, Point cell, int pixels, Colour colour);

// The part of it that lies on the view.
void DrawRubberBand(Surface& surface, const RubberBand& band);

}  // namespace bw
