#include "designer/window/control_rows.h"

#include "designer/window/design_ids.h"

namespace bw {
namespace {

using enum ControlKind;
using enum TextId;

// clang-format off
constexpr ControlRow kRows[] = {
    {kGroup, kDesignMappingGroup, {}, {{8, 8}, 1068, 96}, 0, {}},
    {kLabel, kDesignTargetLabel, kTarget, {{16, 16}, 64, 20}, kDesignMappingGroup, {}},
    {kCheck, kDesignQuickToBkg, kReplaceToBackgroundChr, {{92, 16}, 300, 20}, kDesignMappingGroup, kTipQuickToBkg},
    {kCheck, kDesignQuickToSprites, kReplaceToSpriteChr, {{400, 16}, 300, 20}, kDesignMappingGroup, kTipQuickToSprites},
    {kLabel, kDesignSourceLabel, kSource, {{16, 58}, 64, 20}, kDesignMappingGroup, {}},
    {kCheck, kDesignQuickFromBkg, kReplaceFromBackgroundChr, {{92, 58}, 300, 20}, kDesignMappingGroup, kTipQuickFromBkg},
    {kPush, kDesignMapExport, kExport, {{900, 58}, 80, 20}, kDesignMappingGroup, kTipMapExport},
    {kPush, kDesignMapReset, kReset, {{988, 58}, 80, 20}, kDesignMappingGroup, kTipMapReset},
    {kGroup, kDesignNameTableGroup, kNameTable, {{8, 108}, 528, 720}, 0, {}},
    {kPush, kDesignPageFirst, kDoubleArrowLeft, {{16, 610}, 40, 22}, kDesignNameTableGroup, kTipPageFirst},
    {kPush, kDesignPagePrevious, kArrowLeft, {{60, 610}, 40, 22}, kDesignNameTableGroup, kTipPagePrevious},
    {kPush, kDesignPageNext, kArrowRight, {{104, 610}, 40, 22}, kDesignNameTableGroup, kTipPageNext},
    {kPush, kDesignPageLast, kDoubleArrowRight, {{148, 610}, 40, 22}, kDesignNameTableGroup, kTipPageLast},
    {kCheck, kDesignFillColor, kFillColor, {{204, 611}, 104, 20}, kDesignNameTableGroup, kTipFillColor},
    {kCheck, kDesignDrawLine, kDrawLine, {{312, 611}, 104, 20}, kDesignNameTableGroup, kTipDrawLine},
    {kCheck, kDesignDragText, kDragText, {{420, 611}, 108, 20}, kDesignNameTableGroup, kTipDragText},
    {kLabel, kDesignCaptionLabel, kCaptionLabel, {{16, 640}, 58, 22}, kDesignNameTableGroup, {}},
    {kEdit, kDesignCaption, {}, {{76, 640}, 178, 22}, kDesignNameTableGroup, kTipCaption},
    {kGroup, kDesignTextListGroup, kTextList, {{16, 670}, 238, 88}, 0, {}},
    {kLabel, kDesignTextLabel, kTextLabel, {{24, 690}, 50, 22}, kDesignTextListGroup, {}},
    {kEdit, kDesignText, {}, {{76, 690}, 170, 22}, kDesignTextListGroup, kTipText},
    {kPush, kDesignAddText, kAdd, {{24, 722}, 52, 24}, kDesignTextListGroup, kTipAddText},
    {kPush, kDesignTextsLoad, kLoad, {{80, 722}, 52, 24}, kDesignTextListGroup, kTipLoad},
    {kPush, kDesignTextsSave, kSave, {{136, 722}, 52, 24}, kDesignTextListGroup, kTipSave},
    {kPush, kDesignTextsReset, kReset, {{192, 722}, 54, 24}, kDesignTextListGroup, kTipTextsReset},
    {kPush, kDesignScreenLoad, kLoad, {{16, 766}, 76, 24}, kDesignNameTableGroup, kTipScreenLoad},
    {kPush, kDesignScreenSave, kSave, {{97, 766}, 76, 24}, kDesignNameTableGroup, kTipScreenSave},
    {kPush, kDesignScreenReset, kReset, {{178, 766}, 76, 24}, kDesignNameTableGroup, kTipScreenReset},
    {kGroup, kDesignBkgItemsGroup, kBackgroundTileList, {{264, 638}, 128, 152}, 0, {}},
    {kCheck, kDesignQuickAction, kQuickAction, {{270, 656}, 118, 18}, kDesignBkgItemsGroup, kTipQuickAction},
    {kPush, kDesignBkgItemsAll, kSelectAll, {{270, 676}, 116, 20}, kDesignBkgItemsGroup, kTipItemsAll},
    {kPush, kDesignBkgItemsInverse, kSelectInverse, {{270, 698}, 116, 20}, kDesignBkgItemsGroup, kTipItemsInverse},
    {kPush, kDesignBkgItemsLoad, kLoad, {{268, 720}, 40, 20}, kDesignBkgItemsGroup, kTipBkgItemsLoad},
    {kPush, kDesignBkgItemsSave, kSave, {{308, 720}, 40, 20}, kDesignBkgItemsGroup, kTipBkgItemsSave},
    {kPush, kDesignBkgItemsReset, kReset, {{348, 720}, 42, 20}, kDesignBkgItemsGroup, kTipBkgItemsReset},
    {kPush, kDesignBkgItemsUp, kGlyphUp, {{314, 743}, 28, 20}, kDesignBkgItemsGroup, kTipBkgItemsMove},
    {kPush, kDesignBkgItemsLeft, kGlyphLeft, {{284, 765}, 28, 20}, kDesignBkgItemsGroup, kTipBkgItemsMove},
    {kPush, kDesignBkgItemsDown, kGlyphDown, {{314, 765}, 28, 20}, kDesignBkgItemsGroup, kTipBkgItemsMove},
    {kPush, kDesignBkgItemsRight, kGlyphRight, {{344, 765}, 28, 20}, kDesignBkgItemsGroup, kTipBkgItemsMove},
    {kGroup, kDesignAttributesGroup, kAttributes, {{398, 638}, 132, 92}, 0, {}},
    {kPush, kDesignAttributesLoad, kLoad, {{402, 656}, 40, 20}, kDesignAttributesGroup, kTipLoad},
    {kPush, kDesignAttributesSave, kSave, {{443, 656}, 40, 20}, kDesignAttributesGroup, kTipSave},
    {kPush, kDesignAttributesReset, kReset, {{484, 656}, 42, 20}, kDesignAttributesGroup, kTipAttributesReset},
    {kPush, kDesignAttributesUp, kGlyphUp, {{450, 680}, 28, 20}, kDesignAttributesGroup, kTipAttributesMove},
    {kPush, kDesignAttributesLeft, kGlyphLeft, {{420, 703}, 28, 20}, kDesignAttributesGroup, kTipAttributesMove},
    {kPush, kDesignAttributesDown, kGlyphDown, {{450, 703}, 28, 20}, kDesignAttributesGroup, kTipAttributesMove},
    {kPush, kDesignAttributesRight, kGlyphRight, {{480, 703}, 28, 20}, kDesignAttributesGroup, kTipAttributesMove},
    {kCheck, kDesignMarkCursor, kMarkCursor, {{400, 736}, 132, 20}, kDesignNameTableGroup, kTipMarkCursor},
    {kCheck, kDesignBigCursor, kBigCursor, {{400, 760}, 132, 20}, kDesignNameTableGroup, kTipBigCursor},
    {kGroup, kDesignChrGroup, kChrOfBackgroundAndSprites, {{540, 108}, 536, 446}, 0, {}},
    {kPush, kDesignBkgChrLoad, kLoad, {{684, 388}, 58, 24}, kDesignChrGroup, kTipChrLoad},
    {kPush, kDesignBkgChrSave, kSave, {{746, 388}, 58, 24}, kDesignChrGroup, kTipChrSave},
    {kPush, kDesignBkgChrReset, kReset, {{684, 416}, 58, 24}, kDesignChrGroup, kTipChrReset},
    {kPush, kDesignSwapTables, kSwapTables, {{746, 416}, 58, 24}, kDesignChrGroup, kTipSwapTables},
    {kPush, kDesignSpriteChrLoad, kLoad, {{946, 388}, 60, 24}, kDesignChrGroup, kTipChrLoad},
    {kPush, kDesignSpriteChrSave, kSave, {{1010, 388}, 60, 24}, kDesignChrGroup, kTipChrSave},
    {kPush, kDesignSpriteChrReset, kReset, {{946, 416}, 124, 24}, kDesignChrGroup, kTipChrReset},
    {kCheck, kDesignFlipVertically, kVerticalFlip, {{944, 444}, 130, 20}, kDesignChrGroup, kTipFlip},
    {kCheck, kDesignFlipHorizontally, kHorizontalFlip, {{944, 465}, 130, 20}, kDesignChrGroup, kTipFlip},
    {kCheck, kDesignBehind, kBehindBackground, {{944, 486}, 130, 20}, kDesignChrGroup, kTipBehind},
    {kCheck, kDesignBigSprite, kMode8x16, {{944, 507}, 130, 20}, kDesignChrGroup, kTipBigSprite},
    {kGroup, kDesignAttributeGroup, kColorAttribute, {{540, 562}, 140, 152}, 0, {}},
    {kGroup, kDesignBkgPaletteGroup, kBackgroundPalette, {{690, 562}, 272, 58}, 0, {}},
    {kPush, kDesignBkgPaletteLoad, kLoad, {{698, 597}, 80, 20}, kDesignBkgPaletteGroup, kTipLoad},
    {kPush, kDesignBkgPaletteSave, kSave, {{786, 597}, 80, 20}, kDesignBkgPaletteGroup, kTipSave},
    {kPush, kDesignBkgPaletteReset, kReset, {{874, 597}, 80, 20}, kDesignBkgPaletteGroup, kTipPaletteReset},
    {kGroup, kDesignSpritePaletteGroup, kSpritePalette, {{690, 620}, 272, 58}, 0, {}},
    {kPush, kDesignSpritePaletteLoad, kLoad, {{698, 655}, 80, 20}, kDesignSpritePaletteGroup, kTipLoad},
    {kPush, kDesignSpritePaletteSave, kSave, {{786, 655}, 80, 20}, kDesignSpritePaletteGroup, kTipSave},
    {kPush, kDesignSpritePaletteReset, kReset, {{874, 655}, 80, 20}, kDesignSpritePaletteGroup, kTipPaletteReset},
    {kGroup, kDesignPaletteGroup, kPalette, {{690, 680}, 272, 88}, 0, {}},
    {kGroup, kDesignSpritesGroup, kSpriteTileList, {{970, 562}, 102, 206}, 0, {}},
    {kPush, kDesignSpritesAll, kSelectAll, {{975, 580}, 92, 22}, kDesignSpritesGroup, kTipItemsAll},
    {kPush, kDesignSpritesInverse, kSelectInverse, {{975, 605}, 92, 22}, kDesignSpritesGroup, kTipItemsInverse},
    {kPush, kDesignSpritesLoad, kLoad, {{975, 630}, 45, 22}, kDesignSpritesGroup, kTipSpritesLoad},
    {kPush, kDesignSpritesSave, kSave, {{1022, 630}, 45, 22}, kDesignSpritesGroup, kTipSpritesSave},
    {kPush, kDesignSpritesReset, kReset, {{975, 655}, 92, 22}, kDesignSpritesGroup, kTipSpritesReset},
    {kPush, kDesignSpritesUp, kGlyphUp, {{1007, 682}, 28, 22}, kDesignSpritesGroup, kTipSpritesMove},
    {kPush, kDesignSpritesLeft, kGlyphLeft, {{977, 706}, 28, 22}, kDesignSpritesGroup, kTipSpritesMove},
    {kPush, kDesignSpritesDown, kGlyphDown, {{1007, 706}, 28, 22}, kDesignSpritesGroup, kTipSpritesMove},
    {kPush, kDesignSpritesRight, kGlyphRight, {{1037, 706}, 28, 22}, kDesignSpritesGroup, kTipSpritesMove},
    {kPush, kDesignSwapSpriteTables, kSwapTileNumbers, {{975, 736}, 92, 24}, kDesignSpritesGroup, kTipSwapSpriteTables},
    {kPush, kDesignUndo, kUndo, {{548, 790}, 92, 28}, 0, kTipUndo},
    {kPush, kDesignRedo, kRedo, {{646, 790}, 92, 28}, 0, kTipRedo},
    {kPush, kDesignDesignLoad, kLoad, {{780, 790}, 92, 28}, 0, kTipDesignLoad},
    {kPush, kDesignDesignSave, kSave, {{878, 790}, 92, 28}, 0, kTipDesignSave},
    {kPush, kDesignDesignReset, kReset, {{976, 790}, 92, 28}, 0, kTipDesignReset},
};

constexpr ViewRow kViews[] = {
    {Control::kTargetStrip, View::kTargetStrip, kViewTargetStrip, kHelpTargetStrip},
    {Control::kSourceStrip, View::kSourceStrip, kViewSourceStrip, kHelpSourceStrip},
    {Control::kNameTable, View::kNameTable, kViewNameTable, kHelpNameTable},
    {Control::kBkgTileList, View::kBkgTileList, kViewBkgTiles, kHelpBkgTiles},
    {Control::kSpriteTileList, View::kSpriteTileList, kViewSpriteTiles, kHelpSpriteTiles},
    {Control::kBkgTileEditor, View::kBkgTileEditor, kViewBkgEditor, kHelpBkgEditor},
    {Control::kSpriteTileEditor, View::kSpriteTileEditor, kViewSpriteEditor, kHelpSpriteEditor},
    {Control::kAttribute, View::kAttribute, kViewAttribute, kHelpAttribute},
    {Control::kBkgPalette, View::kBkgPalette, kViewBkgPalette, kHelpBkgPalette},
    {Control::kSpritePalette, View::kSpritePalette, kViewSpritePalette, kHelpSpritePalette},
    {Control::kSystemPalette, View::kSystemPalette, kViewSystemPalette, kHelpSystemPalette},
};
// clang-format on

}  // namespace

std::span<const ControlRow> ControlRows() {
    return kRows;
}

std::span<const ViewRow> ViewRows() {
    return kViews;
}

}  // namespace bw
