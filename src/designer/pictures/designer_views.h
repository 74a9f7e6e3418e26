// All pictures of the designer, kept up to date: a change redraws only the views that it has made
// out of date. A window shows the surfaces.
#pragma once

#include <optional>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/pictures/rubber_bands.h"
#include "designer/pictures/small_views.h"
#include "designer/pictures/tile_image.h"

namespace bw {

class DesignerViews {
  public:
    // Redraws `stale` and what is copied out of it. The result names what was redrawn, for a window
    // to show; kCheckBoxes and kCaptionBox pass through. The first call must name all views.
    Views Update(const WorkingCopy& copy, Views stale, const std::optional<RubberBands>& bands);

    const TileImage& Tiles() const { return tiles_; }
    // The surface of a view; kBkgTiles and kSpriteTiles are both in the tile image. Not for
    // kCheckBoxes and kCaptionBox.
    const Surface& Of(View view) const;

  private:
    TileImage tiles_;
    std::optional<Surface> font_;  // of the default tile set, which doesn't change
    NameTablePicture screen_;
    Surface bkgList_ = MakePatternView();
    Surface spriteList_ = MakePatternView();
    Surface bkgEditor_ = MakeTileEditor();
    Surface spriteEditor_ = MakeTileEditor();
    Surface attribute_ = MakeAttributeView();
    Surface bkgPalette_ = MakePaletteView();
    Surface spritePalette_ = MakePaletteView();
    Surface systemPalette_ = MakeSystemPalette();
    Surface targetStrip_ = MakeStrip();
    Surface sourceStrip_ = MakeStrip();
};

}  // namespace bw
