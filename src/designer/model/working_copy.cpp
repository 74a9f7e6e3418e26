#include "designer/model/working_copy.h"

#include "designer/model/attribute_table.h"

namespace bw {

Views SynchroniseCursors(WorkingCopy& copy) {
    const int64_t place = copy.AttrBytePos.X + int64_t{copy.AttrBytePos.Y} * 8;
    if (place >= 0 && place < static_cast<int64_t>(kAttributeSize)) {
        copy.CurrentAttribute = copy.Store().Attributes[static_cast<size_t>(place)];
    }
    copy.AttrQuadrantPos = {copy.AttrCellPos.X & 1, copy.AttrCellPos.Y & 1};
    copy.BkgPalettePos.X = 4 * QuadrantPalette(copy.CurrentAttribute, copy.AttrQuadrantPos) + 1;
    const uint8_t colour = copy.Store().BkgPalette[static_cast<size_t>(copy.BkgPalettePos.X)];
    copy.SystemPalettePos = {colour & 15, colour >> 4};
    // The background's tiles are shown in the current sub-palette.
    return View::kAttribute | View::kBkgPalette | View::kSystemPalette | View::kBkgTileList |
           View::kBkgTileEditor | View::kSourceStrip;
}

}  // namespace bw
