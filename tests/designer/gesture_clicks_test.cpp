// Clicks on the views, the modes of quick work, the rubber band, double clicks and keys.

#include <algorithm>
#include <functional>
#include <string>

#include <gmock/gmock.h>

#include "designer/model/design_store.h"
#include "designer/model/tiles.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/tile_tools.h"
#include "gesture_bench.h"

namespace bw {
namespace {

using enum Control;
using testing::ElementsAre;

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSp = PatternTable::kSprites;
constexpr std::chrono::milliseconds kLater{1000};

MATCHER_P3(Item, x, y, tile, "") {
    return arg.X == x && arg.Y == y && arg.Tile == tile;
}

void NumberFont(GestureBench& bench) {
    for (size_t i = 0; i < kChrDataSize; ++i)
        bench.Store().DefaultChrData[i] = static_cast<uint8_t>(i / kTileBytes);
}

TEST(GestureClicks, EditorsPaintWhileTheButtonIsDown) {
    GestureBench bench;
    for (const auto& [table, editor] :
         {std::pair{kBkg, kBkgTileEditor}, {kSp, kSpriteTileEditor}}) {
        WorkingCopy& copy = bench.Copy();
        copy.BkgTilePos = copy.SpTilePos = {3, 2};
        copy.BkgPalettePos.X = copy.SpPalettePos.X = 7;
        copy.SpritePaletteActive = table == kBkg;
        bench.Press(bench.In(editor, 1, 2));
        bench.Move(bench.In(editor, 2, 2));
        bench.Move(kNowhere);
        bench.Release(bench.In(editor, 3, 2));
        bench.Move(bench.In(editor, 4, 2));
        EXPECT_EQ(TileAt(bench.Store(), table, 0x23)[2], 0x60) << "the release doesn't paint";
        EXPECT_EQ(TileAt(bench.Store(), table, 0x23)[10], 0x60);
        EXPECT_EQ(copy.SpritePaletteActive, table == kSp);
    }
    EXPECT_EQ(bench.session.Steps().Count(), 3u) << "a stroke is one step";
}

TEST(GestureClicks, StripsShowTheirCharacters) {
    GestureBench bench;
    bench.Store().CharMapData[32 + 5] = 0x9A;
    bench.Copy().SpritePaletteActive = true;
    bench.Press(bench.In(kSourceStrip, 4));
    bench.Move(bench.In(kSourceStrip, 5));
    bench.Move(bench.In(kTargetStrip, 9));
    EXPECT_EQ(bench.Copy().MapSourcePos, (Pos{5, 0}));
    EXPECT_EQ(bench.Copy().BkgTilePos, (Pos{10, 9}));
    EXPECT_FALSE(bench.Copy().SpritePaletteActive);
    bench.Release(kNowhere);
    bench.Copy().SpritePaletteActive = true;
    bench.Drag(bench.In(kTargetStrip, 7), bench.In(kTargetStrip, 63));
    EXPECT_EQ(bench.Copy().MapTargetPos, (Pos{63, 0}));
    EXPECT_EQ(bench.Copy().BkgTilePos, (Pos{10, 9}));
    EXPECT_FALSE(bench.Copy().SpritePaletteActive);
}

TEST(GestureClicks, QuickModesEndOutsideTheirControls) {
    struct Case {
        Point at;
        bool fromBkg, toBkg, toSprites;
    };
    const GestureBench places;
    for (const Case& c : {Case{places.In(kSourceStrip, 1), true, false, false},
                          Case{places.In(kTargetStrip, 1), false, true, true},
                          Case{places.In(kBkgTileList, 1), true, true, false},
                          Case{places.In(kSpriteTileList, 1), false, false, true},
                          Case{places.In(kNameTable, 1), false, false, false}}) {
        GestureBench bench;
        WorkingCopy& copy = bench.Copy();
        copy.QuickReplaceFromBkg = copy.QuickReplaceToBkg = copy.QuickReplaceToSprites = true;
        EXPECT_TRUE(bench.Press(c.at).Has(View::kCheckBoxes));
        EXPECT_EQ(copy.QuickReplaceFromBkg, c.fromBkg);
        EXPECT_EQ(copy.QuickReplaceToBkg, c.toBkg);
        EXPECT_EQ(copy.QuickReplaceToSprites, c.toSprites);
    }
}

TEST(GestureClicks, QuickReplacementsWalkOn) {
    GestureBench bench;
    WorkingCopy& copy = bench.Copy();
    NumberFont(bench);
    copy.QuickReplaceFromBkg = true;
    bench.Click(bench.In(kSourceStrip, 61));
    for (const int tile : {4, 5, 6, 7})
        bench.Click(bench.In(kBkgTileList, tile, 1));
    EXPECT_EQ(copy.Store().CharMapData[32 + 61], 0x14);
    EXPECT_EQ(copy.Store().CharMapData[32 + 62], 0x15);
    EXPECT_EQ(copy.Store().CharMapData[32 + 63], 0x17) << "stays on the last one";
    EXPECT_EQ(copy.MapSourcePos.X, 63);
    EXPECT_EQ(copy.BkgTilePos, (Pos{7, 1}));
    bench.mouse.DoubleClick(bench.Event(bench.In(kSourceStrip, 2), {}));
    EXPECT_EQ(copy.MapSourcePos.X, 63) << "double clicks don't count in this mode";
    copy.QuickReplaceFromBkg = false;

    copy.QuickReplaceToBkg = true;
    bench.Click(bench.In(kBkgTileList, 15, 2));
    EXPECT_FALSE(bench.mouse.DraggedPicture().shown);
    bench.Press(bench.In(kTargetStrip, 1));
    bench.Move(bench.In(kTargetStrip, 9));
    bench.Release(bench.In(kTargetStrip, 2));
    EXPECT_EQ(copy.BkgTilePos, (Pos{0, 3})) << "one tile a press";
    EXPECT_EQ(copy.MapTargetPos.X, 9);
    EXPECT_EQ(TileAt(copy.Store(), kBkg, 0x2F)[3], 33);
    EXPECT_EQ(TileAt(copy.Store(), kBkg, 0x30)[3], 0);
    copy.QuickReplaceToBkg = false;

    copy.QuickReplaceToSprites = copy.SpritePaletteActive = true;
    bench.Click(bench.In(kSpriteTileList, 15, 15));
    EXPECT_FALSE(copy.SpritePaletteActive) << "the background's side, even here";
    copy.SpritePaletteActive = true;
    bench.Click(bench.In(kTargetStrip, 63));
    EXPECT_FALSE(copy.SpritePaletteActive);
    EXPECT_EQ(copy.SpTilePos, (Pos{15, 15})) << "there is no next tile";
    EXPECT_EQ(TileAt(copy.Store(), kSp, 255)[3], 95);
}

TEST(GestureClicks, QuickActionPlacesTilesAndWalksOn) {
    GestureBench bench;
    WorkingCopy& copy = bench.Copy();
    copy.QuickAction = true;
    copy.Show_Cursor = false;
    copy.Store().Attributes.fill(0xE4);
    bench.Press(bench.In(kNameTable, 5, 4));
    bench.Move(bench.In(kNameTable, 30, 6));
    EXPECT_EQ(copy.AttrBytePos, (Pos{7, 1}));
    EXPECT_EQ(copy.AttrCellPos, (Pos{15, 3}));
    EXPECT_EQ(copy.BkgPalettePos.X, 13);
    copy.QuickAction = false;
    bench.Move(bench.In(kNameTable, 2, 2));
    copy.QuickAction = true;
    bench.Release(bench.In(kNameTable, 1, 1));
    EXPECT_EQ(copy.NameCellPos, (Pos{30, 6}));
    bench.Click(bench.In(kBkgTileList, 4, 1));
    bench.DoubleClick(bench.In(kSpriteTileList, 5, 1));
    bench.Click(bench.In(kBkgTileList, 6, 1));
    EXPECT_THAT(copy.Store().BkgTileList, ElementsAre(Item(30, 6, 0x14), Item(0, 7, 0x16)));
    EXPECT_THAT(copy.Store().SpriteTileList, ElementsAre(Item(248, 48, 0x15)));
    EXPECT_EQ(copy.NameCellPos, (Pos{1, 7}));
    EXPECT_EQ(copy.AttrCellPos, (Pos{0, 3}));
    EXPECT_EQ(copy.BkgPalettePos.X, 9);
    bench.DoubleClick(bench.In(kSourceStrip, 9));
    EXPECT_EQ(copy.MapSourcePos.X, 0) << "nothing else is double clicked in this mode";

    // The end comes two rows below the screen, by the product that the walk is bounded with.
    for (const auto& [from, then] : {std::pair{Pos{31, 29}, Pos{0, 30}},
                                     {{31, 30}, {0, 31}},
                                     {{28, 31}, {29, 31}},
                                     {{29, 31}, {29, 31}}}) {
        copy.NameCellPos = from;
        bench.Click(bench.In(kBkgTileList, 0));
        EXPECT_EQ(copy.NameCellPos, then) << from.X << "," << from.Y;
    }
    // With Shift it is a rubber band.
    const size_t before = copy.Store().BkgTileList.size();
    bench.mouse.ShiftKeyDown();
    bench.Press(bench.In(kBkgTileList, 4, 1));
    EXPECT_TRUE(bench.mouse.RubberBandActive());
    EXPECT_EQ(copy.Store().BkgTileList.size(), before);
}

TEST(GestureClicks, TheScreenSelectsOrPaintsAttributes) {
    GestureBench bench;
    WorkingCopy& copy = bench.Copy();
    DesignStore& store = copy.Store();
    store.Attributes.fill(0xE4);
    store.BkgTileList = {{.X = 1, .Selected = 1}};
    store.SpriteTileList = {{.X = 100, .Y = 100, .Selected = 1}};
    store.ArrowTileList = {{.Selected = 1}};
    copy.Show_Cursor = false;
    store.ArrowTile.Selected = 1;
    copy.SpritePaletteActive = true;
    const Pos systemColour = copy.SystemPalettePos;

    bench.Press(bench.In(kNameTable, 6, 7));
    EXPECT_EQ(store.BkgTileList[0].Selected + store.SpriteTileList[0].Selected +
                  store.ArrowTileList[0].Selected + store.ArrowTile.Selected,
              0u);
    EXPECT_EQ(copy.NameCellPos, (Pos{6, 7}));
    EXPECT_EQ(copy.AttrCellPos, Pos()) << "follows with the next event";
    bench.Move(bench.In(kNameTable, 8, 10));
    EXPECT_TRUE(bench.Move(bench.In(kNameTable, 9, 10)).Has(View::kNameTable));
    EXPECT_TRUE(bench.Move(bench.In(kNameTable, 9, 10)).Empty()) << "nothing new";
    EXPECT_EQ(copy.NameCellPos, (Pos{9, 10}));
    EXPECT_EQ(copy.BkgPalettePos.X, 9);
    EXPECT_TRUE(copy.SpritePaletteActive);
    bench.Release(bench.In(kNameTable, 11, 10));
    EXPECT_EQ(copy.NameCellPos, (Pos{9, 10})) << "only moved by movements";
    EXPECT_EQ(copy.AttrCellPos, (Pos{5, 5}));
    EXPECT_EQ(copy.AttrBytePos, (Pos{2, 2}));
    EXPECT_EQ(copy.AttrQuadrantPos, (Pos{1, 1}));
    EXPECT_EQ(copy.BkgPalettePos.X, 13);
    EXPECT_EQ(copy.SystemPalettePos, systemColour);
    EXPECT_FALSE(copy.SpritePaletteActive);

    // With Ctrl the cells under the pointer take the current sub-palette; the quadrant stays.
    copy.BkgPalettePos.X = 6;
    bench.Press(bench.In(kNameTable, 0, 0), kCtrl);
    bench.Move(bench.In(kNameTable, 5, 2), kCtrl);
    bench.Release(bench.In(kNameTable, 31, 29), kCtrl);
    EXPECT_EQ(store.Attributes[0], 0xE4);
    EXPECT_EQ(store.Attributes[1], 0xD4) << "bottom left: 1";
    EXPECT_EQ(store.Attributes[63], 0xE4) << "top right is 1 already";
    EXPECT_EQ(copy.CurrentAttribute, 0xE4);
    EXPECT_EQ(copy.AttrCellPos, (Pos{15, 14}));
    EXPECT_EQ(copy.AttrQuadrantPos, (Pos{1, 1}));
    EXPECT_EQ(copy.BkgPalettePos.X, 6);
}

TEST(GestureClicks, AttributeViewAndPalettesActOnTheCurrentPlaces) {
    GestureBench bench;
    WorkingCopy& copy = bench.Copy();
    DesignStore& store = copy.Store();
    store.Attributes.fill(0xE4);
    for (size_t i = 0; i < kPaletteSize; ++i) {
        store.BkgPalette[i] = static_cast<uint8_t>(i + 0x10);
        store.SpritePalette[i] = static_cast<uint8_t>(i + 0x20);
    }
    bench.Click(bench.In(kNameTable, 4, 0));
    copy.SpritePaletteActive = true;
    bench.Press(bench.In(kAttribute, 0, 1));
    EXPECT_TRUE(copy.SpritePaletteActive) << "acts with the next event";
    bench.Release(bench.In(kAttribute, 0, 1));
    EXPECT_EQ(copy.AttrQuadrantPos, (Pos{0, 1}));
    EXPECT_EQ(copy.BkgPalettePos.X, 9);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{9, 1}));
    EXPECT_FALSE(copy.SpritePaletteActive);

