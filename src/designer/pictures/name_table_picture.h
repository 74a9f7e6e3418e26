// The picture of the menu's screen at twice its size, 512 by 480 pixels, with everything that the
// working copy says is to be seen on it.
#pragma once

#include <optional>

#include "designer/model/working_copy.h"
#include "designer/pictures/marks.h"
#include "designer/pictures/surface.h"
#include "designer/pictures/tile_image.h"

namespace bw {

inline constexpr int kScreenScale = 2;
inline constexpr int kNameCell = kTilePixels * kScreenScale;  // pixels of the picture
inline constexpr int kNameTableWidth = kScreenColumns * kNameCell;
inline constexpr int kNameTableHeight = kScreenRows * kNameCell;

class NameTablePicture {
  public:
    // Composes the picture anew. `tiles` has been redrawn for the working copy's tables.
    void Compose(const WorkingCopy& copy, const TileImage& tiles,
                 const std::optional<RubberBand>& band);

    const Surface& Picture() const { return picture_; }

  private:
    Surface picture_{kNameTableWidth, kNameTableHeight};
    Surface layer_{kNameTableWidth, kNameTableHeight};  // for layers with a transparent colour
};

}  // namespace bw
