#include "designer/pictures/marks.h"

#include <algorithm>
#include <utility>

#include "designer/model/line.h"

namespace bw {
namespace {

void SortCorners(Point& a, Point& b) {
    if (a.x > b.x) std::swap(a.x, b.x);
    if (a.y > b.y) std::swap(a.y, b.y);
}

// How one cell of a divided rectangle lies.
struct Division {
    Division(Point a, Point b, int wantedColumns, int wantedRows)
        : columns(std::max(1, wantedColumns)),
          rows(std::max(1, wantedRows)),
          width((b.x - a.x + 1) / columns),
          height((b.y - a.y + 1) / rows) {}

    int columns;
    int rows;
    int width;
    int height;
};

}  // namespace

void ClampPoints(const Surface& surface, Point& a, Point& b) {
    for (Point* point : {&a, &b}) {
        point->x = std::clamp(point->x, 0, surface.Width() - 1);
        point->y = std::clamp(point->y, 0, surface.Height() - 1);
    }
}

void DrawGrid(Surface& surface, Point a, Point b, Colour colour, int columns, int rows,
              Stroke stroke) {
    SortCorners(a, b);
    const Division cells(a, b, columns, rows);
    for (int i = 0; i < cells.columns && a.x + i * cells.width < b.x; ++i) {
        const int x = a.x + i * cells.width;
        DrawLine(surface, {x, a.y}, {x, b.y}, colour, stroke);
    }
    for (int i = 0; i < cells.rows && a.y + i * cells.height < b.y; ++i) {
        const int y = a.y + i * cells.height;
        DrawLine(surface, {a.x, y}, {b.x, y}, colour, stroke);
    }
    DrawLine(surface, {b.x, a.y}, b, colour, stroke);
    DrawLine(surface, {a.x, b.y}, b, colour, stroke);
}

void FillCell(Surface& surface, Point a, Point b, Colour colour, int columns, int rows,
              Point cell) {
    SortCorners(a, b);
    const Division cells(a, b, columns, rows);
    const Point corner{a.x + cell.x * cells.width, a.y + cell.y * cells.height};
    FillRect(surface, corner, {corner.x + cells.width - 1, corner.y + cells.height - 1}, colour);
}

void FillRect(Surface& surface, Point a, Point b, Colour colour) {
    SortCorners(a, b);
    const int left = std::max(0, a.x);
    const int right = std::min(surface.Width() - 1, b.x);
    if (left > right) return;
    for (int y = std::max(0, a.y); y <= std::min(surface.Height() - 1, b.y); ++y) {
        std::fill_n(surface.From({left, y}), right - left + 1, colour);
    }
}

void DrawFrame(Surface& surface, Point a, Point b, Colour colour, Stroke stroke) {
    SortCorners(a, b);
    // The right edge takes the last row along; the other three stop one pixel short of the corner.
    if (a.x < b.x) {
        DrawLine(surface, a, {b.x - 1, a.y}, colour, stroke);
        DrawLine(surface, {a.x, b.y}, {b.x - 1, b.y}, colour, stroke);
    }
    if (a.y < b.y) DrawLine(surface, a, {a.x, b.y - 1}, colour, stroke);
    DrawLine(surface, {b.x, a.y}, b, colour, stroke);
}

void DrawLine(Surface& surface, Point a, Point b, Colour colour, Stroke stroke) {
    bool set = stroke == Stroke::kSolid;
    WalkLine(a, b, [&](Point at) {
        if (set && surface.Holds(at)) surface.At(at) = colour;
        set = stroke == Stroke::kSolid || !set;
    });
}

void DrawCellFrame(Surface& surface, Point cell, int pixels, Colour colour) {
    // A cell beside the view lies on its edge, however far away it is.
    const auto start = [&](int index, int size) {
        return std::clamp(index, -1, size / pixels) * pixels;
    };
    Point near{start(cell.x, surface.Width()), start(cell.y, surface.Height())};
    Point far{near.x + pixels, near.y + pixels};
    ClampPoints(surface, near, far);
    DrawFrame(surface, near, far, colour);
}

void DrawRubberBand(Surface& surface, const RubberBand& band) {
    RubberBand shown = band;
    ClampPoints(surface, shown.press, shown.current);
    DrawFrame(surface, shown.press, shown.current, kMagenta);
}

}  // namespace bw