    copy.SpritePaletteActive = true;
    bench.Press(bench.In(kBkgPalette, 1));
    EXPECT_TRUE(bench.Move(bench.In(kBkgPalette, 15)).Has(View::kAttribute));
    bench.Release(bench.In(kBkgPalette, 15));
    EXPECT_EQ(copy.BkgPalettePos.X, 15);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{15, 1}));
    EXPECT_EQ(store.Attributes[1], 0xF4);
    EXPECT_FALSE(copy.SpritePaletteActive);
    // The same cell again is ignored, until the screen has given another sub-palette.
    store.Attributes[1] = 0;
    bench.Click(bench.In(kBkgPalette, 15));
    EXPECT_EQ(store.Attributes[1], 0);
    bench.Click(bench.In(kNameTable, 6, 2), kCtrl);
    bench.Click(bench.In(kBkgPalette, 15));
    EXPECT_EQ(store.Attributes[1], 0xC0) << "painting isn't enough";
    store.Attributes[1] = 0;
    bench.Click(bench.In(kNameTable, 4, 0));
    bench.Click(bench.In(kBkgPalette, 15));
    EXPECT_EQ(store.Attributes[1], 0x03);

    store.SpriteTileList = {{.Selected = 1}, {}};
    store.ArrowTileList = {{.Selected = 1}, {}};
    store.ArrowTile.Selected = 1;
    bench.Click(bench.In(kSpritePalette, 11));
    EXPECT_TRUE(copy.SpritePaletteActive);
    EXPECT_EQ(copy.SpPalettePos.X, 11);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{11, 2}));
    EXPECT_EQ(store.SpriteTileList[0].Palette * 10 + store.SpriteTileList[1].Palette, 20);
    EXPECT_EQ(store.ArrowTileList[0].Palette * 10 + store.ArrowTileList[1].Palette, 20);
    EXPECT_EQ(store.ArrowTile.Palette, 2);
    store.ArrowTile.Palette = 0;
    bench.Click(bench.In(kSpritePalette, 11));
    EXPECT_EQ(store.ArrowTile.Palette, 0);
}

