// Commands on what is placed on the screen: items, attributes, texts.
#include "designer/tools/list_tools.h"

#include <limits>

#include "design_items.h"
#include "designer/model/attribute_table.h"
#include "designer/tools/attribute_tools.h"
#include "designer/tools/text_tools.h"

namespace bw {
namespace {

using testing::Each;
using testing::ElementsAre;

class ListTools : public testing::Test {
  protected:
    WorkingCopy copy_;
    DesignStore& store_ = copy_.Store();
    std::vector<TileItem>& bkg_ = store_.BkgTileList;
    std::vector<TileItem>& sprites_ = store_.SpriteTileList;
};

TEST_F(ListTools, MovesTheSelectedOrAll) {
    // Which of two are selected, and where they are then.
    const std::tuple<uint32_t, uint32_t, Pos, Pos> cases[] = {{0, 0, {-2, 8}, {-2, 8}},
                                                              {1, 1, {-2, 8}, {-2, 8}},
                                                              {0x80, 0, {-2, 8}, {1, 0}},
                                                              {0, 1, {1, 0}, {-2, 8}}};
    for (const auto& [first, second, a, b] : cases) {
        sprites_ = {{.X = 1, .Selected = first}, {.X = 1, .Selected = second}};
        MoveItems(copy_, kSp, -3, 8);
        EXPECT_THAT(sprites_, ElementsAre(At(a.X, a.Y), At(b.X, b.Y))) << first << second;
    }
    constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
    bkg_ = {{.X = kMax, .Y = 0}};
    MoveItems(copy_, kBkg, 1, -1);
    EXPECT_THAT(bkg_, ElementsAre(At(-kMax - 1, -1)));
}

TEST_F(ListTools, SelectionNeedsTheListShown) {
    bkg_ = {{.Selected = 1, .Tile = 1}, {.Tile = 2}};
    EXPECT_FALSE(InvertItemSelection(copy_, kBkg).Empty());
    EXPECT_THAT(Tiles(bkg_), ElementsAre(1, -2));
    copy_.Show_Bg_Tile = false;
    EXPECT_TRUE(SelectAllItems(copy_, kBkg).Empty() && InvertItemSelection(copy_, kBkg).Empty());
    EXPECT_THAT(Tiles(bkg_), ElementsAre(1, -2));
    copy_.Show_Bg_Tile = true;
    SelectAllItems(copy_, kBkg);
    sprites_ = {{.Tile = 1}, {.Selected = 1, .Tile = 2}};
    RemoveSelectedItems(copy_);
    EXPECT_TRUE(bkg_.empty());
    EXPECT_THAT(Tiles(sprites_), ElementsAre(1));
}

TEST_F(ListTools, FlagsGoToWhatIsSelectedAndShown) {
    sprites_ = {{.Flags = 4}, {.Flags = 4}};
    store_.ArrowTileList.resize(4);
    EXPECT_FALSE(CanSetSpriteFlag(copy_));
    store_.ArrowTile.Selected = 1;
    EXPECT_TRUE(CanSetSpriteFlag(copy_));
    copy_.document.BigCursor = 1;
    EXPECT_FALSE(CanSetSpriteFlag(copy_)) << "the small cursor isn't shown";
    store_.ArrowTileList[2].Selected = sprites_[1].Selected = 1;
    EXPECT_TRUE(CanSetSpriteFlag(copy_));
    SetSpriteFlag(copy_, TileItem::kFlipVertically, true);
    EXPECT_TRUE(sprites_[0].Flags == 4 && sprites_[1].Flags == 5);
    EXPECT_TRUE(store_.ArrowTileList[2].Flags == 1 && store_.ArrowTileList[1].Flags == 0);
    EXPECT_EQ(store_.ArrowTile.Flags, 0);
    copy_.document.BigCursor = 0;
    SetSpriteFlag(copy_, TileItem::kBehindBackground, false);
    EXPECT_EQ(sprites_[1].Flags, 1);
}

TEST_F(ListTools, TallSpritesChangeTablesAndSplit) {
    sprites_ = {{.Tile = 6}, {.Y = 20, .Selected = 1, .Tile = 9, .Palette = 2}};
    EXPECT_TRUE(SwapSpriteTables(copy_).Empty() && SwapAllSpriteTables(copy_).Empty());
    store_.BigSprite = 1;
    SwapSpriteTables(copy_);
    EXPECT_THAT(Tiles(sprites_), ElementsAre(6, -8));
    SwapAllSpriteTables(copy_);
    EXPECT_THAT(Tiles(sprites_), ElementsAre(7, -9));
    SplitTallSprites(copy_);
    EXPECT_THAT(Tiles(sprites_), ElementsAre(6, 7, -8, -9));
    EXPECT_EQ(copy_.nextSpriteIndex, 4u);
    EXPECT_EQ(sprites_[3], (TileItem{3, 0, 28, 1, 9, 2}));
}

TEST_F(ListTools, SpritesOfTilesReuseTakeBlanksAndRunOut) {
    store_.Attributes.fill(0xE4);
    FillTable(store_, kSp, 0xEE);
    for (const auto& [table, tile, byte] :
         {std::tuple{kBkg, 1, 0x11}, {kBkg, 2, 0x22}, {kSp, 40, 0x11}, {kSp, 7, 0}})
        FillTile(store_, table, tile, byte);
    copy_.nextSpriteIndex = 12;
    // For the fourth there is no equal tile, and no blank one any more.
    bkg_ = {{5, 0, 0, 1, 1}, {6, 9, 9, 0, 1}, {7, 2, 2, 1, 2}, {8, 0, 0, 1, 3}, {9, 0, 0, 0, 1}};
    store_.BigSprite = 1;
    EXPECT_TRUE(MakeSpritesOfTiles(copy_).Empty());
    store_.BigSprite = 0;
    MakeSpritesOfTiles(copy_);
    EXPECT_THAT(sprites_, ElementsAre(TileItem{12, 0, -1, 0, 40}, TileItem{13, 16, 15, 0, 7, 3}));
    EXPECT_THAT(BytesOf(store_, kSp, {7}), ElementsAre(0x22));
    EXPECT_THAT(bkg_, ElementsAre(TileItem{0, 9, 9, 0, 1}));
    EXPECT_EQ(copy_.nextBkgIndex, 1u);
}

TEST_F(ListTools, AttributesShiftByQuadrants) {
    const auto quadrant = [](const auto& table, int x, int y) {
        return QuadrantPalette(table[static_cast<size_t>(y / 2 * 8 + x / 2)], {x % 2, y % 2});
    };
    for (const auto& [direction, dx, dy] : {std::tuple{Direction::kLeft, 1, 0},
                                            {Direction::kRight, -1, 0},
                                            {Direction::kUp, 0, 1},
                                            {Direction::kDown, 0, -1}}) {
        for (size_t i = 0; i < kAttributeSize; ++i)
            store_.Attributes[i] = static_cast<uint8_t>(i * 37 + 11);
        const auto first = store_.Attributes;
        ShiftAttributes(copy_, direction);
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x) {
                const bool up = direction == Direction::kUp;
                const int fromX = x + dx, fromY = up && y == 15 ? 15 : y + dy;
                const bool inside =
                    fromX >= 0 && fromX < 16 && fromY >= 0 && fromY < 16 && !(up && y == 14);
                EXPECT_EQ(quadrant(store_.Attributes, x, y),
                          inside ? quadrant(first, fromX, fromY) : 0)
                    << x << ' ' << y;
            }
    }
}

TEST_F(ListTools, CursorsFollowTheDocument) {
    store_.Attributes[8 * 3 + 2] = 0xB4;  // bottom left 3
    store_.BkgPalette[13] = 0x2C;
    copy_.AttrBytePos = {2, 3};
    copy_.AttrCellPos = {4, 7};
    SynchroniseCursors(copy_);
    EXPECT_TRUE(copy_.AttrQuadrantPos == (Pos{0, 1}) && copy_.SystemPalettePos == (Pos{12, 2}));
    EXPECT_EQ(copy_.BkgPalettePos.X, 13);
    copy_.AttrBytePos = {7, 8};
    SynchroniseCursors(copy_);
    EXPECT_EQ(copy_.CurrentAttribute, 0xB4) << "beyond the table";
}

TEST_F(ListTools, NamesAndPages) {
    std::vector<std::u16string> names(25, u"GAME");
    names[0] = u"";
    names[1] = u"Za[z\u00E9\u9B42";
    SetItems(copy_, names, 2, true);
    EXPECT_THAT(copy_.ItemTextList, ElementsAre(u" ", u"", u"ZA[Z??", u""));
    EXPECT_EQ(copy_.PageNumberText, u"01/13");
    // The first item behind each turn; a turn that leads nowhere makes nothing out of date.
    const auto turn = [&](PageTurn to) {
        return TurnPage(copy_, to).Empty() ? -1 : copy_.PageFirstItem;
    };
    EXPECT_EQ(turn(PageTurn::kNext), 2);
    EXPECT_EQ(turn(PageTurn::kPrevious), 0);
    EXPECT_EQ(turn(PageTurn::kPrevious), -1);
    EXPECT_EQ(turn(PageTurn::kLast), 24);
    EXPECT_EQ(copy_.PageNumberText, u"13/13");
    EXPECT_EQ(copy_.ItemTextList.size(), 2u);
    EXPECT_EQ(turn(PageTurn::kNext), -1);
    names.resize(4);
    SetItems(copy_, names, 2, false);
    EXPECT_EQ(turn(PageTurn::kLast), 2) << "a full last page";
    SetItems(copy_, {}, 10, true);
    EXPECT_EQ(copy_.PageNumberText, u"1/1");
    EXPECT_EQ(turn(PageTurn::kNext), -1);
    EXPECT_EQ(turn(PageTurn::kLast), 0);
}

TEST_F(ListTools, ResetsCentreWhatTheyPlace) {
    const DesignDocument& document = copy_.document;
    SetItems(copy_, std::vector<std::u16string>(25, u"A NAME OF 17 CHAR"), 10, false);
    for (const char16_t* text : {u"", u"HELLO", u"HELLO"})
        AddText(copy_, text);
    EXPECT_EQ(store_.CustomText.at(1).Index, 1u);
    bkg_.resize(3);
    store_.Attributes.fill(0xFF);
    store_.ArrowTile.Flags = 7;
    ResetTexts(copy_);
    EXPECT_EQ(store_.CaptionText, u"25 IN 1");
    EXPECT_THAT((std::array{document.CaptionPos, document.PageNumberPos, document.ItemPos}),
                ElementsAre(Pos{12, 2}, Pos{14, 27}, Pos{7, 5}));
    EXPECT_EQ(store_.ArrowTile, (TileItem{.X = 46, .Y = 40, .Tile = 31}));
    EXPECT_THAT(store_.ArrowTileList.at(0), At(38, 36));
    EXPECT_TRUE(bkg_.empty() && store_.CustomText.empty());
    EXPECT_EQ(store_.Attributes, kDefaultAttributes);

    SetItems(copy_, {std::u16string(60, u'A')}, 10, false);
    store_.BkgPalette.fill(1);
    sprites_.resize(2);
    store_.BkgTileSelected[4] = 1;
    copy_.SpPalettePos = {9, 0};
    copy_.AttrBytePos = {0, 1};  // of palette 1 by default
    ResetDesign(copy_);
    EXPECT_EQ(document.ItemPos, (Pos{1, 5}));
    EXPECT_EQ(store_.ArrowTile.X, 0) << "not off the screen";
    EXPECT_EQ(store_.BkgPalette, kDefaultBkgPalette);
    EXPECT_TRUE(sprites_.empty() && store_.BkgTileSelected[4] == 0);
    EXPECT_EQ(store_.CharMapData['A'], 'A');
    EXPECT_THAT((std::array{copy_.BkgPalettePos, copy_.SpPalettePos}), Each(Pos{1, 0}));
    const int colour = copy_.SystemPalettePos.X + 16 * copy_.SystemPalettePos.Y;
    EXPECT_EQ(colour, kDefaultBkgPalette[1]);
}

}  // namespace
}  // namespace bw
