#include "designer/tools/list_tools.h"

#include <limits>

#include <gmock/gmock.h>

#include "designer/model/attribute_table.h"
#include "designer/model/tiles.h"
#include "designer/tools/attribute_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::Field;

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSp = PatternTable::kSprites;

testing::Matcher<TileItem> At(int32_t x, int32_t y) {
    return testing::AllOf(Field(&TileItem::X, x), Field(&TileItem::Y, y));
}

TEST(ListTools, MovesTheSelectedOrAll) {
    for (const uint32_t first : {0u, 1u, 0x80u}) {
        for (const uint32_t second : {0u, 1u}) {
            WorkingCopy copy;
            copy.Store().SpriteTileList = {{.X = 1, .Y = 2, .Selected = first},
                                           {.X = 5, .Y = 6, .Selected = second}};
            MoveItems(copy, kSp, -3, 8);
            const bool all = (first != 0) == (second != 0);
            EXPECT_THAT(copy.Store().SpriteTileList,
                        ElementsAre(all || first != 0 ? At(-2, 10) : At(1, 2),
                                    all || second != 0 ? At(2, 14) : At(5, 6)));
        }
    }
    WorkingCopy copy;
    constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
    copy.Store().BkgTileList = {{.X = kMax, .Y = 0}};
    MoveItems(copy, kBkg, 1, -1);
    EXPECT_THAT(copy.Store().BkgTileList, ElementsAre(At(-kMax - 1, -1)));
}

TEST(ListTools, SelectionNeedsTheListShown) {
    WorkingCopy copy;
    copy.Store().BkgTileList = {{.Selected = 1}, {.Selected = 0}};
    EXPECT_FALSE(InvertItemSelection(copy, kBkg).Empty());
    EXPECT_THAT(copy.Store().BkgTileList,
                ElementsAre(Field(&TileItem::Selected, 0u), Field(&TileItem::Selected, 1u)));
    copy.Show_Bg_Tile = false;
    EXPECT_TRUE(SelectAllItems(copy, kBkg).Empty() && InvertItemSelection(copy, kBkg).Empty());
    EXPECT_EQ(copy.Store().BkgTileList[0].Selected, 0u);
    copy.Show_Bg_Tile = true;
    SelectAllItems(copy, kBkg);
    copy.Store().SpriteTileList = {{.Tile = 1}, {.Selected = 1, .Tile = 2}};
    RemoveSelectedItems(copy);
    EXPECT_TRUE(copy.Store().BkgTileList.empty());
    EXPECT_THAT(copy.Store().SpriteTileList, ElementsAre(Field(&TileItem::Tile, 1)));
}

TEST(ListTools, FlagsGoToWhatIsSelectedAndShown) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    store.SpriteTileList = {{.Flags = 4}, {.Flags = 4}};
    store.ArrowTileList.assign(4, {.Selected = 0});
    EXPECT_FALSE(CanSetSpriteFlag(copy));
    store.ArrowTile.Selected = 1;
    EXPECT_TRUE(CanSetSpriteFlag(copy));
    copy.document.BigCursor = 1;
    EXPECT_FALSE(CanSetSpriteFlag(copy)) << "the small cursor isn't shown";
    store.ArrowTileList[2].Selected = 1;
    EXPECT_TRUE(CanSetSpriteFlag(copy));
    store.SpriteTileList[1].Selected = 1;
    SetSpriteFlag(copy, TileItem::kFlipVertically, true);
    EXPECT_EQ(store.SpriteTileList[0].Flags, 4);
    EXPECT_EQ(store.SpriteTileList[1].Flags, 5);
    EXPECT_EQ(store.ArrowTileList[2].Flags, 1);
    EXPECT_EQ(store.ArrowTileList[1].Flags + store.ArrowTile.Flags, 0);
    copy.document.BigCursor = 0;
    SetSpriteFlag(copy, TileItem::kBehindBackground, false);
    EXPECT_EQ(store.SpriteTileList[1].Flags, 1);
}

TEST(ListTools, TallSpritesChangeTablesAndSplit) {
    WorkingCopy copy;
    copy.Store().SpriteTileList = {{.Tile = 6}, {.Y = 20, .Selected = 1, .Tile = 9, .Palette = 2}};
    EXPECT_TRUE(SwapSpriteTables(copy).Empty() && SwapAllSpriteTables(copy).Empty());
    copy.Store().BigSprite = 1;
    const auto tiles = [&](auto... expected) {
        EXPECT_THAT(copy.Store().SpriteTileList, ElementsAre(Field(&TileItem::Tile, expected)...));
    };
    SwapSpriteTables(copy);
    tiles(6, 8);
    SwapAllSpriteTables(copy);
    tiles(7, 9);
    SplitTallSprites(copy);
    tiles(6, 7, 8, 9);
    EXPECT_EQ(copy.nextSpriteIndex, 4u);
    EXPECT_EQ(copy.Store().SpriteTileList[3],
              (TileItem{.Index = 3, .Y = 28, .Selected = 1, .Tile = 9, .Palette = 2}));
}