TEST(GestureClicks, TheSystemPaletteActsEveryTwentyMilliseconds) {
    GestureBench bench;
    WorkingCopy& copy = bench.Copy();
    copy.BkgPalettePos.X = 5;
    copy.SpPalettePos.X = 6;
    const auto colour = [&] { return copy.Store().BkgPalette[5]; };
    bench.Press(bench.In(kSystemPalette, 1, 2));
    EXPECT_EQ(colour(), kDefaultBkgPalette[5]);
    bench.Move(bench.In(kSystemPalette, 1, 2));
    EXPECT_EQ(colour(), 0x21);
    bench.time += std::chrono::milliseconds(19);
    bench.Move(bench.In(kSystemPalette, 2, 2));
    EXPECT_EQ(colour(), 0x21);
    bench.time += std::chrono::milliseconds(1);
    bench.Move(bench.In(kSystemPalette, 3, 3));
    EXPECT_EQ(colour(), 0x33);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{3, 3}));
    bench.Release(bench.In(kSystemPalette, 4, 3));
    EXPECT_EQ(colour(), 0x33) << "the release too";
    bench.time += kLater;
    copy.SpritePaletteActive = true;
    bench.Click(bench.In(kSystemPalette, 15, 3));
    EXPECT_EQ(colour(), 0x33);
    EXPECT_EQ(copy.Store().SpritePalette[6], 0x3F);
}

