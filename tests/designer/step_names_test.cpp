#include "designer/history/step_names.h"

#include <gtest/gtest.h>

#include "design_items.h"
#include "designer/history/work_state.h"
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

std::string NameOf(const std::function<void(WorkingCopy&)>& command) {
    EditSession session(Drawn());
    session.Run([&](WorkingCopy& copy) {
        command(copy);
        return Views::All();
    });
    EXPECT_FALSE(StepNames(session.Steps()).Of(1, Language::kChinese).empty());
    return ToUtf8(StepNames(session.Steps()).Of(1, Language::kEnglish));
}

TEST(StepNames, TellWhatAStepDid) {
    using Copy = WorkingCopy&;
    const std::pair<const char*, std::function<void(Copy)>> steps[] = {
        {"Tile $1F painted", [](Copy c) { FillTile(c.Store(), kBkg, 0x1F, 3); }},
        {"Sprite tile $02 painted", [](Copy c) { FillTile(c.Store(), kSp, 2, 3); }},
        {"Sprite tiles changed (256)", [](Copy c) { FillTable(c.Store(), kSp, 3); }},
        {"Sprite 1 moved", [](Copy c) { c.Store().SpriteTileList[1].X = 99; }},
        // A sprite that is dragged becomes the last one.
        {"Sprite 2 moved",
         [](Copy c) {
             std::ranges::rotate(c.Store().SpriteTileList, c.Store().SpriteTileList.begin() + 1);
             c.Store().SpriteTileList.back().Y = 77;
         }},
        {"Order of the sprites", [](Copy c) { std::ranges::reverse(c.Store().SpriteTileList); }},
        {"Sprites moved (3)",
         [](Copy c) {
             for (TileItem& sprite : c.Store().SpriteTileList)
                 sprite.X += 1;
         }},
        {"Sprite 0 changed", [](Copy c) { c.Store().SpriteTileList[0].Flags = 1; }},
        {"Sprite 1 removed",
         [](Copy c) { c.Store().SpriteTileList.erase(c.Store().SpriteTileList.begin() + 1); }},
        {"Sprites removed (3)", [](Copy c) { c.Store().SpriteTileList.clear(); }},
        {"Tiles placed (14)", [](Copy c) { c.Store().BkgTileList.resize(19); }},
        {"Tile $1F moved", [](Copy c) { c.Store().BkgTileList[4].Y = 9; }},
        {"Text \"A LONG TEXT OF WORDS\u2026\" added",
         [](Copy c) { AddText(c, u"A LONG TEXT OF WORDS THAT GOES ON"); }},
        {"Text \"HELLO\" removed", [](Copy c) { ClearTexts(c); }},
        {"Text \"HELLO\" moved", [](Copy c) { c.Store().CustomText[0].X = 5; }},
        {"Caption moved",
         [](Copy c) {
             c.document.CaptionPos = {1, 1};
         }},
        {"Caption text", [](Copy c) { c.Store().CaptionText = u"NEW"; }},
        {"List moved",
         [](Copy c) {
             c.document.ItemPos = {1, 1};
         }},
        {"Page number moved",
         [](Copy c) {
             c.document.PageNumberPos = {1, 1};
         }},
        {"Cursor moved", [](Copy c) { c.Store().ArrowTile.X = 9; }},
        {"Cursor changed", [](Copy c) { c.Store().ArrowTileList[2].Palette = 1; }},
        {"Background palette: entry 5", [](Copy c) { c.Store().BkgPalette[5] ^= 1; }},
        {"Sprite palette (16 entries)", [](Copy c) { c.Store().SpritePalette.fill(0x3D); }},
        {"Attributes", [](Copy c) { c.Store().Attributes[7] ^= 1; }},
        {"Character \"A\" mapped", [](Copy c) { c.Store().CharMapData['A'] = 3; }},
        {"Characters mapped (40)",
         [](Copy c) { std::fill_n(c.Store().CharMapData.begin() + 40, 40, 255); }},
        {"Large cursor on", [](Copy c) { c.document.BigCursor = 1; }},
        {"Selection", [](Copy c) { c.Store().SpriteTileList[1].Selected = 1; }},
        {"Selection", [](Copy c) { c.Store().BkgTileSelected[9] = 1; }},
        {"Current place",
         [](Copy c) {
             c.NameCellPos = {3, 3};
         }},
        // The more telling one first; what merely follows it last.
        {"Sprite tiles changed (2), Sprites changed (3)",
         [](Copy c) {
             for (TileItem& sprite : c.Store().SpriteTileList)
                 sprite.Tile += 7;
             FillTile(c.Store(), kSp, 7, 1);
             FillTile(c.Store(), kSp, 8, 1);
         }},
        {"Everything",
         [](Copy c) {
             FillTable(c.Store(), kSp, 3);
             FillTable(c.Store(), kBkg, 3);
             ResetDesign(c);
             c.Store().CaptionText = u"NEW";
             c.Store().Attributes.fill(3);
             c.document.ItemPos = {1, 1};
         }},
    };
    for (const auto& [name, command] : steps)
        EXPECT_EQ(NameOf(command), name);
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
