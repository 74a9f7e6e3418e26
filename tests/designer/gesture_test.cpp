// Drags and drops: what is taken by a press, how it moves, where it may be put down.

#include <algorithm>
#include <functional>
#include <limits>
#include <tuple>

#include <gmock/gmock.h>

#include "designer/model/tiles.h"
#include "designer/tools/tile_tools.h"
#include "gesture_bench.h"

namespace bw {
namespace {

using enum Control;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSp = PatternTable::kSprites;
constexpr int32_t kFar = std::numeric_limits<int32_t>::max();

MATCHER_P3(Item, x, y, tile, "") {
    return arg.X == x && arg.Y == y && arg.Tile == tile;
}
MATCHER_P2(At, x, y, "") {
    return arg.X == x && arg.Y == y;
}

// Each tile of both tables filled with a byte that tells it from the others of its table.
void NumberTiles(GestureBench& bench) {
    for (int tile = 0; tile < kTileCount; ++tile) {
        std::ranges::fill(TileAt(bench.Store(), kBkg, tile), static_cast<uint8_t>(tile + 1));
        std::ranges::fill(TileAt(bench.Store(), kSp, tile), static_cast<uint8_t>(tile ^ 0xFF));
    }
}
uint8_t ByteOf(GestureBench& bench, PatternTable table, int tile) {
    return TileAt(bench.Store(), table, tile)[15];
}

TEST(DesignerLayout, FindsCellsInCentredPictures) {
    struct Case {
        Rect client;
        int width, height;
        Grid grid;
        Point at;
        std::optional<Hit> hit;
    };
    const std::vector<Case> cases = {
        {{{10, 20}, 64, 32}, 64, 32, {4, 2}, {10, 20}, Hit{{0, 0}, {0, 0}}},
        {{{10, 20}, 64, 32}, 64, 32, {4, 2}, {73, 51}, Hit{{3, 1}, {15, 15}}},
        {{{10, 20}, 64, 32}, 64, 32, {4, 2}, {74, 51}, {}},
        {{{10, 20}, 64, 32}, 64, 32, {4, 2}, {9, 20}, {}},
        {{{10, 20}, 69, 37}, 64, 32, {4, 2}, {12, 22}, Hit{{0, 0}, {0, 0}}},  // (69 - 64) / 2
        {{{10, 20}, 69, 37}, 64, 32, {4, 2}, {11, 22}, {}},
        {{{0, 0}, 61, 32}, 64, 32, {4, 2}, {0, 0}, Hit{{0, 0}, {1, 0}}},  // -3 / 2 is -1
        {{{0, 0}, 10, 10}, 10, 10, {3, 3}, {9, 0}, Hit{{3, 0}, {0, 0}}},  // cells of 3 pixels
        {{{0, 0}, 10, 10}, 10, 10, {11, 1}, {5, 5}, {}},
        {{{0, 0}, 10, 10}, 10, 10, {0, 1}, {5, 5}, {}},
    };
    for (const Case& c : cases) {
        const auto hit = HitTest(c.client, c.width, c.height, c.grid, c.at);
        ASSERT_EQ(hit.has_value(), c.hit.has_value()) << c.at.x << "," << c.at.y;
        if (!hit) continue;
        EXPECT_TRUE(hit->cell == c.hit->cell && hit->rest == c.hit->rest) << c.at.x;
    }

    // No two controls share a pixel, and each ends where its cells end.
    const DesignerLayout layout;
    for (const auto& [control, last, cell] :
         {std::tuple{kBkgTileList, Point{803, 379}, Pos{15, 15}},
          {kBkgTileEditor, {675, 515}, {7, 7}},
          {kSpriteTileList, {1067, 379}, {15, 15}},
          {kSpriteTileEditor, {939, 515}, {7, 7}},
          {kTargetStrip, {1035, 55}, {63, 0}},
          {kSourceStrip, {1035, 95}, {63, 0}},
          {kNameTable, {527, 603}, {31, 29}},
          {kAttribute, {673, 705}, {1, 1}},
          {kBkgPalette, {953, 593}, {15, 0}},
          {kSpritePalette, {953, 651}, {15, 0}},
          {kSystemPalette, {953, 759}, {15, 3}}}) {
        const auto hit = layout.CellAt(control, last);
        ASSERT_TRUE(hit) << static_cast<int>(control);
        EXPECT_EQ(hit->cell, cell);
        EXPECT_FALSE(layout.IsOn(control, {last.x + 1, last.y}));
        EXPECT_FALSE(layout.IsOn(control, {last.x, last.y + 1}));
        size_t controls = 0;
        for (size_t i = 0; i < kControlCount; ++i)
            controls += layout.IsOn(static_cast<Control>(i), last) ? 1 : 0;
        EXPECT_EQ(controls, 1u);
    }
}

// Something of every kind on the screen, cell by cell of the top row.
void Furnish(GestureBench& bench) {
    WorkingCopy& copy = bench.Copy();
    copy.DragText = copy.ShowPageNumber = true;
    copy.document.CaptionPos = {0, 0};
    bench.Store().CaptionText = u"CAP";
    copy.document.PageNumberPos = {4, 0};
    copy.document.ItemPos = {8, 0};
    copy.ItemTextList = {u"", u"ITEM"};
    bench.Store().CustomText = {{.X = 12, .Y = 0, .Text = u"TEXT"}};
    bench.Store().SpriteTileList = {{.X = 16 * 8, .Y = 1, .Tile = 5}};
    bench.Store().BkgTileList = {{.X = 20, .Y = 0, .Tile = 6}};
    bench.Store().ArrowTile = {.X = 24 * 8, .Y = 1, .Tile = 31};
    bench.Store().ArrowTileList.assign(4, {.X = 26 * 8, .Y = 1, .Tile = 2});
}

TEST(Gestures, EachPressStartsItsMode) {
    struct Case {
        Point at;
        MouseMode mode;
        std::function<void(WorkingCopy&)> setUp;
    };
    const GestureBench places;
    const auto screen = [&](int column, int row = 0) {
        return places.In(Control::kNameTable, column, row);
    };
    const auto big = [](WorkingCopy& copy) { copy.document.BigCursor = 1; };
    const auto quick = [](WorkingCopy& copy) { copy.QuickAction = true; };
    const auto still = [](WorkingCopy& copy) { copy.DragText = false; };
    const auto hide = [](bool WorkingCopy::*layer) {
        return [layer](WorkingCopy& copy) { copy.*layer = false; };
    };
    using enum MouseMode;
    const std::vector<Case> cases = {
        {kNowhere, kIdle, {}},
        {screen(2), kDragCaption, {}},
        {screen(3), kClickNameTable, {}},
        {screen(2), kClickNameTable, still},
        {screen(2), kClickNameTable, hide(&WorkingCopy::Show_Caption)},
        {screen(6), kDragPageNumber, {}},
        {screen(6), kClickNameTable, hide(&WorkingCopy::ShowPageNumber)},
        {screen(8), kClickNameTable, {}},  // an empty line
        {screen(11, 1), kDragItemList, {}},
        {screen(11, 1), kClickNameTable, hide(&WorkingCopy::Show_List)},
        {screen(15), kDragText, {}},
        {screen(15), kClickNameTable, hide(&WorkingCopy::Show_Custom_Text)},
        {screen(16), kDragSpriteTile, {}},
        {screen(16), kClickNameTable, still},
        {screen(16), kClickNameTable, hide(&WorkingCopy::Show_Sp_Tile)},
        {screen(20), kDragBkgTile, {}},
        {screen(20), kClickNameTable, hide(&WorkingCopy::Show_Bg_Tile)},
        {screen(24), kDragCursor, {}},
        {screen(24), kDragCursor, still},
        {screen(24), kClickNameTable, big},
        {screen(24), kClickNameTable, hide(&WorkingCopy::Show_Cursor)},
        {screen(26), kDragBigCursor, big},
        {screen(26), kClickNameTable, {}},
        {screen(2), kPlaceNameCell, quick},
        {screen(24), kDragCursor, quick},
        {places.In(Control::kAttribute, 1), kAttribute, {}},
        {places.In(Control::kBkgPalette, 1), kBkgPalette, {}},
        {places.In(Control::kSpritePalette, 1), kSpritePalette, {}},
        {places.In(Control::kSystemPalette, 1), kSystemPalette, {}},
        {places.In(Control::kBkgTileList, 1), kDragBkgTile, {}},
        {places.In(Control::kBkgTileList, 1), kIdle, quick},
        {places.In(Control::kSpriteTileList, 1), kDragSpriteTile, {}},
        {places.In(Control::kBkgTileEditor, 1), kPaintBkgTile, {}},
        {places.In(Control::kSpriteTileEditor, 1), kPaintSpriteTile, {}},
        {places.In(Control::kSourceStrip, 1), kSourceCharacter, {}},
        {places.In(Control::kTargetStrip, 1), kTargetCharacter, {}},
    };
    for (const Case& c : cases) {
        GestureBench bench;
        Furnish(bench);
        if (c.setUp) c.setUp(bench.Copy());
        bench.Press(c.at);
        EXPECT_EQ(bench.mouse.Mode(), c.mode) << c.at.x << "," << c.at.y;
        EXPECT_TRUE(bench.mouse.Captured());
        bench.Release(c.at);
        EXPECT_EQ(bench.mouse.Mode(), kIdle);
        EXPECT_FALSE(bench.mouse.Captured() || bench.mouse.DraggedPicture().shown);
    }

    // A disabled control isn't there: what would be taken on it isn't either.
    GestureBench bench;
    Furnish(bench);
    bench.layout.Enable(kNameTable, false);
    bench.layout.Enable(Control::kBkgPalette, false);
    for (const Point at : {screen(2), screen(24), places.In(Control::kBkgPalette, 1)}) {
        bench.Press(at);
        EXPECT_EQ(bench.mouse.Mode(), kIdle);
    }
    // Only the low 16 bits of a place count.
    bench.Press({screen(2).x, places.In(Control::kSpriteTileList, 0).y + 0x10000});
    EXPECT_EQ(bench.mouse.Mode(), kIdle);
    bench.Press({places.In(Control::kSpriteTileList, 0).x - 0x10000,
                 places.In(Control::kSpriteTileList, 0).y});
    EXPECT_EQ(bench.mouse.Mode(), kDragSpriteTile);
}

TEST(Gestures, TextsMoveByCellsWithinTheirOwnBounds) {
    struct Case {
        Pos DesignDocument::*place;
        Pos from, to, then;
    };
    const auto caption = &DesignDocument::CaptionPos;
    const auto page = &DesignDocument::PageNumberPos;
    const auto list = &DesignDocument::ItemPos;
    const std::vector<Case> cases = {
        {caption, {2, 0}, {12, 7}, {10, 7}}, {caption, {0, 0}, {60, 40}, {31, 29}},
        {caption, {2, 0}, {-9, -9}, {0, 0}}, {page, {5, 0}, {9, 9}, {8, 9}},
        {page, {4, 0}, {31, 31}, {29, 29}},  {page, {4, 0}, {-1, 0}, {0, 0}},
        {list, {10, 1}, {12, 3}, {10, 2}},   {list, {8, 1}, {40, 40}, {31, 28}},
        {list, {8, 1}, {-3, 0}, {0, 0}},
    };
    for (const Case& c : cases) {
        GestureBench bench;
        Furnish(bench);
        const DesignDocument furnished = bench.Copy().document;
        bench.Drag(bench.In(kNameTable, c.from.X, c.from.Y), bench.In(kNameTable, c.to.X, c.to.Y));
        EXPECT_EQ(bench.Copy().document.*c.place, c.then) << c.to.X << "," << c.to.Y;
        const bool same = furnished.*c.place == c.then;
        EXPECT_EQ(bench.session.Steps().Count(), same ? 0u : 2u) << "one step of the history";
    }
    // More lines than the screen has rows: the list stays at the top.
    GestureBench bench;
    Furnish(bench);
    bench.Copy().ItemTextList.assign(40, u"ITEM");
    bench.Drag(bench.In(kNameTable, 8, 5), bench.In(kNameTable, 9, 20));
    EXPECT_EQ(bench.Copy().document.ItemPos, (Pos{9, 0}));
}

TEST(Gestures, CustomTextsAreJudgedWhereTheyAreDropped) {
    struct Case {
        int column, row;  // where the third letter of "TEXT" is dropped
        bool kept;
        Pos then;
    };
    for (const Case& c : {Case{9, 9, true, {7, 9}}, Case{-1, 0, true, {-3, 0}},
                          Case{-2, 0, false, {}}, Case{33, 29, true, {31, 29}},
                          Case{34, 0, false, {}}, Case{5, 30, false, {}}, Case{5, -2, false, {}}}) {
        GestureBench bench;
        Furnish(bench);
        // From the middle of the cell, where rounding towards 0 gives the same cell on both sides.
        bench.Press(bench.In(kNameTable, 14, 0, {0, 0}));
        EXPECT_THAT(bench.Store().CustomText, IsEmpty()) << "held by the mouse";
        bench.Move(bench.In(kNameTable, c.column, c.row, {0, 0}));
        EXPECT_THAT(*bench.Copy().PlacedText, At(c.column - 2, c.row));
        bench.Release(kNowhere);
        EXPECT_FALSE(bench.Copy().PlacedText);
        ASSERT_EQ(bench.Store().CustomText.size(), c.kept ? 1u : 0u) << c.column << "," << c.row;
        if (!c.kept) continue;
        EXPECT_THAT(bench.Store().CustomText, ElementsAre(At(c.then.X, c.then.Y)));
    }
    // The last of several takes the press, and with Ctrl a copy of it with a number of its own.
    GestureBench bench;
    Furnish(bench);
    bench.Store().CustomText.push_back({.Index = 1, .X = 13, .Y = 0, .Text = u"OVER"});
    bench.Copy().nextTextIndex = 7;
    bench.Drag(bench.In(kNameTable, 14), bench.In(kNameTable, 14, 4), kCtrl);
    EXPECT_THAT(bench.Store().CustomText, ElementsAre(At(12, 0), At(13, 0), At(13, 4)));
    EXPECT_EQ(bench.Store().CustomText.back().Index, 7u);
    EXPECT_EQ(bench.Copy().nextTextIndex, 8u);
}

TEST(Gestures, CursorAndArrowsTakeEachOtherAlong) {
    GestureBench bench;
    Furnish(bench);
    bench.Store().ArrowTile.Palette = 2;
    bench.Store().SpriteTileList[0].Selected = bench.Store().BkgTileList[0].Selected = 1;
    // Gripped 3 pixels from its left edge and 2 below its top, which is at its Y byte.
    bench.Press(bench.Screen(24 * 16 + 3, 4));
    EXPECT_EQ(bench.Copy().SpTilePos, (Pos{15, 1}));
    EXPECT_EQ(bench.Copy().SpPalettePos.X, 9);
    EXPECT_TRUE(bench.Copy().SpritePaletteActive);
    EXPECT_EQ(bench.Store().SpriteTileList[0].Selected + bench.Store().BkgTileList[0].Selected, 0u);
    bench.Move(bench.Screen(203, 102));
    EXPECT_THAT(bench.Store().ArrowTile, At(100, 50));
    EXPECT_THAT(bench.Store().ArrowTileList,
                ElementsAre(At(92, 46), At(100, 46), At(92, 54), At(100, 54)));
    bench.Move(bench.Screen(-50, -50));
    EXPECT_THAT(bench.Store().ArrowTile, At(0, 1));
    EXPECT_THAT(bench.Store().ArrowTileList[0], At(0, 1));
    bench.Move(bench.Screen(1000, 1000));
    EXPECT_THAT(bench.Store().ArrowTile, At(255, 239));
    bench.Release(kNowhere);

    // The large cursor: whichever part is gripped, the first part goes there.
    bench.Copy().document.BigCursor = 1;
    bench.Store().BigSprite = 1;
    bench.Store().ArrowTileList = {{.X = 10, .Y = 10},
                                   {.X = 18, .Y = 10},
                                   {.X = 10, .Y = 26},
                                   {.X = 18, .Y = 26, .Tile = 19, .Palette = 1}};
    bench.Copy().SpritePaletteActive = false;
    bench.Press(bench.Screen(36, 52 + 31));
    EXPECT_EQ(bench.mouse.Mode(), MouseMode::kDragBigCursor);
    EXPECT_EQ(bench.Copy().SpTilePos, (Pos{3, 1}));
    EXPECT_EQ(bench.Copy().SpPalettePos.X, 5);
    EXPECT_FALSE(bench.Copy().SpritePaletteActive) << "only the small cursor switches it";
    bench.Move(bench.Screen(200, 131));
    EXPECT_THAT(bench.Store().ArrowTileList,
                ElementsAre(At(100, 50), At(108, 50), At(100, 66), At(108, 66)));
    EXPECT_THAT(bench.Store().ArrowTile, At(108, 54));
    bench.Move(bench.Screen(511, 511));
    EXPECT_THAT(bench.Store().ArrowTile, At(255, 239)) << "kept on the screen";
    bench.Release(kNowhere);

    // Beside the cursor its selection ends; beside the screen it doesn't.
    bench.Copy().document.BigCursor = 0;
    bench.Store().ArrowTile = {.X = 10, .Y = 10, .Selected = 1};
    bench.Click(bench.In(kSpritePalette, 8));
    EXPECT_EQ(bench.Store().ArrowTile.Selected, 1u);
    EXPECT_EQ(bench.Store().ArrowTile.Palette, 2);
    for (const bool big : {false, true}) {
        bench.Copy().document.BigCursor = big ? 1 : 0;
        bench.Store().ArrowTile.Selected = bench.Store().SpriteTileList[0].Selected = 1;
        bench.Click(bench.In(kNameTable, 1));
        EXPECT_EQ(bench.Store().ArrowTile.Selected, 0u) << "though the caption takes the press";
        EXPECT_EQ(bench.Store().SpriteTileList[0].Selected, 1u);
    }
}

TEST(Gestures, BackgroundItemsMoveOrAreCopiedOrLost) {
    const Pos from{20, 4}, to{25, 9};
    const auto furnish = [&](GestureBench& bench) {
        bench.Copy().DragText = true;
        bench.Copy().nextBkgIndex = 50;
        bench.Store().Attributes.fill(0xE4);
        bench.Store().BkgTileList = {{.Index = 3, .X = from.X, .Y = from.Y, .Tile = 6},
                                     {.Index = 4, .X = from.X, .Y = from.Y, .Tile = 7},
                                     {.Index = 5, .X = 0, .Y = 0, .Selected = 1, .Tile = 8}};
        bench.Store().SpriteTileList = {{.X = 200, .Y = 200, .Selected = 1}};
    };
    struct Case {
        bool ctrl, onScreen;
        std::vector<uint8_t> tiles;
    };
    for (const Case& c : {Case{false, true, {6, 8, 7}}, Case{false, false, {6, 8}},
                          Case{true, true, {6, 7, 8, 7}}, Case{true, false, {6, 8}}}) {
        GestureBench bench;
        furnish(bench);
        bench.Drag(bench.In(kNameTable, from.X, from.Y),
                   c.onScreen ? bench.In(kNameTable, to.X, to.Y) : kNowhere, {c.ctrl, false});
        std::vector<uint8_t> tiles;
        for (const TileItem& item : bench.Store().BkgTileList)
            tiles.push_back(item.Tile);
        EXPECT_EQ(tiles, c.tiles) << c.ctrl << c.onScreen;
        EXPECT_EQ(bench.Copy().BkgTilePos, (Pos{7, 0}));
        EXPECT_EQ(bench.Store().SpriteTileList[0].Selected, 0u);
        EXPECT_EQ(bench.Store().BkgTileList.front().Selected, 0u);
        if (!c.onScreen) continue;
        const TileItem& dropped = bench.Store().BkgTileList.back();
        EXPECT_THAT(dropped, At(to.X, to.Y));
        EXPECT_EQ(dropped.Index, 50u);
        EXPECT_EQ(dropped.Palette, 0);
        bench.session.Undo();
        EXPECT_EQ(bench.Store().BkgTileList.size(), 3u);
    }
    // The ghost shows the colours of the place under it and snaps to its cells.
    GestureBench bench;
    furnish(bench);
    bench.Copy().BkgPalettePos.X = 9;
    bench.Copy().SpPalettePos.X = 14;
    bench.Press(bench.In(kNameTable, from.X, from.Y));
    const auto ghost = [&] { return bench.mouse.DraggedPicture(); };
    EXPECT_TRUE(ghost().shown);
    for (const auto& [at, corner, palette] :
         {std::tuple{bench.In(kNameTable, 3, 2), bench.In(kNameTable, 3, 2, {-1, -1}), 3},
          {bench.In(kSourceStrip, 9), bench.In(kSourceStrip, 9, 0, {-1, -1}), 0},
          {bench.In(kBkgTileList, 9, 9), bench.In(kBkgTileList, 9, 9, {-1, -1}), 2},
          {bench.In(kSpriteTileList, 2, 1), bench.In(kSpriteTileList, 2, 1, {-1, -1}), 3},
          {kNowhere, {kNowhere.x - 3 - 1, kNowhere.y - 5 - 1}, 3}}) {
        bench.Move(at);
        EXPECT_EQ(ghost().at, corner);
        EXPECT_EQ(ghost().width * 100 + ghost().height, 1818);
        EXPECT_EQ(ghost().tiles, (std::vector<GhostTile>{{kBkg, 7, palette, {1, 1}}}));
    }
}

TEST(Gestures, TilesDroppedOnTheScreenOrTheCharactersAreUsedThere) {
    GestureBench bench;
    bench.Copy().nextBkgIndex = 4;
    bench.Drag(bench.In(kBkgTileList, 5, 3), bench.In(kNameTable, 31, 29));
    EXPECT_THAT(bench.Store().BkgTileList, ElementsAre(Item(31, 29, 0x35)));
    EXPECT_EQ(bench.Store().BkgTileList[0].Index, 4u);
    bench.Drag(bench.In(kBkgTileList, 5, 3), bench.In(kSourceStrip, 63));
    EXPECT_EQ(bench.Store().CharMapData[95], 0x35);
    EXPECT_EQ(bench.Store().BkgTileList.size(), 1u) << "a tile has no number to be removed by";

    // The ghost leaves the list as the bare cell that was taken.
    bench.Press(bench.In(kBkgTileList, 5, 3));
    EXPECT_EQ(bench.mouse.DraggedPicture().width, 16);
    EXPECT_EQ(bench.mouse.DraggedPicture().at, bench.In(kBkgTileList, 5, 3, {0, 0}));
    bench.Release(kNowhere);
    EXPECT_EQ(bench.Store().BkgTileList.size(), 1u);
}

TEST(Gestures, TilesDroppedOnTheirListMoveThereWithAllThatNamesThem) {
    for (const bool copies : {false, true}) {
        GestureBench bench;
        NumberTiles(bench);
        bench.Store().BkgTileList = {{.X = 1, .Y = 1, .Tile = 0x35}, {.X = 2, .Y = 1, .Tile = 9}};
        bench.Store().CharMapData['A'] = 0x35;
        bench.Drag(bench.In(kBkgTileList, 5, 3), bench.In(kBkgTileList, 2, 0), {copies, false});
        EXPECT_EQ(ByteOf(bench, kBkg, 2), 0x36);
        EXPECT_EQ(ByteOf(bench, kBkg, 0x35), copies ? 0x36 : 0);
        EXPECT_THAT(bench.Store().BkgTileList, ElementsAre(Item(1, 1, 2), Item(2, 1, 9)));
        EXPECT_EQ(bench.Store().CharMapData['A'], 2);
        EXPECT_EQ(bench.Copy().BkgTilePos, (Pos{2, 0}));
    }
    // Onto itself, which is what a click does: nothing but the current tile changes.
    GestureBench bench;
    NumberTiles(bench);
    bench.Store().SpriteTileList = {{.Tile = 0x35}};
    const auto before = bench.Store().ChrData;
    bench.Click(bench.In(kBkgTileList, 5, 3));
    bench.Click(bench.In(kSpriteTileList, 5, 3));
    EXPECT_EQ(bench.Store().ChrData, before);
    EXPECT_EQ(bench.Store().SpriteTileList[0].Tile, 0x35);
    EXPECT_EQ(bench.Copy().SpTilePos, (Pos{5, 3}));

    // Across the tables pixels are only copied.
    bench.Drag(bench.In(kBkgTileList, 1, 0), bench.In(kSpriteTileList, 2, 0));
    bench.Drag(bench.In(kSpriteTileList, 5, 3), bench.In(kBkgTileList, 3, 0));
    EXPECT_EQ(ByteOf(bench, kSp, 2), 2);
    EXPECT_EQ(ByteOf(bench, kBkg, 3), 0x35 ^ 0xFF);
    EXPECT_EQ(ByteOf(bench, kSp, 0x35), 0x35 ^ 0xFF);

    // An item taken off the screen brings its pixels along and leaves the table's tile alone.
    bench.Copy().DragText = true;
    bench.Store().BkgTileList = {{.X = 1, .Y = 1, .Tile = 0x20}, {.X = 2, .Y = 2, .Tile = 0x20}};
    bench.Drag(bench.In(kNameTable, 1, 1), bench.In(kBkgTileList, 4, 0));
    EXPECT_EQ(ByteOf(bench, kBkg, 4), 0x21);
    EXPECT_EQ(ByteOf(bench, kBkg, 0x20), 0x21);
    EXPECT_THAT(bench.Store().BkgTileList, ElementsAre(Item(2, 2, 0x20)));
}

TEST(Gestures, TallSpritesMoveInPairs) {
    GestureBench bench;
    NumberTiles(bench);
    bench.Store().BigSprite = 1;
    bench.Store().SpriteTileList = {{.Tile = 0x35}, {.Tile = 0x34}, {.Tile = 0x37}};
    bench.Store().ArrowTileList = {{.Tile = 0x35}};
    bench.Store().ArrowTile.Tile = 0x35;
    bench.Press(bench.In(kSpriteTileList, 4, 3));
    EXPECT_EQ(bench.mouse.DraggedPicture().tiles,
              (std::vector<GhostTile>{{kSp, 0x34, 0, {1, 1}}, {kSp, 0x35, 0, {1, 17}}}));
    bench.Release(bench.In(kSpriteTileList, 7, 0));
    EXPECT_EQ(ByteOf(bench, kSp, 6), 0x34 ^ 0xFF);
    EXPECT_EQ(ByteOf(bench, kSp, 7), 0x35 ^ 0xFF);
    EXPECT_EQ(ByteOf(bench, kSp, 0x34) + ByteOf(bench, kSp, 0x35), 0);
    EXPECT_THAT(bench.Store().SpriteTileList,
                ElementsAre(Item(0, 0, 7), Item(0, 0, 0x34), Item(0, 0, 0x37)))
        << "even numbers name the other table";
    EXPECT_EQ(bench.Store().ArrowTileList[0].Tile, 7);
    EXPECT_EQ(bench.Store().ArrowTile.Tile, 7);
    EXPECT_EQ(bench.Copy().SpTilePos, (Pos{6, 0}));

    bench.Drag(bench.In(kSpriteTileList, 1, 4), bench.In(kBkgTileList, 9, 9));
    EXPECT_EQ(ByteOf(bench, kBkg, 0x99), 0x40 ^ 0xFF) << "the upper one of the pair";
    bench.Press(bench.In(kSpriteTileList, 4, 3, {6, 7}));
    bench.Move(bench.In(kNameTable, 2, 2, {6, 7}));
    EXPECT_EQ(bench.mouse.DraggedPicture().at, bench.In(kNameTable, 2, 2, {-1, -2}));
    bench.Release(bench.In(kNameTable, 2, 2, {6, 7}));
    EXPECT_THAT(bench.Store().SpriteTileList.back(), Item(16, 15, 0x35));
}

TEST(Gestures, SpritesAreDroppedToTheConsolesPixel) {
    struct Case {
        Point to;  // of the sprite's corner, pixels of the screen's picture
        Keys keys;
        std::optional<Pos> then;
    };
    const std::vector<Case> cases = {
        {{100, 60}, {}, Pos{50, 29}},
        {{101, 61}, {}, Pos{50, 29}},
        {{0, 0}, {}, Pos{0, 0}},
        {{0, 2}, {}, Pos{0, 0}},
        {{-2, 20}, {}, {}},
        {{504, 472}, {}, Pos{252, 235}},
        {{100, -2}, {}, {}},
        {{39, 23}, kShift, Pos{16, 7}},
        {{40, 24}, kShift, Pos{24, 15}},
        {{-6, -6}, kShift, Pos{0, 0}},
        {{505, 473}, kShift, Pos{248, 231}},
    };
    for (const Case& c : cases) {
        GestureBench bench;
        bench.Copy().DragText = true;
        bench.Copy().nextSpriteIndex = 9;
        bench.Store().SpriteTileList = {{.X = 100, .Y = 50, .Tile = 1},
                                        {.X = 100, .Y = 50, .Tile = 2, .Palette = 3, .Flags = 6}};
        // Gripped at an odd place within the sprite, which shows a line below its Y byte.
        const Point grip{7, 7};
        bench.Press(bench.Screen(200 + grip.x, 102 + grip.y));
        EXPECT_EQ(bench.Copy().SpTilePos, (Pos{2, 0})) << "the last in the list";
        EXPECT_EQ(bench.Copy().SpPalettePos.X, 12);
        EXPECT_EQ(bench.Store().SpriteTileList.size(), 1u);
        const Point at = bench.Screen(c.to.x + 6, c.to.y + 6);  // whole pixels of the console
        bench.Move(at, c.keys);
        const Point shown = bench.mouse.DraggedPicture().at;
        bench.Release(at, c.keys);
        ASSERT_EQ(bench.Store().SpriteTileList.size(), c.then ? 2u : 1u) << c.to.x << "," << c.to.y;
        EXPECT_EQ(bench.mouse.ShownFlags(), 6);
        bench.Press(bench.In(kSpriteTileList, 0));
        EXPECT_EQ(bench.mouse.ShownFlags(), 0);
        if (!c.then) continue;
        const TileItem& dropped = bench.Store().SpriteTileList.back();
        EXPECT_THAT(dropped, Item(c.then->X, c.then->Y, 2));
        EXPECT_EQ(dropped.Index, 9u);
        EXPECT_EQ(dropped.Flags, 6);
        if (c.to.y == 0 || c.to.y == -6) continue;  // moved down by a line
        EXPECT_EQ(shown, bench.Screen(dropped.X * 2 - 1, dropped.Y * 2 + 2 - 1))
            << "the ghost stood where the sprite is";
    }
}

TEST(Gestures, SpritesLeaveTheScreenOrFindTheListFull) {
    const auto furnish = [](GestureBench& bench) {
        bench.Copy().DragText = true;
        bench.Store().SpriteTileList = {{.Index = 3, .X = 100, .Y = 50, .Selected = 1, .Tile = 2}};
        bench.Store().BkgTileList = {{.X = 1, .Y = 1, .Selected = 1}};
    };
    for (const bool ctrl : {false, true}) {
        GestureBench bench;
        furnish(bench);
        bench.Press(bench.Screen(204, 104), {ctrl, false});
        EXPECT_EQ(bench.Store().SpriteTileList.size(), ctrl ? 1u : 0u);
        EXPECT_EQ(bench.Store().BkgTileList[0].Selected, 0u);
        EXPECT_TRUE(bench.mouse.DraggedPicture().framed);
        bench.Move(kNowhere);
        EXPECT_EQ(bench.mouse.DraggedPicture().at, (Point{kNowhere.x - 5, kNowhere.y - 3}));
        bench.Release(kNowhere, {ctrl, false});
        EXPECT_THAT(bench.Store().SpriteTileList, IsEmpty()) << "the original goes as well";
    }
    GestureBench bench;
    furnish(bench);
    bench.Store().SpriteTileList.resize(255, {.Index = 9, .X = 0, .Y = 200});
    bench.Drag(bench.Screen(204, 104), bench.Screen(300, 104), kCtrl);
    EXPECT_EQ(bench.Store().SpriteTileList.size(), 255u) << "no room for a copy";
    bench.Drag(bench.Screen(204, 104), bench.Screen(300, 104));
    EXPECT_EQ(bench.Store().SpriteTileList.size(), 255u);
    bench.Drag(bench.In(kSpriteTileList, 0), bench.Screen(300, 104));
    EXPECT_EQ(bench.Store().SpriteTileList.size(), 255u);
}

TEST(Gestures, GhostsAreDrawnLikeTheirSprites) {
    GestureBench bench;
    // The top row of tile 4 of each table, of 5 the left column.
    TileAt(bench.Store(), kSp, 4)[0] = TileAt(bench.Store(), kBkg, 4)[8] = 0xFF;
    for (size_t row = 0; row < 8; ++row)
        TileAt(bench.Store(), kSp, 5)[row] = 0x80;
    TileImage tiles;
    tiles.Redraw(bench.Store().ChrData, bench.Store().BkgPalette, bench.Store().SpritePalette, {},
                 {});
    const Colour line = tiles.SpriteTile(4, 1).surface.At(tiles.SpriteTile(4, 1).at);
    const Surface plain = DrawGhost(SpriteGhost({.Tile = 4, .Palette = 1}, false), tiles);
    EXPECT_EQ(plain.At({1, 1}), line);
    EXPECT_EQ(plain.At({16, 2}), line);
    EXPECT_NE(plain.At({1, 3}), line);
    EXPECT_EQ(plain.At({0, 0}), 0u);
    const TileItem turned{.Selected = 1,
                          .Tile = 5,
                          .Palette = 1,
                          .Flags = TileItem::kFlipVertically | TileItem::kFlipHorizontally};
    const Surface tall = DrawGhost(SpriteGhost(turned, true), tiles);
    EXPECT_EQ(tall.Height(), 36);
    EXPECT_EQ(tall.At({16, 2}), line) << "the odd tile on top, its left column at the right";
    EXPECT_EQ(tall.At({1, 33}), line) << "the even one below, its top row at the bottom";
    EXPECT_NE(tall.At({1, 18}), line);
    EXPECT_EQ(tall.At({17, 35}), 0x00FFFFu) << "framed, as it is selected";
    EXPECT_EQ(SpriteGhost({.Tile = 4}, true).tiles[0].table, kBkg) << "even: the other table";
}

TEST(Gestures, DamagedPlacesDoNoHarm) {
    GestureBench bench;
    Furnish(bench);
    for (const int32_t place : {kFar, -kFar - 1, kFar / 2, -1, 300}) {
        WorkingCopy& copy = bench.Copy();
        const Pos pos{place, place};
        copy.document.CaptionPos = copy.document.PageNumberPos = copy.document.ItemPos = pos;
        for (Pos* use : {&copy.AttrBytePos, &copy.AttrQuadrantPos, &copy.BkgPalettePos,
                         &copy.SpPalettePos, &copy.BkgTilePos, &copy.SpTilePos, &copy.MapTargetPos,
                         &copy.MapSourcePos, &copy.NameCellPos}) {
            *use = pos;
        }
        bench.Store().CustomText = {{.X = place, .Y = place, .Text = u"T"}};
        bench.Store().SpriteTileList = {{.X = place, .Y = place, .Selected = 1, .Palette = 255}};
        bench.Store().BkgTileList = {{.Index = 0xFFFFFFFF, .X = place, .Y = place}};
        bench.Store().ArrowTile = bench.Store().SpriteTileList[0];
        bench.Store().ArrowTileList = {bench.Store().ArrowTile};
        const auto chr = bench.Store().ChrData;
        const auto palette = bench.Store().BkgPalette;
        const auto attributes = bench.Store().Attributes;
        bench.Click(bench.In(kSystemPalette, 3));
        bench.time += std::chrono::seconds(1);
        bench.Click(bench.In(kBkgPalette, 3));
        EXPECT_EQ(bench.Store().BkgPalette, palette);
        EXPECT_EQ(bench.Store().Attributes, attributes);
        copy.QuickReplaceToBkg = copy.QuickReplaceFromBkg = copy.QuickAction = true;
        copy.NameCellPos = copy.MapSourcePos = copy.MapTargetPos = pos;
        bench.Click(bench.In(kBkgTileList, 3));
        EXPECT_EQ(copy.MapSourcePos, pos);
        bench.Click(kNowhere);
        bench.Click(bench.In(kBkgTileList, 3));
        EXPECT_EQ(bench.Store().BkgTileList.size(), 1u) << "no place to put it";
        bench.Drag(bench.In(kNameTable, 1, 1), bench.In(kNameTable, 2, 2));
        copy.QuickAction = false;
        bench.mouse.ShiftKeyDown();
        bench.Drag(bench.In(kNameTable, 1, 1), {place, place});
        bench.mouse.ShiftKeyUp();
        bench.DoubleClick(bench.In(kNameTable, 1, 1));
        bench.Drag(bench.In(kBkgTileList, 0), kNowhere);
        EXPECT_EQ(bench.Store().BkgTileList.size(), 1u) << "a tile's missing number names nothing";
        EXPECT_EQ(bench.Store().ChrData, chr);
    }
}

}  // namespace
}  // namespace bw