TEST(GestureClicks, TheRubberBandSelectsWhatItTouches) {
    GestureBench bench;
    WorkingCopy& copy = bench.Copy();
    DesignStore& store = copy.Store();
    store.BkgTileList = {{.X = 2, .Y = 2}, {.X = 5, .Y = 5}, {.X = 9, .Y = 9, .Selected = 1}};
    store.SpriteTileList = {
        {.X = 20, .Y = 24}, {.X = 8, .Y = 8}, {.X = 200, .Y = 8, .Selected = 1}};
    store.BkgTileSelected[7] = store.SpriteTileSelected[9] = 1;
    const auto selected = [](const std::vector<TileItem>& list) {
        std::vector<uint32_t> flags(list.size());
        std::ranges::transform(list, flags.begin(), &TileItem::Selected);
        return flags;
    };
    bench.mouse.ShiftKeyDown();
    // From the last pixel of the screen's cell (2, 2) to the first of (5, 5), backwards.
    bench.Press(bench.Screen(80, 80));
    EXPECT_EQ(bench.mouse.Mode(), MouseMode::kIdle);
    const Views stale = bench.Move(bench.Screen(47, 47), kCtrl);
    EXPECT_TRUE(stale.Has(View::kNameTable) && stale.Has(View::kSpriteTileList));
    EXPECT_EQ(bench.mouse.Bands()->nameTable.press, (Point{80, 80}));
    EXPECT_EQ(bench.mouse.Bands()->nameTable.current, (Point{47, 47}));
    EXPECT_THAT(selected(store.BkgTileList), ElementsAre(1, 1, 1)) << "Ctrl adds";
    EXPECT_THAT(selected(store.SpriteTileList), ElementsAre(1, 0, 1));
    EXPECT_EQ(store.BkgTileSelected[7], 1);
    bench.Move(bench.Screen(48, 47));
    EXPECT_THAT(selected(store.BkgTileList), ElementsAre(0, 1, 0));
    EXPECT_THAT(selected(store.SpriteTileList), ElementsAre(1, 0, 0));
    EXPECT_EQ(store.BkgTileSelected[7] + store.SpriteTileSelected[9], 0);

    // It reaches over all views at once, and passes by lists that aren't shown.
    copy.Show_Sp_Tile = false;
    bench.Move(bench.In(kBkgTileList, 1, 2));
    EXPECT_THAT(selected(store.SpriteTileList), ElementsAre(1, 0, 0));
    EXPECT_EQ(store.BkgTileSelected[0x20] + store.BkgTileSelected[0x21], 2);
    EXPECT_EQ(std::ranges::count(store.SpriteTileSelected, 1), 0);
    bench.Release(bench.In(kBkgTileList, 1, 2));
    EXPECT_FALSE(bench.mouse.RubberBandActive() || bench.mouse.Bands());
    EXPECT_EQ(bench.session.Steps().Count(), 2u);

    // Shift let go ends the band at once; what is selected stays, and the release ends the step.
    const size_t tiles = static_cast<size_t>(std::ranges::count(store.BkgTileSelected, 1));
    bench.Press(bench.In(kBkgTileList, 0, 0));
    bench.Move(bench.In(kBkgTileList, 3, 0));
    EXPECT_FALSE(bench.mouse.ShiftKeyUp().Empty());
    bench.Move(bench.In(kBkgTileList, 9, 9));
    EXPECT_EQ(std::ranges::count(store.BkgTileSelected, 1), 4);
    EXPECT_NE(tiles, 4u);
    bench.Release(bench.In(kBkgTileList, 9, 9));
    EXPECT_EQ(bench.session.Steps().Count(), 3u);
}