TEST(ListTools, SpritesOfTilesReuseTakeBlanksAndRunOut) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    store.Attributes.fill(0xE4);
    for (int tile = 0; tile < kTileCount; ++tile)
        std::ranges::fill(TileAt(store, kSp, tile), uint8_t{0xEE});
    std::ranges::fill(TileAt(store, kBkg, 1), uint8_t{0x11});
    std::ranges::fill(TileAt(store, kBkg, 2), uint8_t{0x22});
    std::ranges::fill(TileAt(store, kSp, 40), uint8_t{0x11});
    std::ranges::fill(TileAt(store, kSp, 7), uint8_t{0});
    copy.nextSpriteIndex = 12;
    store.BkgTileList = {{.Index = 5, .X = 0, .Y = 0, .Selected = 1, .Tile = 1},
                         {.Index = 6, .X = 9, .Y = 9, .Tile = 1},
                         {.Index = 7, .X = 2, .Y = 2, .Selected = 1, .Tile = 2},
                         {.Index = 8, .Selected = 1, .Tile = 3},  // no equal, no blank any more
                         {.Index = 9, .Tile = 1}};
    store.BigSprite = 1;
    EXPECT_TRUE(MakeSpritesOfTiles(copy).Empty());
    store.BigSprite = 0;
    MakeSpritesOfTiles(copy);
    EXPECT_THAT(store.SpriteTileList,
                ElementsAre(TileItem{.Index = 12, .X = 0, .Y = -1, .Tile = 40},
                            TileItem{.Index = 13, .X = 16, .Y = 15, .Tile = 7, .Palette = 3}));
    EXPECT_EQ(TileAt(store, kSp, 7)[0], 0x22);
    EXPECT_THAT(store.BkgTileList, ElementsAre(TileItem{.Index = 0, .X = 9, .Y = 9, .Tile = 1}));
    EXPECT_EQ(copy.nextBkgIndex, 1u);
}

TEST(ListTools, ArrowsStandAroundTheFirst) {
    DesignDocument document;
    document.store.ArrowTileList.assign(3, {.X = 50});
    SpreadLargeCursor(document.store);
    EXPECT_EQ(document.store.ArrowTileList[1].X, 50) << "only ever four";
    RebuildShortLargeCursor(document);
    EXPECT_THAT(document.store.ArrowTileList,
                ElementsAre(At(54, 36), At(62, 36), At(54, 44), At(62, 44)));
    WorkingCopy copy;
    copy.Store().ArrowTileList = document.store.ArrowTileList;
    copy.Store().ArrowTileList[0].X = 300;
    copy.Store().ArrowTileList[0].Y = 0;
    SetBigSprite(copy, true);
    EXPECT_THAT(copy.Store().ArrowTileList,
                ElementsAre(At(255, 1), At(263, 1), At(255, 17), At(263, 17)));
}

TEST(Attributes, ShiftByQuadrants) {
    WorkingCopy copy;
    for (size_t i = 0; i < kAttributeSize; ++i)
        copy.Store().Attributes[i] = static_cast<uint8_t>(i * 37 + 11);
    const auto first = copy.Store().Attributes;
    const auto quadrant = [](const auto& table, int x, int y) {
        return QuadrantPalette(table[static_cast<size_t>(y / 2) * 8 + static_cast<size_t>(x / 2)],
                               {x % 2, y % 2});
    };
    const struct {
        Direction direction;
        int x, y;
    } cases[] = {{Direction::kLeft, 1, 0},
                 {Direction::kRight, -1, 0},
                 {Direction::kUp, 0, 1},
                 {Direction::kDown, 0, -1}};
    for (const auto& [direction, dx, dy] : cases) {
        copy.Store().Attributes = first;
        ShiftAttributes(copy, direction);
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x) {
                const int fromX = x + dx, fromY = y + dy;
                const bool inside = fromX >= 0 && fromX < 16 && fromY >= 0 && fromY < 16;
                int expected = inside ? quadrant(first, fromX, fromY) : 0;
                if (direction == Direction::kUp && y == 14) expected = 0;
                if (direction == Direction::kUp && y == 15) expected = quadrant(first, x, 15);
                EXPECT_EQ(quadrant(copy.Store().Attributes, x, y), expected) << x << ' ' << y;
            }
    }
}

