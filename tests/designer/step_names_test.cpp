#include "designer/history/step_names.h"

#include <gtest/gtest.h>

#include "design_items.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"
#include "support/text.h"

namespace bw {
namespace {

WorkingCopy Drawn() {
    WorkingCopy copy;
    SetDefaultCharMap(copy.Store());
    copy.Store().SpriteTileList = {{.X = 8, .Tile = 1}, {.X = 16, .Tile = 2}, {.X = 24, .Tile = 3}};
    copy.Store().BkgTileList.assign(5, {.X = 3, .Y = 4, .Tile = 0x1F});
    copy.Store().CustomText = {{.X = 1, .Y = 2, .Text = u"HELLO"}};
    copy.Store().ArrowTileList.resize(4);
    CountItems(copy);
    return copy;
}

TEST(StepNames, TellWhatAStepDid) {
    using Copy = WorkingCopy&;
    const std::pair<const char*, std::function<void(Copy, DesignStore&)>> steps[] = {
        {"Tile $1F painted", [](Copy, auto& s) { FillTile(s, kBkg, 0x1F, 3); }},
        {"Sprite tiles changed (256)", [](Copy, auto& s) { FillTable(s, kSp, 3); }},
        {"Sprite 1 moved", [](Copy, auto& s) { s.SpriteTileList[1].X = 99; }},
        {"Sprite 2 moved",  // one that is dragged becomes the last one
         [](Copy, auto& s) {
             std::ranges::rotate(s.SpriteTileList, s.SpriteTileList.begin() + 1);
             s.SpriteTileList.back().Y = 77;
         }},
        {"Order of the sprites", [](Copy, auto& s) { std::ranges::reverse(s.SpriteTileList); }},
        {"Sprites moved (3)", [](Copy c, auto&) { MoveItems(c, kSp, 1, 1); }},
        {"Sprite 0 changed", [](Copy, auto& s) { s.SpriteTileList[0].Flags = 1; }},
        {"Sprite 1 removed",
         [](Copy, auto& s) { s.SpriteTileList.erase(s.SpriteTileList.begin() + 1); }},
        {"Tiles placed (14)", [](Copy, auto& s) { s.BkgTileList.resize(19); }},
        {"Tile $1F moved", [](Copy, auto& s) { s.BkgTileList[4].Y = 9; }},
        {"Text \"A LONG TEXT OF WORDS\u2026\" added",
         [](Copy c, auto&) { AddText(c, u"A LONG TEXT OF WORDS THAT GOES ON"); }},
        {"Text \"HELLO\" removed", [](Copy c, auto&) { ClearTexts(c); }},
        {"Caption moved",
         [](Copy c, auto&) {
             c.document.CaptionPos = {1, 1};
         }},
        {"Caption text", [](Copy, auto& s) { s.CaptionText = u"NEW"; }},
        {"List moved",
         [](Copy c, auto&) {
             c.document.ItemPos = {1, 1};
         }},
        {"Page number moved",
         [](Copy c, auto&) {
             c.document.PageNumberPos = {1, 1};
         }},
        {"Cursor moved", [](Copy, auto& s) { s.ArrowTile.X = 9; }},
        {"Cursor changed", [](Copy, auto& s) { s.ArrowTileList[2].Palette = 1; }},
        {"Background palette: entry 5", [](Copy, auto& s) { s.BkgPalette[5] ^= 1; }},
        {"Sprite palette (16 entries)", [](Copy, auto& s) { s.SpritePalette.fill(0x3D); }},
        {"Attributes", [](Copy, auto& s) { s.Attributes[7] ^= 1; }},
        {"Character \"A\" mapped", [](Copy, auto& s) { s.CharMapData['A'] = 3; }},
        {"Characters mapped (40)", [](Copy, auto& s) { std::fill_n(&s.CharMapData[40], 40, 255); }},
        {"Large cursor on", [](Copy c, auto&) { SetBigCursor(c, true); }},
        {"Selection", [](Copy, auto& s) { s.SpriteTileList[1].Selected = 1; }},
        {"Selection", [](Copy, auto& s) { s.BkgTileSelected[9] = 1; }},
        {"Current place",
         [](Copy c, auto&) {
             c.NameCellPos = {3, 3};
         }},
        {"Sprite tile $07 painted, Sprite 0 changed",  // what merely follows is told last
         [](Copy, auto& s) {
             s.SpriteTileList[0].Tile = 7;
             FillTile(s, kSp, 7, 1);
         }},
        {"Everything",
         [](Copy c, auto& s) {
             FillTable(s, kSp, 3);
             ResetTexts(c);
             c.document.CaptionPos = c.document.ItemPos = {1, 1};
             s.CaptionText = u"NEW";
         }},
    };
    for (const auto& [name, command] : steps) {
        EditSession session(Drawn());
        session.Run([&](WorkingCopy& copy) {
            command(copy, copy.Store());
            return Views::All();
        });
        EXPECT_EQ(ToUtf8(StepNames(session.Steps()).Of(1, Language::kEnglish)), name);
    }
    EXPECT_EQ(ToUtf8(NameOfStep({}, WorkState{1, 2}, Language::kEnglish)), "Everything");
}

TEST(StepNames, FollowTheHistory) {
    EditSession session(Drawn());
    StepNames names(session.Steps());
    const auto name = [&](size_t state) { return ToUtf8(names.Of(state, Language::kEnglish)); };
    const auto undo = [&] { return ToUtf8(UndoTip(session, Language::kEnglish)); };
    const auto redo = [&] { return ToUtf8(RedoTip(session, Language::kEnglish)); };
    EXPECT_EQ(name(0), "Start");
    EXPECT_EQ(undo(), "Undo (Ctrl+Z)");
    const auto paint = [&](int32_t tile) {
        session.Run([=](WorkingCopy& copy) {
            copy.BkgTilePos = {tile, 0};
            copy.BkgPalettePos = {1, 0};
            return PaintPixel(copy, kBkg, {0, 0});
        });
    };
    for (const int32_t tile : {1, 2, 3, 4})
        paint(tile);
    for (const size_t state : {4, 1, 3, 2})
        EXPECT_EQ(name(state), "Tile $0" + std::to_string(state) + " painted");
    EXPECT_EQ(undo(), "Undo: Tile $04 painted (Ctrl+Z)");
    session.GoTo(1);
    EXPECT_EQ(redo(), "Redo: Tile $02 painted (Ctrl+Y)");
    EXPECT_EQ(name(4), "Tile $04 painted");
    paint(9);
    EXPECT_EQ(name(2), "Tile $09 painted") << "what was redone before is gone";
    EXPECT_EQ(redo(), "Redo (Ctrl+Y)");
}

}  // namespace
}  // namespace bw
