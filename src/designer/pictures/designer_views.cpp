#include "designer/pictures/designer_views.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

// What is copied out of what.
Views WithDependents(Views stale) {
    if (stale.Has(View::kBkgTiles)) {
        stale |= View::kBkgTileList | View::kBkgTileEditor | View::kNameTable;
    }
    if (stale.Has(View::kSpriteTiles)) {
        stale |= View::kSpriteTileList | View::kSpriteTileEditor | View::kNameTable;
    }
    if (stale.Has(View::kNameTable)) stale |= View::kSourceStrip;
    return stale;
}

}  // namespace

Views DesignerViews::Update(const WorkingCopy& copy, Views stale,
                            const std::optional<RubberBands>& bands) {
    stale = WithDependents(stale);
    const DesignStore& store = copy.Store();
    const auto half = [&](View view) { return SubPalettes{0, stale.Has(view) ? 4 : 0}; };
    const auto band = [&](RubberBand RubberBands::*member) {
        return bands ? std::optional((*bands).*member) : std::nullopt;
    };
    tiles_.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, half(View::kBkgTiles),
                  half(View::kSpriteTiles));
    if (stale.Has(View::kBkgTileList)) {
        DrawPatternView(bkgList_, kBkg, copy, tiles_, band(&RubberBands::bkgTiles));
    }
    if (stale.Has(View::kSpriteTileList)) {
        DrawPatternView(spriteList_, kSprites, copy, tiles_, band(&RubberBands::spriteTiles));
    }
    if (stale.Has(View::kBkgTileEditor)) DrawTileEditor(bkgEditor_, kBkg, copy, tiles_);
    if (stale.Has(View::kSpriteTileEditor)) DrawTileEditor(spriteEditor_, kSprites, copy, tiles_);
    if (stale.Has(View::kNameTable)) screen_.Compose(copy, tiles_, band(&RubberBands::nameTable));
    if (stale.Has(View::kBkgPalette)) DrawPaletteView(bkgPalette_, kBkg, copy);
    if (stale.Has(View::kSpritePalette)) DrawPaletteView(spritePalette_, kSprites, copy);
    if (stale.Has(View::kAttribute)) DrawAttributeView(attribute_, copy);
    if (stale.Has(View::kSystemPalette)) DrawSystemPalette(systemPalette_, copy);
    if (stale.Has(View::kTargetStrip)) {
        if (!font_) font_ = MakeFontImage(store.DefaultChrData);
        DrawTargetStrip(targetStrip_, copy, *font_);
    }
    if (stale.Has(View::kSourceStrip)) DrawSourceStrip(sourceStrip_, copy, tiles_);
    return stale;
}

const Surface& DesignerViews::Of(View view) const {
    switch (view) {
        case View::kNameTable:
            return screen_.Picture();
        case View::kBkgTileList:
            return bkgList_;
        case View::kSpriteTileList:
            return spriteList_;
        case View::kBkgTileEditor:
            return bkgEditor_;
        case View::kSpriteTileEditor:
            return spriteEditor_;
        case View::kAttribute:
            return attribute_;
        case View::kBkgPalette:
            return bkgPalette_;
        case View::kSpritePalette:
            return spritePalette_;
        case View::kSystemPalette:
            return systemPalette_;
        case View::kTargetStrip:
            return targetStrip_;
        case View::kSourceStrip:
            return sourceStrip_;
        default:
            return tiles_.Picture();
    }
}

}  // namespace bw
