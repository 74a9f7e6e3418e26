// Clicks on the views, the modes of quick work, the rubber band, double clicks and keys.

#include <span>

#include "designer/tools/list_tools.h"
#include "gesture_bench.h"
#include "record_bytes.h"

namespace bw {
namespace {

using enum Control;
using testing::ElementsAre;

class GestureClicks : public testing::Test, protected GestureBench {};

// A 1 for each selected item of the lists, a 0 for each other one.
std::string Marks(std::initializer_list<const std::vector<TileItem>*> lists) {
    std::string text;
    for (const auto* list : lists)
        for (const TileItem& item : *list)
            text += item.IsSelected() ? '1' : '0';
    return text;
}

TEST_F(GestureClicks, EditorsPaintWhileTheButtonIsDown) {
    for (const auto& [table, editor] :
         {std::pair{kBkg, kBkgTileEditor}, {kSp, kSpriteTileEditor}}) {
        copy.BkgTilePos = copy.SpTilePos = {3, 2};
        copy.BkgPalettePos.X = copy.SpPalettePos.X = 7;
        copy.SpritePaletteActive = table == kBkg;
        Play({{'P', In(editor, 1, 2), table == kSp ? "side 1" : "side 0"},
              {'M', In(editor, 2, 2), ""},
              {'M', kNowhere, ""},
              {'R', In(editor, 3, 2), ""},
              {'M', In(editor, 4, 2), ""}});
        const Tile tile = TileAt(store, table, 0x23);
        EXPECT_EQ(tile[2] << 8 | tile[10], 0x6060) << "the release doesn't paint";
    }
    EXPECT_EQ(Steps(), 3u) << "a stroke is one step";
}

TEST_F(GestureClicks, ShapesFollowTheDrag) {
    constexpr size_t kShown = 24;  // pixels: three rows
    const struct {
        TileShape shape;
        Point to;
        const char* drawn;
        Keys keys = {};
    } cases[] = {{TileShape::kLine, In(kBkgTileEditor, 5, 2), "010000000011000000001100"},
                 {TileShape::kLine, In(kBkgTileEditor, -9, 1), "010000001000000000000000"},
                 {TileShape::kRectangle, In(kBkgTileEditor, 3, 2), "011100000101000001110000"},
                 {TileShape::kRectangle, kNowhere, "011111110111111101111111", kCtrl},
                 {TileShape::kFill, kNowhere, "111111111111111111111111"}};
    copy.BkgTilePos = {3, 2};
    copy.BkgPalettePos.X = 5;
    for (const auto& c : cases) {
        FillTile(store, kBkg, 0x23, 0);
        const size_t steps = Steps();
        copy.tileShape = c.shape;
        Press(In(kBkgTileEditor, 1, 0));
        Move(In(kBkgTileEditor, 7, 7));
        Move(In(kBkgTileEditor, 0, 7));
        Move(c.to, c.keys);
        EXPECT_EQ(Text(TileAt(store, kBkg, 0x23)).substr(0, kShown), c.drawn);
        const WorkState shown = State();
        Release(c.to, c.keys);
        EXPECT_EQ(State(), shown) << "what is seen is what comes";
        EXPECT_EQ(Steps() - steps, steps == 0 ? 2u : 1u);
    }
    // The area ends at other colours, not at corners.
    FillTile(store, kBkg, 0x23, 0);
    for (const Pos pixel : {Pos{1, 0}, Pos{0, 1}})
        SetPixel(TileAt(store, kBkg, 0x23), pixel, 3);
    Click(In(kBkgTileEditor, 0, 0));
    EXPECT_EQ(Text(TileAt(store, kBkg, 0x23)).substr(0, 16), "1300000030000000");
    Click(In(kBkgTileEditor, 7, 7));
    EXPECT_EQ(Text(TileAt(store, kBkg, 0x23)).substr(0, 16), "1311111131111111");
}

TEST_F(GestureClicks, TheRightButtonTakesTheColourOfAPixel) {
    std::ranges::copy(Counting(kPaletteSize, 0x20), store.SpritePalette.begin());
    copy.SpTilePos = {1, 0};
    copy.SpPalettePos.X = 13;
    SetPixel(TileAt(store, kSp, 1), {2, 3}, 2);
    const auto right = [&](Point at) { return mouse.RightPress(Event(at, {})); };
    Click(In(kSpritePalette, 13));
    Changed();
    EXPECT_FALSE(right(In(kSpriteTileEditor, 2, 3)).Empty());
    EXPECT_EQ(Changed(), "sp 14 colour 14,2");
    EXPECT_EQ(Steps(), 3u) << "a step, as a click on the palette is";
    Click(In(kSpritePalette, 13));
    EXPECT_EQ(copy.SpPalettePos.X, 13) << "the cell that was clicked last counts again";
    EXPECT_TRUE(right(In(kNameTable, 2, 3)).Empty());
    Press(In(kSpriteTileEditor, 0, 0));
    EXPECT_TRUE(right(In(kBkgTileEditor, 2, 3)).Empty());
    Release(kNowhere);
}

TEST_F(GestureClicks, StripsShowTheirCharacters) {
    store.CharMapData[32 + 5] = 0x9A;
    copy.SpritePaletteActive = true;
    Play({{'P', In(kSourceStrip, 4), "source 4 side 0"},
          {'M', In(kSourceStrip, 5), "tile 10,9 source 5"},
          {'M', In(kTargetStrip, 9), ""},
          {'R', kNowhere, ""}});
    copy.SpritePaletteActive = true;
    Play({{'P', In(kTargetStrip, 7), "target 7 side 0"}, {'M', In(kTargetStrip, 63), "target 63"}});
}

TEST_F(GestureClicks, QuickModesEndOutsideTheirControls) {
    // Which of the modes stay: from the background, to it, to the sprites.
    const std::pair<Point, const char*> cases[] = {{In(kSourceStrip, 1), "100"},
                                                   {In(kTargetStrip, 1), "011"},
                                                   {In(kBkgTileList, 1), "110"},
                                                   {In(kSpriteTileList, 1), "001"},
                                                   {In(kNameTable, 1), "000"}};
    for (const auto& [at, stay] : cases) {
        std::string modes;
        for (const auto mode : {&WorkingCopy::QuickReplaceFromBkg, &WorkingCopy::QuickReplaceToBkg,
                                &WorkingCopy::QuickReplaceToSprites}) {
            copy.QuickReplaceFromBkg = copy.QuickReplaceToBkg = copy.QuickReplaceToSprites = true;
            EXPECT_TRUE(Press(at).Has(View::kCheckBoxes));
            modes += copy.*mode ? '1' : '0';
        }
        EXPECT_EQ(modes, stay);
    }
}

TEST_F(GestureClicks, QuickReplacementsWalkOn) {
    for (size_t i = 0; i < kChrDataSize; ++i)
        store.DefaultChrData[i] = static_cast<uint8_t>(i / kTileBytes);
    copy.QuickReplaceFromBkg = true;
    Play({{'C', In(kSourceStrip, 61), "source 61"},
          {'C', In(kBkgTileList, 4, 1), "tile 4,1 source 62"},
          {'C', In(kBkgTileList, 5, 1), "tile 5,1 source 63"},
          {'C', In(kBkgTileList, 6, 1), "tile 6,1"},
          {'C', In(kBkgTileList, 7, 1), "tile 7,1"},
          {'D', In(kSourceStrip, 2), ""}});  // double clicks don't count in this mode
    EXPECT_THAT(std::span(store.CharMapData).subspan(32 + 61, 3), ElementsAre(0x14, 0x15, 0x17))
        << "stays on the last one";
    copy.QuickReplaceFromBkg = false;

    copy.QuickReplaceToBkg = true;
    Play({{'P', In(kBkgTileList, 15, 2), "tile 15,2"}});
    EXPECT_FALSE(Dragged().shown);
    Play({{'P', In(kTargetStrip, 1), "tile 0,3 target 1"},  // one tile a press
          {'M', In(kTargetStrip, 9), "target 9"},
          {'R', In(kTargetStrip, 2), ""}});
    EXPECT_THAT(BytesOf(store, kBkg, {0x2F, 0x30}), ElementsAre(33, 0));
    copy.QuickReplaceToBkg = false;

    // The background's side, even here.
    copy.QuickReplaceToSprites = copy.SpritePaletteActive = true;
    Play({{'C', In(kSpriteTileList, 15, 15), "sprite 15,15 side 0"}});
    copy.SpritePaletteActive = true;
    Play({{'C', In(kTargetStrip, 63), "target 63 side 0"}});  // there is no next tile
    EXPECT_THAT(BytesOf(store, kSp, {255}), ElementsAre(95));
}

TEST_F(GestureClicks, QuickActionPlacesTilesAndWalksOn) {
    copy.QuickAction = true;
    copy.Show_Cursor = false;
    store.Attributes.fill(0xE4);
    Play({{'P', In(kNameTable, 5, 4), "cell 5,4 attr 2,2 byte 1,1 quad 0"},
          {'M', In(kNameTable, 30, 6), "cell 30,6 attr 15,3 byte 7,1 quad 1,1 bkg 13"}});
    copy.QuickAction = false;
    Play({{'M', In(kNameTable, 2, 2), ""}, {'R', In(kNameTable, 1, 1), ""}});
    copy.QuickAction = true;
    Play({{'C', In(kBkgTileList, 4, 1), "cell 31,6 tile 4,1"},
          {'D', In(kSpriteTileList, 5, 1), "cell 0,7 attr 0,3 byte 0,1 quad 0,1 bkg 9 sprite 5,1"},
          {'C', In(kBkgTileList, 6, 1), "cell 1,7 tile 6,1"},
          {'D', In(kSourceStrip, 9), ""}});  // nothing else is double clicked in this mode
    EXPECT_THAT(store.BkgTileList, ElementsAre(Item(30, 6, 0x14), Item(0, 7, 0x16)));
    EXPECT_THAT(store.SpriteTileList, ElementsAre(Item(248, 48, 0x15)));

    // The end comes two rows below the screen, by the product that the walk is bounded with.
    const std::pair<Pos, Pos> ends[] = {
        {{31, 29}, {0, 30}}, {{31, 30}, {0, 31}}, {{28, 31}, {29, 31}}, {{29, 31}, {29, 31}}};
    for (const auto& [from, then] : ends) {
        copy.NameCellPos = from;
        Click(In(kBkgTileList, 0));
        EXPECT_EQ(copy.NameCellPos, then) << from.X << "," << from.Y;
    }
    // With Shift it is a rubber band.
    mouse.ShiftKeyDown();
    Play({{'P', In(kBkgTileList, 4, 1), ""}});
    EXPECT_TRUE(mouse.RubberBandActive());
}

TEST_F(GestureClicks, TheScreenSelectsOrPaintsAttributes) {
    store.Attributes.fill(0xE4);
    store.BkgTileList = store.SpriteTileList = store.ArrowTileList = {{.X = 100, .Selected = 1}};
    copy.Show_Cursor = false;
    store.ArrowTile.Selected = 1;
    copy.SpritePaletteActive = true;
    Play({{'P', In(kNameTable, 6, 7), "cell 6,7"}});  // the rest follows with the next event
    EXPECT_EQ(Marks({&store.BkgTileList, &store.SpriteTileList, &store.ArrowTileList}), "000");
    EXPECT_EQ(store.ArrowTile.Selected, 0u);
    EXPECT_TRUE(Move(In(kNameTable, 9, 10)).Has(View::kNameTable));
    EXPECT_TRUE(Move(In(kNameTable, 9, 10)).Empty()) << "nothing new";
    Play({{'M', In(kNameTable, 8, 8), "cell 8,8 attr 4,4 quad 0 bkg 1"},
          {'M', In(kNameTable, 9, 10), "cell 9,10 attr 4,5 quad 0,1 bkg 9"},
          {'R', In(kNameTable, 11, 10), "attr 5,5 quad 1,1 bkg 13 side 0"}});

    // With Ctrl the cells under the pointer take the current sub-palette; the quadrant stays.
    copy.BkgPalettePos.X = 6;
    Play({{'P', In(kNameTable, 0, 0), "cell 0", kCtrl},
          {'M', In(kNameTable, 5, 2), "cell 5,2 attr 2,1 byte 1", kCtrl},
          {'R', In(kNameTable, 31, 29), "attr 15,14 byte 7,7", kCtrl}});
    EXPECT_EQ(store.Attributes[1], 0xD4) << "bottom left: 1";
    EXPECT_EQ(std::ranges::count(store.Attributes, 0xE4), 63) << "top right is 1 already";
    EXPECT_EQ(copy.CurrentAttribute, 0xE4);
}

TEST_F(GestureClicks, AttributeViewAndPalettesActOnTheCurrentPlaces) {
    store.Attributes.fill(0xE4);
    std::ranges::copy(Counting(kPaletteSize, 0x10), store.BkgPalette.begin());
    std::ranges::copy(Counting(kPaletteSize, 0x20), store.SpritePalette.begin());
    Click(In(kNameTable, 4, 0));
    copy.SpritePaletteActive = true;
    Play({{'P', In(kAttribute, 0, 1), ""},
          {'R', In(kAttribute, 0, 1), "quad 0,1 bkg 9 colour 9,1 side 0"}});
    copy.SpritePaletteActive = true;
    Play({{'P', In(kBkgPalette, 1), ""}, {'R', In(kBkgPalette, 15), "bkg 15 colour 15,1 side 0"}});
    EXPECT_EQ(store.Attributes[1], 0xF4);
    // The same cell again is ignored, until the screen has given another sub-palette.
    const auto pickAgain = [&] {
        store.Attributes[1] = 0;
        Click(In(kBkgPalette, 15));
        return store.Attributes[1];
    };
    EXPECT_EQ(pickAgain(), 0);
    Click(In(kNameTable, 6, 2), kCtrl);
    EXPECT_EQ(pickAgain(), 0) << "painting isn't enough";
    Click(In(kNameTable, 4, 0));
    EXPECT_EQ(pickAgain(), 0x03);

    TileItem item{.Selected = 1};
    store.SpriteTileList = store.ArrowTileList = {item, {}};
    store.ArrowTile = item;
    Play({{'C', In(kSpritePalette, 11), "sp 11 colour 11,2 side 1"}});
    item.Palette = 2;
    EXPECT_THAT(store.SpriteTileList, ElementsAre(item, TileItem{}));
    EXPECT_THAT(store.ArrowTileList, ElementsAre(item, TileItem{}));
    EXPECT_EQ(std::exchange(store.ArrowTile.Palette, 0), 2);
    Click(In(kSpritePalette, 11));
    EXPECT_EQ(store.ArrowTile.Palette, 0);
}

TEST_F(GestureClicks, TheSystemPaletteActsEveryTwentyMilliseconds) {
    copy.BkgPalettePos.X = 5;
    copy.SpPalettePos.X = 6;
    const struct {
        char event;
        int later, column;
        const char* changed;
    } acts[] = {{'P', 0, 1, ""},           {'M', 0, 1, "colour 1,2"}, {'M', 19, 2, ""},
                {'M', 1, 3, "colour 3,2"}, {'R', 1, 4, ""},           {'C', 20, 5, "colour 5,2"}};
    for (const auto& act : acts) {
        time += std::chrono::milliseconds(act.later);
        Play({{act.event, In(kSystemPalette, act.column, 2), act.changed}});
        EXPECT_EQ(store.BkgPalette[5],
                  act.event == 'P' ? kDefaultBkgPalette[5] : 32 + copy.SystemPalettePos.X);
    }
    time += std::chrono::seconds(1);
    copy.SpritePaletteActive = true;
    Click(In(kSystemPalette, 15, 3));
    EXPECT_EQ(store.BkgPalette[5], 0x25);
    EXPECT_EQ(store.SpritePalette[6], 0x3F);
}

TEST_F(GestureClicks, TheRubberBandSelectsWhatItTouches) {
    store.BkgTileList = {{0, 2, 2}, {0, 5, 5}, {0, 9, 9, 1}};
    store.SpriteTileList = {{0, 20, 24}, {0, 8, 8}, {0, 200, 8, 1}};
    store.BkgTileSelected[7] = store.SpriteTileSelected[9] = 1;
    // Tiles, sprites, and the tiles of both tables.
    const auto selected = [&] {
        std::string text = Marks({&store.BkgTileList, &store.SpriteTileList});
        for (const auto* marks : {&store.BkgTileSelected, &store.SpriteTileSelected})
            (text += ' ') += std::to_string(std::ranges::count(*marks, 1));
        return text;
    };
    mouse.ShiftKeyDown();
    // From the last pixel of the screen's cell (2, 2) to the first of (5, 5), backwards.
    Press(Screen(80, 80));
    EXPECT_EQ(mouse.Mode(), MouseMode::kIdle);
    const Views stale = Move(Screen(47, 47), kCtrl);
    EXPECT_TRUE(stale.Has(View::kNameTable) && stale.Has(View::kSpriteTileList));
    const RubberBand band = mouse.Bands()->nameTable;
    EXPECT_TRUE(band.press == (Point{80, 80}) && band.current == (Point{47, 47}));
    EXPECT_EQ(selected(), "111101 1 1") << "Ctrl adds";
    Move(Screen(48, 47));
    EXPECT_EQ(selected(), "010100 0 0");
    // It reaches over all views at once, and passes by lists that aren't shown.
    copy.Show_Sp_Tile = false;
    Move(In(kBkgTileList, 1, 2));
    EXPECT_EQ(selected().substr(3), "100 8 0");
    Release(In(kBkgTileList, 1, 2));
    EXPECT_FALSE(mouse.RubberBandActive() || mouse.Bands());
    EXPECT_EQ(Steps(), 2u);

    // Shift let go ends the band at once; what is selected stays, and the release ends the step.
    Press(In(kBkgTileList, 0, 0));
    Move(In(kBkgTileList, 3, 0));
    EXPECT_FALSE(mouse.ShiftKeyUp().Empty());
    Move(In(kBkgTileList, 9, 9));
    EXPECT_EQ(selected().substr(3), "100 4 0");
    Release(In(kBkgTileList, 9, 9));
    EXPECT_EQ(Steps(), 3u);
}

TEST_F(GestureClicks, ShiftDuringAGestureIsNoRubberBand) {
    Press(In(kSpriteTileList, 4, 1));
    mouse.ShiftKeyDown();
    EXPECT_FALSE(mouse.ShiftDown());
    Release(In(kNameTable, 4, 4, {0, 0}), kShift);
    EXPECT_EQ(store.SpriteTileList.size(), 1u);

    // In a quick mode the press is taken before the band is; the release ends it all the same.
    copy.QuickReplaceToBkg = true;
    mouse.ShiftKeyDown();
    Press(In(kTargetStrip, 4));
    EXPECT_EQ(mouse.Mode(), MouseMode::kTargetCharacter);
    Release(In(kTargetStrip, 4));
    EXPECT_EQ(mouse.Mode(), MouseMode::kIdle);
    EXPECT_TRUE(mouse.ShiftDown());
}

TEST_F(GestureClicks, DoubleClicksToggleTheSelection) {
    const struct {
        Point at;
        std::string marks;  // sprites, tiles, arrows, cursor
        void (*setUp)(WorkingCopy&) = [](WorkingCopy&) {};
    } cases[] = {{{210, 205}, "00000000001"},
                 {{210, 205}, "00000010000", [](WorkingCopy& c) { c.document.BigCursor = 1; }},
                 {{210, 205}, "10000000000", [](WorkingCopy& c) { c.Show_Cursor = false; }},
                 {{100, 100}, "01000000000"},  // the first of two; the tile below isn't reached
                 {{100, 99}, "00010000000"},   // a line above: a tile
                 {{100, 117}, "00000000000"},
                 {{100, 117}, "01000000000", [](WorkingCopy& c) { c.Store().BigSprite = 1; }},
                 {{100, 100}, "00000000000", [](WorkingCopy& c) { c.Show_Bg_Tile = false; }},
                 {{100, 100}, "01000000000", [](WorkingCopy& c) { c.Show_Sp_Tile = false; }},
                 {{325, 325}, "00001000000"}};
    for (const auto& c : cases) {
        GestureBench bench;
        DesignStore& items = bench.store;
        items.ArrowTile = {.X = 100, .Y = 100};
        items.ArrowTileList.assign(4, items.ArrowTile);
        items.SpriteTileList = {{.X = 104, .Y = 100}, {.X = 50, .Y = 50}, {.X = 50, .Y = 50}};
        items.BkgTileList = {{.X = 6, .Y = 6}, {.X = 20, .Y = 20}, {.X = 20, .Y = 20}};
        const auto marks = [&] {
            return Marks({&items.SpriteTileList, &items.BkgTileList, &items.ArrowTileList}) +
                   (items.ArrowTile.IsSelected() ? '1' : '0');
        };
        c.setUp(bench.copy);
        bench.DoubleClick(bench.Screen(c.at.x, c.at.y));
        EXPECT_EQ(marks(), c.marks) << c.at.x << "," << c.at.y;
        EXPECT_EQ(bench.Steps(), c.marks.find('1') == std::string::npos ? 0u : 2u);
        EXPECT_EQ(CanSetSpriteFlag(bench.copy),
                  (c.marks.substr(0, 3) + c.marks.substr(6)).find('1') != std::string::npos);
        bench.DoubleClick(bench.Screen(c.at.x, c.at.y));
        EXPECT_EQ(marks(), "00000000000");
    }
}

TEST_F(GestureClicks, DoubleClicksExchangeTheTilesOfTheSelected) {
    store.ArrowTile = {.Selected = 1, .Tile = 1};
    store.BkgTileList = store.SpriteTileList = store.ArrowTileList = {store.ArrowTile, {.Tile = 1}};
    store.CharMapData[32 + 9] = 0x77;
    Play({{'D', In(kSourceStrip, 9), "source 9"}});  // only a press shows the tile
    DoubleClick(In(kBkgTileList, 4, 2));
    EXPECT_THAT(Tiles(store.BkgTileList), ElementsAre(-0x24, 1));
    for (const bool tall : {false, true}) {
        copy.document.BigCursor = store.BigSprite = tall ? 1 : 0;
        DoubleClick(In(kSpriteTileList, 6, 2));
        EXPECT_THAT(Tiles(store.SpriteTileList), ElementsAre(tall ? -0x27 : -0x26, 1));
        EXPECT_THAT(Tiles(store.ArrowTileList), ElementsAre(tall ? -0x27 : -1, 1));
        EXPECT_EQ(store.ArrowTile.Tile, 0x26);
    }
}

TEST_F(GestureClicks, StepsOfTheHistoryAreWholeGestures) {
    store.ArrowTileList.assign(4, {});
    copy.Show_Cursor = false;
    ApplyWorkState(State(), copy);  // as an undo leaves it
    Release(In(kBkgPalette, 9));
    Click(kNowhere);
    EXPECT_EQ(Steps(), 0u) << "nothing changed";
    mouse.MiddlePress();
    EXPECT_EQ(Steps(), 2u);
    EXPECT_EQ(Marks({&store.ArrowTileList}), "1111");
    EXPECT_EQ(store.ArrowTile.Selected, 1u);

    // A second press, or the middle button, before the first one's release.
    const WorkState before = State();
    Press(In(kBkgTileList, 3, 3));
    mouse.MiddlePress();
    EXPECT_EQ(Steps(), 2u);
    Press(In(kNameTable, 4, 4));
    EXPECT_THAT(store.BkgTileList, ElementsAre(Item(4, 4, 0x33)))
        << "dropped where it is seen next";
    Release(In(kNameTable, 4, 4));
    EXPECT_EQ(Steps(), 4u);
    session.Undo();
    session.Undo();
    EXPECT_EQ(State(), before);

    // The release behind a double click that is ignored makes no step of its own.
    copy.QuickReplaceFromBkg = true;
    Click(In(kBkgTileList, 1));
    const size_t count = Steps();
    DoubleClick(In(kBkgTileList, 1));
    EXPECT_EQ(Steps(), count);
}

}  // namespace
}  // namespace bw
