#include "designer/window/designer_commands.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QImage>
#include <QLineEdit>

#include "designer/tools/attribute_tools.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"
#include "designer/window/design_clipboard.h"
#include "designer/window/design_ids.h"
#include "settings/setting_names.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;
constexpr int32_t kShiftStep = 8;  // pixels that Shift moves sprites by

template <typename Parts>
bool Checked(Parts& parts, int id) {
    return parts.frame->ButtonOf(id).isChecked();
}

// A step of the undo history: a function of the document half with its arguments.
template <auto kCommand, auto... kArguments, typename Parts>
void Step(Parts& parts) {
    parts.Run([](WorkingCopy& copy) { return kCommand(copy, kArguments...); });
}

// A switch of the window: the field takes what its check box shows.
template <int kId, bool WorkingCopy::*kField, typename Parts>
void Switch(Parts& parts) {
    const bool on = Checked(parts, kId);
    parts.RunWithoutStep([&](WorkingCopy& copy) {
        copy.*kField = on;
        return Views(View::kNameTable);
    });
}

// A layer of the screen: the mark of its entry decides.
template <int kId, bool WorkingCopy::*kField, typename Parts>
void Layer(Parts& parts) {
    const bool on = !parts.menu.GetMenuState(kId);
    parts.menu.CheckMenuItem(kId, on);
    parts.RunWithoutStep([&](WorkingCopy& copy) {
        copy.*kField = on;
        return Views(View::kNameTable);
    });
}

template <int kId, uint8_t kFlag, typename Parts>
void Flag(Parts& parts) {
    const bool on = Checked(parts, kId);
    parts.gestures.SetShownFlag(kFlag, on);
    parts.Run([on](WorkingCopy& copy) { return SetSpriteFlag(copy, kFlag, on); });
}

template <PatternTable kTable, int kX, int kY, typename Parts>
void Move(Parts& parts) {
    const bool far =
        kTable == kSprites && QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    const int32_t step = far ? kShiftStep : 1;
    parts.Run([step](WorkingCopy& copy) { return MoveItems(copy, kTable, kX * step, kY * step); });
}

template <PageTurn kTurn, typename Parts>
void Turn(Parts& parts) {
    parts.RunWithoutStep([](WorkingCopy& copy) { return TurnPage(copy, kTurn); });
}

template <typename Parts>
void Add(Parts& parts) {
    const std::u16string text = FromQt(parts.frame->EditOf(kDesignText).text());
    parts.Run([text](WorkingCopy& copy) { return AddText(copy, text); });
}

template <typename Parts>
void ChooseBigCursor(Parts& parts) {
    const bool on = Checked(parts, kDesignBigCursor);
    parts.StoreSwitch(setting::kBigCursor, on);
    parts.Run([on](WorkingCopy& copy) { return SetBigCursor(copy, on); });
}

template <typename Parts>
void ChooseBigSprite(Parts& parts) {
    const bool on = Checked(parts, kDesignBigSprite);
    parts.StoreSwitch(setting::kBigSprite, on);
    parts.Run([on](WorkingCopy& copy) { return SetBigSprite(copy, on); });
}

}  // namespace