TEST(GestureClicks, ShiftDuringAGestureIsNoRubberBand) {
    GestureBench bench;
    bench.Press(bench.In(kSpriteTileList, 4, 1));
    bench.mouse.ShiftKeyDown();
    EXPECT_FALSE(bench.mouse.ShiftDown());
    bench.Release(bench.In(kNameTable, 4, 4, {0, 0}), kShift);
    EXPECT_EQ(bench.Store().SpriteTileList.size(), 1u);

    // In a quick mode the press is taken before the band is; the release ends it all the same.
    bench.Copy().QuickReplaceToBkg = true;
    bench.mouse.ShiftKeyDown();
    bench.Press(bench.In(kTargetStrip, 4));
    EXPECT_EQ(bench.mouse.Mode(), MouseMode::kTargetCharacter);
    bench.Release(bench.In(kTargetStrip, 4));
    EXPECT_EQ(bench.mouse.Mode(), MouseMode::kIdle);
    EXPECT_TRUE(bench.mouse.ShiftDown());
}

TEST(GestureClicks, DoubleClicksToggleTheSelection) {
    const auto furnish = [](GestureBench& bench) {
        bench.Store().ArrowTile = {.X = 100, .Y = 100};
        bench.Store().ArrowTileList.assign(4, {.X = 100, .Y = 100});
        bench.Store().SpriteTileList = {
            {.X = 104, .Y = 100}, {.X = 50, .Y = 50}, {.X = 50, .Y = 50}};
        bench.Store().BkgTileList = {{.X = 6, .Y = 6}, {.X = 20, .Y = 20}, {.X = 20, .Y = 20}};
    };
    const auto marks = [](GestureBench& bench) {
        std::string text;
        for (const auto* list : {&bench.Store().SpriteTileList, &bench.Store().BkgTileList,
                                 &bench.Store().ArrowTileList})
            for (const TileItem& item : *list)
                text += item.Selected != 0 ? '1' : '0';
        return text + (bench.Store().ArrowTile.Selected != 0 ? '1' : '0');
    };
    struct Case {
        Point at;
        std::string marks;  // sprites, tiles, arrows, cursor
        std::function<void(WorkingCopy&)> setUp;
    };
    const std::vector<Case> cases = {
        {{210, 205}, "00000000001", {}},
        {{210, 205}, "00000010000", [](WorkingCopy& c) { c.document.BigCursor = 1; }},
        {{210, 205}, "10000000000", [](WorkingCopy& c) { c.Show_Cursor = false; }},
        {{100, 100}, "01000000000", {}},  // the first of two; the tile below isn't reached
        {{100, 99}, "00010000000", {}},   // a line above: a tile
        {{100, 117}, "00000000000", {}},
        {{100, 117}, "01000000000", [](WorkingCopy& c) { c.Store().BigSprite = 1; }},
        {{100, 100}, "00000000000", [](WorkingCopy& c) { c.Show_Bg_Tile = false; }},
        {{100, 100}, "01000000000", [](WorkingCopy& c) { c.Show_Sp_Tile = false; }},
        {{325, 325}, "00001000000", {}},
    };
    for (const Case& c : cases) {
        GestureBench bench;
        furnish(bench);
        if (c.setUp) c.setUp(bench.Copy());
        bench.DoubleClick(bench.Screen(c.at.x, c.at.y));
        EXPECT_EQ(marks(bench), c.marks) << c.at.x << "," << c.at.y;
        EXPECT_EQ(bench.session.Steps().Count(), c.marks.find('1') == std::string::npos ? 0u : 2u);
        EXPECT_EQ(CanSetSpriteFlag(bench.Copy()),
                  (c.marks.substr(0, 3) + c.marks.substr(6)).find('1') != std::string::npos);
        bench.DoubleClick(bench.Screen(c.at.x, c.at.y));
        EXPECT_EQ(marks(bench), "00000000000");
    }
}

