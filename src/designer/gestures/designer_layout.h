// Where the designer's views lie in its window and which cell of a view the pointer is on. Plain
// arithmetic: a window hands its places in, no window is needed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "designer/model/working_copy.h"
#include "designer/pictures/surface.h"

namespace bw {

enum class Control : uint8_t {
    kBkgTileList,
    kBkgTileEditor,
    kSpriteTileList,
    kSpriteTileEditor,
    kTargetStrip,
    kSourceStrip,
    kNameTable,
    kAttribute,
    kBkgPalette,
    kSpritePalette,
    kSystemPalette,
};
inline constexpr size_t kControlCount = 11;

// Client pixels of the designer's window, of 1088 by 864.
struct Rect {
    Point at;
    int width = 0;
    int height = 0;
};

// A division of a view into equal cells.
struct Grid {
    int columns = 1;
    int rows = 1;
};

// The cells that each view is drawn in, and finer or coarser ones of the name table.
Grid CellsOf(Control control);
inline constexpr Grid kConsolePixels{256, 240};  // of the name table
inline constexpr Grid kAttributeCells{16, 15};   // of the name table, 2 by 2 tiles each

struct Hit {
    Pos cell;
    Point rest;  // pixels from the cell's corner
};

// The cell of a picture of `width` by `height` pixels that is centred in `client`; nothing if `at`
// is beside the picture, or if a cell would be no pixel wide or high.
std::optional<Hit> HitTest(const Rect& client, int width, int height, Grid grid, Point at);

// The cell of the screen nearest to a corner in pixels of the name table's picture: from the middle
// of a cell on it is the next one. Beside the picture it is the cell at its edge.
Pos NearestScreenCell(Point corner);

class DesignerLayout {
  public:
    DesignerLayout();

    // A control that is disabled, or has another place than usual.
    void Enable(Control control, bool enabled) { PlaceOf(control).enabled = enabled; }
    void Move(Control control, const Rect& client) { PlaceOf(control).client = client; }

    // `at` in client pixels of the window. A disabled control is invisible to the pointer.
    std::optional<Hit> CellAt(Control control, Point at) const;
    std::optional<Hit> CellAt(Control control, Grid grid, Point at) const;
    bool IsOn(Control control, Point at) const { return CellAt(control, at).has_value(); }

    // The top left pixel of the control's picture.
    Point Origin(Control control) const;
    // The top left pixel of a cell, in the window; the cell may lie beside the picture.
    Point Corner(Control control, Pos cell) const;
    // `at` in pixels of the control's picture, which it may lie beside.
    Point Relative(Control control, Point at) const;

  private:
    struct Place {
        Rect client;
        bool enabled = true;
    };

    Place& PlaceOf(Control control) { return places_[static_cast<size_t>(control)]; }
    const Place& PlaceOf(Control control) const { return places_[static_cast<size_t>(control)]; }

    std::array<Place, kControlCount> places_;
};

}  // namespace bw
