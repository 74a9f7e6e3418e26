// Drags and drops: what is taken by a press, how it moves, where it may be put down.

#include <limits>
#include <tuple>

#include "designer/pictures/name_table_picture.h"
#include "gesture_bench.h"

namespace bw {
namespace {

using enum Control;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// Something of every kind on the screen, cell by cell of the top row.
struct Furnished : GestureBench {
    Furnished() {
        copy.DragText = copy.ShowPageNumber = true;
        copy.document = {store, {0, 0}, {4, 0}, {8, 0}};
        store.CaptionText = u"CAP";
        copy.ItemTextList = {u"", u"ITEM"};
        store.CustomText = {{.X = 12, .Y = 0, .Text = u"TEXT"}};
        store.SpriteTileList = {{.X = 16 * 8, .Y = 1, .Tile = 5}};
        store.BkgTileList = {{.X = 20, .Y = 0, .Tile = 6}};
        store.ArrowTile = {.X = 24 * 8, .Y = 1, .Tile = 31};
        store.ArrowTileList.assign(4, {.X = 26 * 8, .Y = 1, .Tile = 2});
    }
    // Each tile of both tables filled with a byte that tells it from the others of its table.
    void NumberTiles() {
        for (int tile = 0; tile < kTileCount; ++tile) {
            FillTile(store, kBkg, tile, tile + 1);
            FillTile(store, kSp, tile, tile ^ 0xFF);
        }
    }
};

class Gestures : public testing::Test, protected Furnished {};

TEST(DesignerLayout, FindsCellsInCentredPictures) {
    const struct {
        Rect client;
        int width, height;
        Grid grid;
        Point at;
        std::optional<Hit> hit;
    } cases[] = {
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
    for (const auto& c : cases) {
        const auto hit = HitTest(c.client, c.width, c.height, c.grid, c.at);
        ASSERT_EQ(hit.has_value(), c.hit.has_value()) << c.at.x << "," << c.at.y;
        if (!hit) continue;
        EXPECT_TRUE(hit->cell == c.hit->cell && hit->rest == c.hit->rest) << c.at.x;
    }
    // Each control is found at the first pixel of its last cell, and no other one is there.
    const DesignerLayout layout;
    for (size_t i = 0; i < kControlCount; ++i) {
        const auto control = static_cast<Control>(i);
        const Pos last{CellsOf(control).columns - 1, CellsOf(control).rows - 1};
        const Point at = layout.Corner(control, last);
        EXPECT_EQ(layout.CellAt(control, at)->cell, last);
        for (size_t other = 0; other < kControlCount; ++other)
            EXPECT_EQ(layout.IsOn(static_cast<Control>(other), at), other == i) << i;
    }
}

TEST_F(Gestures, EachPressStartsItsMode) {
    using enum MouseMode;
    // In a furnished designer with one of its switches toggled.
    const auto expectMode = [&](Point at, MouseMode mode, bool WorkingCopy::*field = nullptr,
                                uint8_t bigCursor = 0) {
        Furnished bench;
        bench.copy.document.BigCursor = bigCursor;
        if (field != nullptr) bench.copy.*field = !(bench.copy.*field);
        bench.Press(at);
        EXPECT_EQ(bench.mouse.Mode(), mode) << at.x << "," << at.y;
        EXPECT_TRUE(bench.mouse.Captured());
        bench.Release(at);
        EXPECT_FALSE(bench.mouse.Captured() || bench.Dragged().shown);
        EXPECT_EQ(bench.mouse.Mode(), kIdle);
    };
    // What is hidden, or not to be dragged, leaves the press to the screen.
    const struct {
        Point at;
        MouseMode mode;
        bool WorkingCopy::*shown;
        uint8_t bigCursor = 0;
    } things[] = {{In(kNameTable, 2), kDragCaption, &WorkingCopy::Show_Caption},
                  {In(kNameTable, 6), kDragPageNumber, &WorkingCopy::ShowPageNumber},
                  {In(kNameTable, 11, 1), kDragItemList, &WorkingCopy::Show_List},
                  {In(kNameTable, 15), kDragText, &WorkingCopy::Show_Custom_Text},
                  {In(kNameTable, 16), kDragSpriteTile, &WorkingCopy::Show_Sp_Tile},
                  {In(kNameTable, 20), kDragBkgTile, &WorkingCopy::Show_Bg_Tile},
                  {In(kNameTable, 24), kDragCursor, &WorkingCopy::Show_Cursor},
                  {In(kNameTable, 26), kDragBigCursor, &WorkingCopy::Show_Cursor, 1}};
    for (const auto& [at, mode, shown, big] : things) {
        const bool cursor = shown == &WorkingCopy::Show_Cursor;
        expectMode(at, mode, nullptr, big);
        expectMode(at, kClickNameTable, shown, big);
        expectMode(at, cursor ? mode : kClickNameTable, &WorkingCopy::DragText, big);
        expectMode(at, cursor ? mode : kPlaceNameCell, &WorkingCopy::QuickAction, big);
    }
    expectMode(In(kNameTable, 24), kClickNameTable, nullptr, 1);
    for (const int nothing : {3, 8, 26})  // the second: an empty line
        expectMode(In(kNameTable, nothing), kClickNameTable);
    expectMode(kNowhere, kIdle);
    const std::pair<Control, MouseMode> controls[] = {
        {kBkgTileList, kDragBkgTile},
        {kBkgTileEditor, kPaintBkgTile},
        {kSpriteTileList, kDragSpriteTile},
        {kSpriteTileEditor, kPaintSpriteTile},
        {kTargetStrip, kTargetCharacter},
        {kSourceStrip, kSourceCharacter},
        {Control::kAttribute, MouseMode::kAttribute},
        {Control::kBkgPalette, MouseMode::kBkgPalette},
        {Control::kSpritePalette, MouseMode::kSpritePalette},
        {Control::kSystemPalette, MouseMode::kSystemPalette}};
    for (const auto& [control, mode] : controls)
        expectMode(In(control, 0), mode);
    expectMode(In(kBkgTileList, 1), kIdle, &WorkingCopy::QuickAction);

    // A disabled control isn't there: what would be taken on it isn't either.
    layout.Enable(kNameTable, false);
    layout.Enable(Control::kBkgPalette, false);
    for (const Point at : {things[0].at, things[6].at, In(Control::kBkgPalette, 1)}) {
        Press(at);
        EXPECT_EQ(mouse.Mode(), kIdle);
    }
    // Only the low 16 bits of a place count.
    const Point tile = In(kSpriteTileList, 0);
    Press({things[0].at.x, tile.y + 0x10000});
    EXPECT_EQ(mouse.Mode(), kIdle);
    Press({tile.x - 0x10000, tile.y});
    EXPECT_EQ(mouse.Mode(), kDragSpriteTile);
}

TEST_F(Gestures, TextsMoveByCellsWithinTheirOwnBounds) {
    const auto caption = &DesignDocument::CaptionPos;
    const auto page = &DesignDocument::PageNumberPos;
    const auto list = &DesignDocument::ItemPos;
    const struct {
        Pos DesignDocument::*place;
        Pos from, to, then;
    } cases[] = {
        {caption, {2, 0}, {12, 7}, {10, 7}}, {caption, {0, 0}, {60, 40}, {31, 29}},
        {caption, {2, 0}, {-9, -9}, {0, 0}}, {page, {5, 0}, {9, 9}, {8, 9}},
        {page, {4, 0}, {31, 31}, {29, 29}},  {page, {4, 0}, {-1, 0}, {0, 0}},
        {list, {10, 1}, {12, 3}, {10, 2}},   {list, {8, 1}, {40, 40}, {31, 28}},
        {list, {8, 1}, {-3, 0}, {0, 0}},
    };
    for (const auto& c : cases) {
        Furnished bench;
        const DesignDocument furnished = bench.copy.document;
        bench.Drag(In(kNameTable, c.from.X, c.from.Y), In(kNameTable, c.to.X, c.to.Y));
        EXPECT_EQ(bench.copy.document.*c.place, c.then) << c.to.X << "," << c.to.Y;
        const bool same = furnished.*c.place == c.then;
        EXPECT_EQ(bench.Steps(), same ? 0u : 2u) << "one step of the history";
    }
    // More lines than the screen has rows: the list stays at the top.
    copy.ItemTextList.assign(40, u"ITEM");
    Drag(In(kNameTable, 8, 5), In(kNameTable, 9, 20));
    EXPECT_EQ(copy.document.ItemPos, (Pos{9, 0}));
}

TEST_F(Gestures, CustomTextsAreJudgedWhereTheyAreDropped) {
    // Where the third letter of "TEXT" is dropped. From the middle of the cell, where rounding
    // towards 0 gives the same cell on both sides.
    const std::pair<Pos, bool> drops[] = {{{-1, 0}, true},  {{-2, 0}, false}, {{33, 29}, true},
                                          {{34, 0}, false}, {{5, 30}, false}, {{5, -2}, false}};
    for (const auto& [to, kept] : drops) {
        Furnished bench;
        bench.Press(In(kNameTable, 14, 0, {0, 0}));
        EXPECT_THAT(bench.store.CustomText, IsEmpty()) << "held by the mouse";
        bench.Move(In(kNameTable, to.X, to.Y, {0, 0}));
        EXPECT_THAT(*bench.copy.PlacedText, At(to.X - 2, to.Y));
        bench.Release(kNowhere);
        EXPECT_FALSE(bench.copy.PlacedText);
        EXPECT_EQ(bench.store.CustomText.size(), kept ? 1u : 0u) << to.X << "," << to.Y;
    }
    // The last of several takes the press, and with Ctrl a copy of it with a number of its own.
    store.CustomText.push_back({.Index = 1, .X = 13, .Y = 0, .Text = u"OVER"});
    copy.nextTextIndex = 7;
    Drag(In(kNameTable, 14), In(kNameTable, 14, 4), kCtrl);
    EXPECT_THAT(store.CustomText, ElementsAre(At(12, 0), At(13, 0), At(13, 4)));
    EXPECT_EQ(store.CustomText.back().Index * 10 + copy.nextTextIndex, 78u);
}

TEST_F(Gestures, CursorAndArrowsTakeEachOtherAlong) {
    store.ArrowTile.Palette = 2;
    store.SpriteTileList[0].Selected = store.BkgTileList[0].Selected = 1;
    // Gripped 3 pixels from its left edge and 2 below its top, which is at its Y byte.
    Play({{'P', Screen(24 * 16 + 3, 4), "sp 9 sprite 15,1 side 1"}});
    EXPECT_EQ(store.SpriteTileList[0].Selected + store.BkgTileList[0].Selected, 0u);
    Move(Screen(203, 102));
    EXPECT_THAT(store.ArrowTile, At(100, 50));
    EXPECT_THAT(store.ArrowTileList, ElementsAre(At(92, 46), At(100, 46), At(92, 54), At(100, 54)));
    Move(Screen(-50, -50));
    EXPECT_THAT(store.ArrowTile, At(0, 1));
    EXPECT_THAT(store.ArrowTileList[0], At(0, 1));
    Move(Screen(1000, 1000));
    EXPECT_THAT(store.ArrowTile, At(255, 239));
    Release(kNowhere);

    // The large cursor: whichever part is gripped, the first part goes there. Only the small one
    // changes the side.
    copy.document.BigCursor = store.BigSprite = 1;
    store.ArrowTileList = {{0, 10, 10}, {0, 18, 10}, {0, 10, 26}, {0, 18, 26, 0, 19, 1}};
    copy.SpritePaletteActive = false;
    Play({{'P', Screen(36, 52 + 31), "sp 5 sprite 3,1"}});
    Move(Screen(200, 131));
    EXPECT_THAT(store.ArrowTileList,
                ElementsAre(At(100, 50), At(108, 50), At(100, 66), At(108, 66)));
    EXPECT_THAT(store.ArrowTile, At(108, 54));
    Move(Screen(511, 511));
    EXPECT_THAT(store.ArrowTile, At(255, 239)) << "kept on the screen";
    Release(kNowhere);

    // Beside the cursor its selection ends; beside the screen it doesn't.
    store.ArrowTile.Selected = 1;
    Click(In(kSpritePalette, 8));
    EXPECT_EQ(store.ArrowTile.Selected, 1u);
    for (const bool large : {false, true}) {
        copy.document.BigCursor = large ? 1 : 0;
        store.ArrowTile.Selected = store.SpriteTileList[0].Selected = 1;
        Click(In(kNameTable, 1));  // the caption takes the press
        EXPECT_EQ(store.ArrowTile.Selected * 10 + store.SpriteTileList[0].Selected, 1u);
    }
}

// Two tiles in a cell, the second of which a press takes, and a selected one.
struct TwoTiles : GestureBench {
    TwoTiles() {
        copy.DragText = true;
        copy.nextBkgIndex = 50;
        store.Attributes.fill(0xE4);
        store.BkgTileList = {{3, 20, 4, 0, 6}, {4, 20, 4, 0, 7}, {5, 0, 0, 0, 8}};
        store.SpriteTileList = {{.X = 200, .Y = 200, .Selected = 1}};
    }
};

TEST_F(Gestures, BackgroundItemsMoveOrAreCopiedOrLost) {
    const Point from = In(kNameTable, 20, 4);
    const Point to = In(kNameTable, 25, 9);
    const std::tuple<Keys, Point, std::vector<int>> cases[] = {{{}, to, {6, 8, 7}},
                                                               {{}, kNowhere, {6, 8}},
                                                               {kCtrl, to, {6, 7, 8, 7}},
                                                               {kCtrl, kNowhere, {6, 8}}};
    for (const auto& [keys, at, tiles] : cases) {
        TwoTiles bench;
        bench.Drag(from, at, keys);
        EXPECT_EQ(Tiles(bench.store.BkgTileList), tiles);
        EXPECT_EQ(bench.copy.BkgTilePos, (Pos{7, 0}));
        EXPECT_EQ(bench.store.SpriteTileList[0].Selected, 0u);
        if (at == kNowhere) continue;
        EXPECT_EQ(bench.store.BkgTileList.back(), (TileItem{50, 25, 9, 0, 7}));
        bench.session.Undo();
        EXPECT_EQ(bench.store.BkgTileList.size(), 3u);
    }
    // The ghost shows the colours of the place under it and snaps to its cells.
    TwoTiles bench;
    bench.copy.BkgPalettePos.X = 9;
    bench.copy.SpPalettePos.X = 14;
    bench.Press(from);
    EXPECT_TRUE(bench.Dragged().shown);
    const std::tuple<Control, int, int, int> under[] = {{kNameTable, 3, 2, 3},
                                                        {kSourceStrip, 9, 0, 0},
                                                        {kBkgTileList, 9, 9, 2},
                                                        {kSpriteTileList, 2, 1, 3}};
    for (const auto& [control, column, row, palette] : under) {
        bench.Move(In(control, column, row));
        EXPECT_EQ(bench.Dragged().at, In(control, column, row, {-1, -1}));
        EXPECT_EQ(bench.Dragged().width * 100 + bench.Dragged().height, 1818);
        EXPECT_EQ(bench.Dragged().tiles, (std::vector<GhostTile>{{kBkg, 7, palette, {1, 1}}}));
    }
    bench.Move(kNowhere);
    EXPECT_EQ(bench.Dragged().at, (Point{kNowhere.x - 3 - 1, kNowhere.y - 5 - 1}));
    EXPECT_EQ(bench.Dragged().tiles[0].palette, 3);
}

TEST_F(Gestures, TilesDroppedOnTheScreenOrTheCharactersAreUsedThere) {
    store.BkgTileList.clear();
    copy.nextBkgIndex = 4;
    Drag(In(kBkgTileList, 5, 3), In(kNameTable, 31, 29));
    Drag(In(kBkgTileList, 5, 3), In(kSourceStrip, 63));
    EXPECT_EQ(store.CharMapData[95], 0x35);
    // The ghost leaves the list as the bare cell that was taken.
    Press(In(kBkgTileList, 5, 3));
    EXPECT_TRUE(Dragged().width == 16 && Dragged().at == In(kBkgTileList, 5, 3, {0, 0}));
    Release(kNowhere);
    EXPECT_THAT(store.BkgTileList, ElementsAre(Item(31, 29, 0x35)))
        << "a tile has no number to be removed by";
    EXPECT_EQ(store.BkgTileList[0].Index, 4u);
}

TEST_F(Gestures, TilesDroppedOnTheirListMoveThereWithAllThatNamesThem) {
    for (const bool copies : {false, true}) {
        Furnished bench;
        bench.NumberTiles();
        bench.store.BkgTileList = {{.X = 1, .Y = 1, .Tile = 0x35}, {.X = 2, .Y = 1, .Tile = 9}};
        bench.store.CharMapData['A'] = 0x35;
        bench.Drag(In(kBkgTileList, 5, 3), In(kBkgTileList, 2, 0), {copies, false});
        EXPECT_THAT(BytesOf(bench.store, kBkg, {2, 0x35}), ElementsAre(0x36, copies ? 0x36 : 0));
        EXPECT_THAT(bench.store.BkgTileList, ElementsAre(Item(1, 1, 2), Item(2, 1, 9)));
        EXPECT_EQ(bench.store.CharMapData['A'], 2);
        EXPECT_EQ(bench.copy.BkgTilePos, (Pos{2, 0}));
    }
    // Onto itself, which is what a click does: nothing but the current tile changes.
    NumberTiles();
    const auto before = store.ChrData;
    Play({{'C', In(kBkgTileList, 5, 3), "tile 5,3"},
          {'C', In(kSpriteTileList, 5, 3), "sprite 5,3 side 1"}});
    EXPECT_EQ(store.ChrData, before);
    // Across the tables pixels are only copied.
    Drag(In(kBkgTileList, 1, 0), In(kSpriteTileList, 2, 0));
    Drag(In(kSpriteTileList, 5, 3), In(kBkgTileList, 3, 0));
    EXPECT_THAT(BytesOf(store, kSp, {2, 0x35}), ElementsAre(2, 0x35 ^ 0xFF));
    EXPECT_THAT(BytesOf(store, kBkg, {1, 3}), ElementsAre(2, 0x35 ^ 0xFF));
    // An item taken off the screen brings its pixels along and leaves the table's tile alone.
    store.BkgTileList = {{.X = 1, .Y = 1, .Tile = 0x20}, {.X = 2, .Y = 2, .Tile = 0x20}};
    Drag(In(kNameTable, 1, 1), In(kBkgTileList, 4, 0));
    EXPECT_THAT(BytesOf(store, kBkg, {4, 0x20}), Each(0x21));
    EXPECT_THAT(store.BkgTileList, ElementsAre(Item(2, 2, 0x20)));
}

TEST_F(Gestures, TallSpritesMoveInPairs) {
    NumberTiles();
    store.BigSprite = 1;
    store.SpriteTileList = {{.Tile = 0x35}, {.Tile = 0x34}, {.Tile = 0x37}};
    store.ArrowTileList = {{.Tile = 0x35}};
    store.ArrowTile.Tile = 0x35;
    Press(In(kSpriteTileList, 4, 3));
    EXPECT_EQ(Dragged().tiles,
              (std::vector<GhostTile>{{kSp, 0x34, 0, {1, 1}}, {kSp, 0x35, 0, {1, 17}}}));
    Release(In(kSpriteTileList, 7, 0));
    EXPECT_THAT(BytesOf(store, kSp, {6, 7, 0x34, 0x35}),
                ElementsAre(0x34 ^ 0xFF, 0x35 ^ 0xFF, 0, 0));
    EXPECT_THAT(Tiles(store.SpriteTileList), ElementsAre(7, 0x34, 0x37))
        << "even numbers name the other table";
    EXPECT_EQ(store.ArrowTileList[0].Tile * 10 + store.ArrowTile.Tile, 77);
    EXPECT_EQ(copy.SpTilePos, (Pos{6, 0}));

    Drag(In(kSpriteTileList, 1, 4), In(kBkgTileList, 9, 9));
    EXPECT_THAT(BytesOf(store, kBkg, {0x99}), Each(0x40 ^ 0xFF)) << "the upper one of the pair";
    Press(In(kSpriteTileList, 4, 3, {6, 7}));
    Move(In(kNameTable, 2, 2, {6, 7}));
    EXPECT_EQ(Dragged().at, In(kNameTable, 2, 2, {-1, -2}));
    Release(In(kNameTable, 2, 2, {6, 7}));
    EXPECT_THAT(store.SpriteTileList.back(), Item(16, 15, 0x35));
}

TEST_F(Gestures, SpritesAreDroppedToTheConsolesPixel) {
    const struct {
        Point to;  // of the sprite's corner, pixels of the screen's picture
        Keys keys;
        std::optional<Pos> then;
    } cases[] = {{{101, 61}, {}, Pos{50, 29}},    {{0, 0}, {}, Pos{0, 0}},
                 {{0, 2}, {}, Pos{0, 0}},         {{-2, 20}, {}, {}},
                 {{504, 472}, {}, Pos{252, 235}}, {{100, -2}, {}, {}},
                 {{39, 23}, kShift, Pos{16, 7}},  {{40, 24}, kShift, Pos{24, 15}},
                 {{-6, -6}, kShift, Pos{0, 0}},   {{505, 473}, kShift, Pos{248, 231}}};
    for (const auto& c : cases) {
        GestureBench bench;
        bench.copy.DragText = true;
        bench.copy.nextSpriteIndex = 9;
        TileItem sprite{.X = 100, .Y = 50, .Tile = 2, .Palette = 3, .Flags = 6};
        bench.store.SpriteTileList = {{.X = 100, .Y = 50, .Tile = 1}, sprite};
        // Gripped at an odd place within the sprite, which shows a line below its Y byte.
        bench.Play({{'P', Screen(200 + 7, 102 + 7), "sp 12 sprite 2 side 1"}});
        EXPECT_EQ(bench.store.SpriteTileList.size(), 1u);
        const Point at = Screen(c.to.x + 6, c.to.y + 6);  // whole pixels of the console
        bench.Move(at, c.keys);
        const Point shown = bench.Dragged().at;
        bench.Release(at, c.keys);
        ASSERT_EQ(bench.store.SpriteTileList.size(), c.then ? 2u : 1u) << c.to.x << "," << c.to.y;
        EXPECT_EQ(bench.mouse.ShownFlags(), 6);
        bench.Press(In(kSpriteTileList, 0));
        EXPECT_EQ(bench.mouse.ShownFlags(), 0);
        if (!c.then) continue;
        sprite.Index = 9;
        sprite.X = c.then->X;
        sprite.Y = c.then->Y;
        EXPECT_EQ(bench.store.SpriteTileList.back(), sprite);
        if (c.to.y == 0 || c.to.y == -6) continue;  // moved down by a line
        EXPECT_EQ(shown, Screen(sprite.X * 2 - 1, sprite.Y * 2 + 2 - 1))
            << "the ghost stood where the sprite is";
    }
}

TEST_F(Gestures, SpritesLeaveTheScreenOrFindTheListFull) {
    const TileItem sprite{.Index = 3, .X = 100, .Y = 50, .Selected = 1, .Tile = 2};
    for (const Keys keys : {Keys{}, kCtrl}) {
        store.SpriteTileList = {sprite};
        store.BkgTileList[0].Selected = 1;
        Press(Screen(204, 104), keys);
        EXPECT_EQ(store.SpriteTileList.size(), keys.ctrl ? 1u : 0u);
        EXPECT_EQ(store.BkgTileList[0].Selected, 0u);
        EXPECT_TRUE(Dragged().framed);
        Move(kNowhere);
        EXPECT_EQ(Dragged().at, (Point{kNowhere.x - 5, kNowhere.y - 3}));
        Release(kNowhere, keys);
        EXPECT_THAT(store.SpriteTileList, IsEmpty()) << "the original goes as well";
    }
    store.SpriteTileList = {sprite};
    store.SpriteTileList.resize(255, {.Index = 9, .X = 0, .Y = 200});
    Drag(Screen(204, 104), Screen(300, 104), kCtrl);
    Drag(Screen(204, 104), Screen(300, 104));
    Drag(In(kSpriteTileList, 0), Screen(300, 104));
    EXPECT_EQ(store.SpriteTileList.size(), 255u) << "no room for a copy";
}

TEST_F(Gestures, DamagedPlacesDoNoHarm) {
    constexpr int32_t kFar = std::numeric_limits<int32_t>::max();
    for (const int32_t place : {kFar, -kFar - 1, kFar / 2, -kFar / 2, -600, -1, 300, 600}) {
        const Pos pos{place, place};
        copy.document.CaptionPos = copy.document.PageNumberPos = copy.document.ItemPos = pos;
        for (Pos* current : {&copy.AttrBytePos, &copy.AttrQuadrantPos, &copy.BkgPalettePos,
                             &copy.SpPalettePos, &copy.BkgTilePos, &copy.SpTilePos,
                             &copy.MapTargetPos, &copy.MapSourcePos, &copy.NameCellPos}) {
            *current = pos;
        }
        store.CustomText = {{0, place, place, u"T"}, {0, place, 3, u"T"}};
        store.SpriteTileList = {{.X = place, .Y = place, .Selected = 1, .Palette = 255}};
        store.BkgTileList = {{.X = place, .Y = place, .Selected = 1, .Palette = 255}};
        copy.MarkCursor = true;
        store.ArrowTile = store.SpriteTileList[0];
        store.ArrowTileList = {4, store.ArrowTile};
        for (const bool big : {true, false}) {
            copy.document.BigCursor = store.BigSprite = big;
            NameTablePicture picture;
            picture.Compose(copy, TileImage(), std::nullopt);
            EXPECT_EQ(picture.Picture().At({300, 300}), 0u);
        }
        const DesignStore before = store;
        Click(In(kSystemPalette, 3));
        time += std::chrono::seconds(1);
        Click(In(kBkgPalette, 3));
        EXPECT_TRUE(store.BkgPalette == before.BkgPalette && store.Attributes == before.Attributes);
        copy.QuickReplaceToBkg = copy.QuickReplaceFromBkg = copy.QuickAction = true;
        copy.NameCellPos = copy.MapSourcePos = copy.MapTargetPos = pos;
        Click(In(kBkgTileList, 3));
        EXPECT_EQ(copy.MapSourcePos, pos);
        Click(kNowhere);
        Click(In(kBkgTileList, 3));
        EXPECT_EQ(store.BkgTileList.size(), 1u) << "no place to put it";
        Drag(In(kNameTable, 1, 1), In(kNameTable, 2, 2));
        copy.QuickAction = false;
        mouse.ShiftKeyDown();
        Drag(In(kNameTable, 1, 1), {place, place});
        mouse.ShiftKeyUp();
        DoubleClick(In(kNameTable, 1, 1));
        Drag(In(kBkgTileList, 0), kNowhere);
        EXPECT_EQ(store.BkgTileList.size(), 1u) << "a tile's missing number names nothing";
        EXPECT_EQ(store.ChrData, before.ChrData);
    }
}

}  // namespace
}  // namespace bw