TEST(GestureClicks, DoubleClicksExchangeTheTilesOfTheSelected) {
    GestureBench bench;
    DesignStore& store = bench.Store();
    const TileItem selected{.Selected = 1, .Tile = 1};
    const TileItem other{.Tile = 1};
    store.BkgTileList = store.SpriteTileList = store.ArrowTileList = {selected, other};
    store.ArrowTile = selected;
    bench.Store().CharMapData[32 + 9] = 0x77;
    bench.DoubleClick(bench.In(kSourceStrip, 9));
    EXPECT_EQ(bench.Copy().MapSourcePos.X, 9);
    EXPECT_EQ(bench.Copy().BkgTilePos, Pos()) << "only a press shows the tile";
    bench.DoubleClick(bench.In(kBkgTileList, 4, 2));
    EXPECT_EQ(store.BkgTileList[0].Tile * 1000 + store.BkgTileList[1].Tile, 0x24 * 1000 + 1);
    for (const bool tall : {false, true}) {
        store.BigSprite = tall ? 1 : 0;
        const int tile = tall ? 0x27 : 0x26;
        bench.Copy().document.BigCursor = tall ? 1 : 0;
        bench.DoubleClick(bench.In(kSpriteTileList, 6, 2));
        EXPECT_EQ(store.SpriteTileList[0].Tile * 1000 + store.SpriteTileList[1].Tile,
                  tile * 1000 + 1);
        EXPECT_EQ(store.ArrowTileList[0].Tile, tall ? tile : 1);
        EXPECT_EQ(store.ArrowTileList[1].Tile, 1);
        EXPECT_EQ(store.ArrowTile.Tile, 0x26);
    }
}