TEST(Attributes, CursorsFollowTheDocument) {
    WorkingCopy copy;
    copy.Store().Attributes[8 * 3 + 2] = 0xB4;  // bottom left 3
    copy.Store().BkgPalette[13] = 0x2C;
    copy.AttrBytePos = {2, 3};
    copy.AttrCellPos = {4, 7};
    SynchroniseCursors(copy);
    EXPECT_EQ(copy.CurrentAttribute, 0xB4);
    EXPECT_EQ(copy.AttrQuadrantPos, (Pos{0, 1}));
    EXPECT_EQ(copy.BkgPalettePos.X, 13);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{12, 2}));
    copy.AttrBytePos = {7, 8};
    SynchroniseCursors(copy);
    EXPECT_EQ(copy.CurrentAttribute, 0xB4) << "beyond the table";
}

TEST(Texts, NamesAndPages) {
    WorkingCopy copy;
    std::vector<std::u16string> names = {u"", u"Za[z\u00E9\u9B42"};
    while (names.size() < 25)
        names.push_back(u"GAME");
    SetItems(copy, names, 2, true);
    EXPECT_THAT(copy.ItemTextList, ElementsAre(u" ", u"", u"ZA[Z??", u""));
    EXPECT_EQ(copy.PageNumberText, u"01/13");
    TurnPage(copy, PageTurn::kNext);
    EXPECT_EQ(copy.PageFirstItem, 2);
    EXPECT_TRUE(TurnPage(copy, PageTurn::kPrevious) == View::kNameTable);
    EXPECT_TRUE(TurnPage(copy, PageTurn::kPrevious).Empty());
    TurnPage(copy, PageTurn::kLast);
    EXPECT_EQ(copy.PageNumberText, u"13/13");
    EXPECT_EQ(copy.ItemTextList.size(), 2u);
    EXPECT_TRUE(TurnPage(copy, PageTurn::kNext).Empty());
    names.resize(4);
    SetItems(copy, names, 2, false);
    TurnPage(copy, PageTurn::kLast);
    EXPECT_EQ(copy.PageFirstItem, 2) << "a full last page";
    SetItems(copy, {}, 10, true);
    EXPECT_EQ(copy.PageNumberText, u"1/1");
    EXPECT_TRUE(TurnPage(copy, PageTurn::kNext).Empty());
    TurnPage(copy, PageTurn::kLast);
    EXPECT_EQ(copy.PageFirstItem, 0);
}

TEST(Texts, ResetsCentreWhatTheyPlace) {
    WorkingCopy copy;
    SetItems(copy, std::vector<std::u16string>(25, u"A NAME OF 17 CHAR"), 10, false);
    AddText(copy, u"");
    AddText(copy, u"HELLO");
    AddText(copy, u"HELLO");
    EXPECT_EQ(copy.Store().CustomText.at(1).Index, 1u);
    copy.Store().BkgTileList.resize(3);
    copy.Store().Attributes.fill(0xFF);
    copy.Store().ArrowTile.Flags = 7;
    ResetTexts(copy);
    EXPECT_EQ(copy.Store().CaptionText, u"25 IN 1");
    EXPECT_EQ(copy.document.CaptionPos, (Pos{12, 2}));
    EXPECT_EQ(copy.document.PageNumberPos, (Pos{14, 27}));
    EXPECT_EQ(copy.document.ItemPos, (Pos{7, 5}));
    EXPECT_EQ(copy.Store().ArrowTile, (TileItem{.X = 46, .Y = 40, .Tile = 31}));
    EXPECT_THAT(copy.Store().ArrowTileList.at(0), At(38, 36));
    EXPECT_TRUE(copy.Store().BkgTileList.empty() && copy.Store().CustomText.empty());
    EXPECT_EQ(copy.Store().Attributes, kDefaultAttributes);

    SetItems(copy, {std::u16string(60, u'A')}, 10, false);
    copy.Store().BkgPalette.fill(1);
    copy.Store().SpriteTileList.resize(2);
    copy.Store().BkgTileSelected[4] = 1;
    copy.SpPalettePos = {9, 0};
    ResetDesign(copy);
    EXPECT_EQ(copy.document.ItemPos, (Pos{1, 5}));
    EXPECT_EQ(copy.Store().ArrowTile.X, 0) << "not off the screen";
    EXPECT_EQ(copy.Store().BkgPalette, kDefaultBkgPalette);
    EXPECT_TRUE(copy.Store().SpriteTileList.empty());
    EXPECT_EQ(copy.Store().BkgTileSelected[4], 0);
    EXPECT_EQ(copy.Store().CharMapData['A'], 'A');
    EXPECT_EQ(copy.SpPalettePos, (Pos{1, 0}));
}

}  // namespace
}  // namespace bw
