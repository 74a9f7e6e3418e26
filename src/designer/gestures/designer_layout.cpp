#include "designer/gestures/designer_layout.h"

#include <algorithm>

#include "designer/pictures/name_table_picture.h"

namespace bw {
namespace {

struct Usual {
    Rect client;  // usual place; its size is that of the picture
    Grid cells;
};

// In the order of Control.
constexpr std::array<Usual, kControlCount> kUsual = {{
    {{{548, 124}, 256, 256}, {16, 16}},
    {{{548, 388}, 128, 128}, {8, 8}},
    {{{812, 124}, 256, 256}, {16, 16}},
    {{{812, 388}, 128, 128}, {8, 8}},
    {{{12, 40}, 1024, 16}, {64, 1}},
    {{{12, 80}, 1024, 16}, {64, 1}},
    {{{16, 124}, 512, 480}, {kScreenColumns, kScreenRows}},
    {{{546, 578}, 128, 128}, {2, 2}},
    {{{698, 578}, 256, 16}, {16, 1}},
    {{{698, 636}, 256, 16}, {16, 1}},
    {{{698, 696}, 256, 64}, {16, 4}},
}};

const Usual& UsualOf(Control control) {
    return kUsual[static_cast<size_t>(control)];
}

Point Centred(const Rect& client, int width, int height) {
    return {client.at.x + (client.width - width) / 2, client.at.y + (client.height - height) / 2};
}

}  // namespace

Grid CellsOf(Control control) {
    return UsualOf(control).cells;
}

std::optional<Hit> HitTest(const Rect& client, int width, int height, Grid grid, Point at) {
    if (grid.columns < 1 || grid.rows < 1) return std::nullopt;
    const Point corner = Centred(client, width, height);
    const Point inside{at.x - corner.x, at.y - corner.y};
    const int cellWidth = width / grid.columns;
    const int cellHeight = height / grid.rows;
    if (inside.x < 0 || inside.x >= width || inside.y < 0 || inside.y >= height || cellWidth == 0 ||
        cellHeight == 0) {
        return std::nullopt;
    }
    return Hit{{inside.x / cellWidth, inside.y / cellHeight},
               {inside.x % cellWidth, inside.y % cellHeight}};
}

Pos NearestScreenCell(Point corner) {
    const auto nearest = [](int pixels, int cells) {
        return std::clamp(pixels + kNameCell / 2, 0, cells * kNameCell - 1) / kNameCell;
    };
    return {nearest(corner.x, kScreenColumns), nearest(corner.y, kScreenRows)};
}

DesignerLayout::DesignerLayout() {
    for (size_t i = 0; i < kControlCount; ++i)
        places_[i].client = kUsual[i].client;
}

std::optional<Hit> DesignerLayout::CellAt(Control control, Point at) const {
    return CellAt(control, CellsOf(control), at);
}

std::optional<Hit> DesignerLayout::CellAt(Control control, Grid grid, Point at) const {
    const Place& place = PlaceOf(control);
    if (!place.enabled) return std::nullopt;
    const Rect& picture = UsualOf(control).client;
    return HitTest(place.client, picture.width, picture.height, grid, at);
}

Point DesignerLayout::Origin(Control control) const {
    const Rect& picture = UsualOf(control).client;
    return Centred(PlaceOf(control).client, picture.width, picture.height);
}

Point DesignerLayout::Corner(Control control, Pos cell) const {
    const auto& [picture, cells] = UsualOf(control);
    const Point origin = Origin(control);
    return {origin.x + cell.X * (picture.width / cells.columns),
            origin.y + cell.Y * (picture.height / cells.rows)};
}

Point DesignerLayout::Relative(Control control, Point at) const {
    const Point origin = Origin(control);
    return {at.x - origin.x, at.y - origin.y};
}

}  // namespace bw
