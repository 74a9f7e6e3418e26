#include "designer/window/design_menu_rows.h"

#include "designer/window/design_ids.h"

namespace bw {
namespace {

using enum MenuRowKind;
using enum TextId;

constexpr MenuRow kSpace{kSeparator};
constexpr MenuRow kPopupEnd{kEnd};

constexpr MenuRow Popup(TextId text) {
    return {kPopup, 0, text};
}

// Keys of controls of the frame (undo, redo, Delete, Escape) are in design_keys.
// clang-format off
constexpr MenuRow kRows[] = {
    Popup(kFileEntry),
        {kEntry, kDesignOpenSample, kOpenSampleEntry},
        {kEntry, kDesignImportPicture, kImportPictureEntry},
        kSpace,
        {kEntry, kDesignExit, kExitEntry},
    kPopupEnd,
    Popup(kEditEntry),
        {kEntry, kDesignCut, kCutEntry, "Ctrl+X"},
        {kEntry, kDesignCopy, kCopyEntry, "Ctrl+C"},
        {kEntry, kDesignPaste, kPasteEntry, "Ctrl+V"},
        {kEntry, kDesignDelete, kDeleteEntry},
        kSpace,
        {kEntry, kDesignClearBkgTiles, kClearUnusedBackgroundTiles},
        {kEntry, kDesignClearSpriteTiles, kClearUnusedSpriteTiles},
        {kEntry, kDesignOrganiseBkg, kOrganizeBackground},
        {kEntry, kDesignOrganiseSprites, kOrganizeSprites},
        kSpace,
        {kEntry, kDesignMapUsed, kMapUsedCharacters},
        {kEntry, kDesignMapAll, kMapAllCharacters},
        {kEntry, kDesignFontToBkg, kMapCharactersToBackground},
        {kEntry, kDesignFontToSprites, kMapCharactersToSprites},
        kSpace,
        {kEntry, kDesignCopyToSprites, kCopyBackgroundToSprites},
        {kEntry, kDesignCopyToBkg, kCopySpritesToBackground},
        {kEntry, kDesignTilesToSprites, kBackground8x8ToSprites},
        kSpace,
        {kEntry, kDesignSplitSprites, kSprites8x16To8x8},
        {kEntry, kDesignSwapAllSprites, kSwapOddAndEven8x16},
    kPopupEnd,
    Popup(kTileToolEntry),
        {kEntry, kDesignColoursLeft, kColorLeftWithBackground},
        {kEntry, kDesignColoursRight, kColorRightWithBackground},
        {kEntry, kDesignColoursLeftButEmpty, kColorLeftWithoutBackground},
        {kEntry, kDesignColoursRightButEmpty, kColorRightWithoutBackground},
        kSpace,
        {kEntry, kDesignRemoveColour1, kRemoveColor1},
        {kEntry, kDesignRemoveColour2, kRemoveColor2},
        {kEntry, kDesignRemoveColour3, kRemoveColor3},
        kSpace,
        {kEntry, kDesignPixelsLeft, kPixelsLeft},
        {kEntry, kDesignPixelsRight, kPixelsRight},
        {kEntry, kDesignPixelsUp, kPixelsUp},
        {kEntry, kDesignPixelsDown, kPixelsDown},
        kSpace,
        {kEntry, kDesignSwap1And2, kSwapColors1And2},
        {kEntry, kDesignSwap1And3, kSwapColors1And3},
        {kEntry, kDesignSwap2And3, kSwapColors2And3},
        kSpace,
        Popup(kDrawingEntry),
            {kRadio, kDesignPencil, kPencilEntry, "Ctrl+1"},
            {kRadio, kDesignLine, kLineEntry, "Ctrl+2"},
            {kRadio, kDesignRectangle, kRectangleEntry, "Ctrl+3"},
            {kRadio, kDesignFill, kFillEntry, "Ctrl+4"},
        kPopupEnd,
    kPopupEnd,
    Popup(kDisplayEntry),
        {kToggle, kDesignShowBkgTiles, kShowBackgroundTiles},
        {kToggle, kDesignShowSprites, kShowSpriteTiles},
        {kToggle, kDesignShowList, kShowItemList},
        {kToggle, kDesignShowTexts, kShowCustomText},
        {kToggle, kDesignShowCaption, kShowCaption},
        {kToggle, kDesignShowCursor, kShowCursor},
        kSpace,
        Popup(kZoomEntry),
            {kEntry, kDesignZoomIn, kZoomInEntry, "Ctrl++; Ctrl+="},
            {kEntry, kDesignZoomOut, kZoomOutEntry, "Ctrl+-"},
            {kEntry, kDesignZoomReset, kZoomResetEntry, "Ctrl+0"},
        kPopupEnd,
        kSpace,
        {kToggle, kDesignPreviewPage, kPreviewTitle},
        {kToggle, kDesignProblemsPage, kProblemsTitle},
        {kToggle, kDesignHistoryPage, kHistoryTitle},
    kPopupEnd,
};
// clang-format on

}  // namespace

std::span<const MenuRow> DesignMenuRows() {
    return kRows;
}

}  // namespace bw