std::span<const DesignerCommands::Row> DesignerCommands::Rows() {
    using enum TileTool;
    using enum Direction;
    using Parts = CDesignDialog::Parts;
    static constexpr Row kRows[] = {
        {kDesignExit, [](Parts& parts) { parts.window.Post(kMessageClose); }},
        {kDesignUndo, [](Parts& parts) { parts.Undo(); }},
        {kDesignRedo, [](Parts& parts) { parts.Redo(); }},
        // Characters.
        {kDesignQuickFromBkg, Switch<kDesignQuickFromBkg, &WorkingCopy::QuickReplaceFromBkg>},
        {kDesignQuickToBkg, Switch<kDesignQuickToBkg, &WorkingCopy::QuickReplaceToBkg>},
        {kDesignQuickToSprites, Switch<kDesignQuickToSprites, &WorkingCopy::QuickReplaceToSprites>},
        {kDesignMapReset, Step<ResetCharMap>},
        {kDesignMapAll, Step<MapAllCharacters>},
        {kDesignMapUsed, Step<MapUsedCharacters>},
        {kDesignFontToBkg, Step<CopyFont, kBkg>},
        {kDesignFontToSprites, Step<CopyFont, kSprites>},
        // The screen and its texts.
        {kDesignPageFirst, Turn<PageTurn::kFirst>},
        {kDesignPagePrevious, Turn<PageTurn::kPrevious>},
        {kDesignPageNext, Turn<PageTurn::kNext>},
        {kDesignPageLast, Turn<PageTurn::kLast>},
        {kDesignFillColor, Switch<kDesignFillColor, &WorkingCopy::FillColor>},
        {kDesignDrawLine, Switch<kDesignDrawLine, &WorkingCopy::DrawLine>},
        {kDesignDragText, Switch<kDesignDragText, &WorkingCopy::DragText>},
        {kDesignAddText, Add},
        {kDesignTextsReset, Step<ClearTexts>},
        {kDesignScreenReset, Step<ResetTexts>},
        {kDesignMarkCursor, Switch<kDesignMarkCursor, &WorkingCopy::MarkCursor>},
        {kDesignBigCursor, ChooseBigCursor},
        {kDesignShowBkgTiles, Layer<kDesignShowBkgTiles, &WorkingCopy::Show_Bg_Tile>},
        {kDesignShowSprites, Layer<kDesignShowSprites, &WorkingCopy::Show_Sp_Tile>},
        {kDesignShowList, Layer<kDesignShowList, &WorkingCopy::Show_List>},
        {kDesignShowTexts, Layer<kDesignShowTexts, &WorkingCopy::Show_Custom_Text>},
        {kDesignShowCaption, Layer<kDesignShowCaption, &WorkingCopy::Show_Caption>},
        {kDesignShowCursor, Layer<kDesignShowCursor, &WorkingCopy::Show_Cursor>},
        // What lies on it.
        {kDesignQuickAction, Switch<kDesignQuickAction, &WorkingCopy::QuickAction>},
        {kDesignBkgItemsAll, Step<SelectAllItems, kBkg>},
        {kDesignBkgItemsInverse, Step<InvertItemSelection, kBkg>},
        {kDesignBkgItemsReset, Step<ClearItems, kBkg>},
        {kDesignBkgItemsUp, Move<kBkg, 0, -1>},
        {kDesignBkgItemsLeft, Move<kBkg, -1, 0>},
        {kDesignBkgItemsDown, Move<kBkg, 0, 1>},
        {kDesignBkgItemsRight, Move<kBkg, 1, 0>},
        {kDesignSpritesAll, Step<SelectAllItems, kSprites>},
        {kDesignSpritesInverse, Step<InvertItemSelection, kSprites>},
        {kDesignSpritesReset, Step<ClearItems, kSprites>},
        {kDesignSpritesUp, Move<kSprites, 0, -1>},
        {kDesignSpritesLeft, Move<kSprites, -1, 0>},
        {kDesignSpritesDown, Move<kSprites, 0, 1>},
        {kDesignSpritesRight, Move<kSprites, 1, 0>},
        {kDesignSwapSpriteTables, Step<SwapSpriteTables>},
        {kDesignFlipVertically, Flag<kDesignFlipVertically, TileItem::kFlipVertically>},
        {kDesignFlipHorizontally, Flag<kDesignFlipHorizontally, TileItem::kFlipHorizontally>},
        {kDesignBehind, Flag<kDesignBehind, TileItem::kBehindBackground>},
        {kDesignBigSprite, ChooseBigSprite},
        {kDesignSplitSprites, Step<SplitTallSprites>},
        {kDesignSwapAllSprites, Step<SwapAllSpriteTables>},
        {kDesignTilesToSprites, Step<MakeSpritesOfTiles>},
        // Attributes, palettes, tables.
        {kDesignAttributesReset, Step<ResetAttributes>},
        {kDesignAttributesUp, Step<ShiftAttributes, kUp>},
        {kDesignAttributesLeft, Step<ShiftAttributes, kLeft>},
        {kDesignAttributesDown, Step<ShiftAttributes, kDown>},
        {kDesignAttributesRight, Step<ShiftAttributes, kRight>},
        {kDesignBkgPaletteReset, Step<ResetPalette, kBkg>},
        {kDesignSpritePaletteReset, Step<ResetPalette, kSprites>},
        {kDesignBkgChrReset, Step<ResetPatternTable, kBkg>},
        {kDesignSpriteChrReset, Step<ResetPatternTable, kSprites>},
        {kDesignSwapTables, Step<SwapPatternTables>},
        {kDesignDesignReset, Step<ResetDesign>},
        {kDesignCopyToSprites, Step<CopySelectedTiles, kBkg>},
        {kDesignCopyToBkg, Step<CopySelectedTiles, kSprites>},
        {kDesignClearBkgTiles, Step<ClearUnusedBkgTiles>},
        {kDesignClearSpriteTiles, Step<ClearUnusedSpriteTiles>},
        {kDesignOrganiseBkg, Step<OrganiseBkgTiles>},
        {kDesignOrganiseSprites, Step<OrganiseSpriteTiles>},
        // Pixels of the selected tiles.
        {kDesignColoursLeft, Step<ApplyTileTool, kColoursLeft>},
        {kDesignColoursRight, Step<ApplyTileTool, kColoursRight>},
        {kDesignColoursLeftButEmpty, Step<ApplyTileTool, kColoursLeftButEmpty>},
        {kDesignColoursRightButEmpty, Step<ApplyTileTool, kColoursRightButEmpty>},
        {kDesignRemoveColour1, Step<ApplyTileTool, kRemove1>},
        {kDesignRemoveColour2, Step<ApplyTileTool, kRemove2>},
        {kDesignRemoveColour3, Step<ApplyTileTool, kRemove3>},
        {kDesignPixelsLeft, Step<ApplyTileTool, kPixelsLeft>},
        {kDesignPixelsRight, Step<ApplyTileTool, kPixelsRight>},
        {kDesignPixelsUp, Step<ApplyTileTool, kPixelsUp>},
        {kDesignPixelsDown, Step<ApplyTileTool, kPixelsDown>},
        {kDesignSwap1And2, Step<ApplyTileTool, kSwap1And2>},
        {kDesignSwap1And3, Step<ApplyTileTool, kSwap1And3>},
        {kDesignSwap2And3, Step<ApplyTileTool, kSwap2And3>},
        // The clipboard and the keys.
        {kDesignCut, [](Parts& parts) { CutSelection(parts); }},
        {kDesignCopy, [](Parts& parts) { CopySelection(parts); }},
        {kDesignPaste,
         [](Parts& parts) {
             PasteSelection(parts,
                            [&parts](const QImage& picture) { parts.PastePicture(picture); });
         }},
        {kDesignDelete, [](Parts& parts) { DeleteSelected(parts); }},
        {kDesignPencil, [](Parts& parts) { parts.SetShape(TileShape::kPencil); }},
        {kDesignLine, [](Parts& parts) { parts.SetShape(TileShape::kLine); }},
        {kDesignRectangle, [](Parts& parts) { parts.SetShape(TileShape::kRectangle); }},
        {kDesignFill, [](Parts& parts) { parts.SetShape(TileShape::kFill); }},
        {kDesignOpenSample, [](Parts& parts) { parts.files.OpenSample(); }},
        {kDesignImportPicture, [](Parts& parts) { parts.AskPicture(); }},
        // The window.
        {kDesignPreviewPage, [](Parts& parts) { parts.TogglePage(kDesignPreviewPage); }},
        {kDesignProblemsPage, [](Parts& parts) { parts.TogglePage(kDesignProblemsPage); }},
        {kDesignHistoryPage, [](Parts& parts) { parts.TogglePage(kDesignHistoryPage); }},
        {kDesignZoomIn, [](Parts& parts) { parts.SetZoom(parts.zoom + 1); }},
        {kDesignZoomOut, [](Parts& parts) { parts.SetZoom(parts.zoom - 1); }},
        {kDesignZoomReset, [](Parts& parts) { parts.SetZoom(1); }},
    };
    return kRows;
}

}  // namespace bw
