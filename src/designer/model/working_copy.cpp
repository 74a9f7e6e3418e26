#include "designer/model/working_copy.h"

#include "designer/model/attribute_table.h"

namespace bw {

void CountItems(WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    copy.nextBkgIndex = static_cast<uint32_t>(store.BkgTileList.size());
    copy.nextSpriteIndex = static_cast<uint32_t>(store.SpriteTileList.size());
    copy.nextTextIndex = static_cast<uint32_t>(store.CustomText.size());
}

Views ShowBkgColour(WorkingCopy& copy) {
    const uint8_t colour = copy.Store().BkgPalette[static_cast<size_t>(copy.BkgPalettePos.X)];
    copy.SystemPalettePos = {colour & 15, colour >> 4};
    return View::kSystemPalette;
}

Views SynchroniseCursors(WorkingCopy& copy) {
    const int64_t place = copy.AttrBytePos.X + int64_t{copy.AttrBytePos.Y} * 8;
    if (place >= 0 && place < static_cast<int64_t>(kAttributeSize)) {
        copy.CurrentAttribute = copy.Store().Attributes[static_cast<size_t>(place)];
    }
    copy.AttrQuadrantPos = {copy.AttrCellPos.X & 1, copy.AttrCellPos.Y & 1};
    copy.BkgPalettePos.X = 4 * QuadrantPalette(copy.CurrentAttribute, copy.AttrQuadrantPos) + 1;
    ShowBkgColour(copy);
    // The background's tiles are shown in the current sub-palette.
    return View::kAttribute | View::kBkgPalette | View::kSystemPalette | View::kBkgTileList |
           View::kBkgTileEditor | View::kSourceStrip;
}

}  // namespace bw