TEST(GestureClicks, StepsOfTheHistoryAreWholeGestures) {
    GestureBench bench;
    DesignStore& store = bench.Store();
    store.ArrowTileList.assign(4, {});
    bench.Copy().Show_Cursor = false;
    ApplyWorkState(bench.State(), bench.Copy());  // as an undo leaves it
    const UndoHistory& steps = bench.session.Steps();
    bench.Release(bench.In(kBkgPalette, 9));
    bench.Click(kNowhere);
    EXPECT_EQ(steps.Count(), 0u) << "nothing changed";
    bench.mouse.MiddlePress();
    EXPECT_EQ(steps.Count(), 2u);
    EXPECT_EQ(std::ranges::count(store.ArrowTileList, 1u, &TileItem::Selected), 4);
    EXPECT_EQ(store.ArrowTile.Selected, 1u);

    // A second press, or the middle button, before the first one's release.
    const WorkState before = bench.State();
    bench.Press(bench.In(kBkgTileList, 3, 3));
    bench.mouse.MiddlePress();
    EXPECT_EQ(steps.Count(), 2u);
    bench.Press(bench.In(kNameTable, 4, 4));
    EXPECT_THAT(store.BkgTileList, ElementsAre(Item(4, 4, 0x33)))
        << "dropped where it is seen next";
    bench.Release(bench.In(kNameTable, 4, 4));
    EXPECT_EQ(steps.Count(), 4u);
    bench.session.Undo();
    bench.session.Undo();
    EXPECT_EQ(bench.State(), before);

    // The release behind a double click that is ignored makes no step of its own.
    bench.Copy().QuickReplaceFromBkg = true;
    bench.Click(bench.In(kBkgTileList, 1));
    const size_t count = steps.Count();
    bench.DoubleClick(bench.In(kBkgTileList, 1));
    EXPECT_EQ(steps.Count(), count);
}

}  // namespace
}  // namespace bw
