#include "designer/tools/map_tools.h"

#include "design_items.h"

namespace bw {
namespace {

using testing::ElementsAre;

class MapTools : public testing::Test {
  protected:
    MapTools() {
        for (int tile = 0; tile < kTileCount; ++tile)
            std::fill_n(store_.DefaultChrData.begin() + std::ptrdiff_t{tile} * 16, 16,
                        static_cast<uint8_t>(tile));
    }
    void Fill(PatternTable table, int tile, int byte = 0xEE) {
        FillTile(store_, table, tile, byte);
    }
    void FillAll(PatternTable table) { FillTable(store_, table, 0xEE); }
    // What becomes of characters of the map.
    std::vector<int> Mapped(std::u16string_view characters) {
        std::vector<int> tiles;
        for (const char16_t character : characters)
            tiles.push_back(store_.CharMapData[character]);
        return tiles;
    }
    std::vector<int> Kept(PatternTable table) {
        std::vector<int> kept;
        for (int tile = 0; tile < kTileCount; ++tile)
            if (!IsBlank(TileAt(store_, table, tile))) kept.push_back(tile);
        return kept;
    }

    WorkingCopy copy_;
    DesignStore& store_ = copy_.Store();
};

TEST_F(MapTools, AllCharactersEndWithTheBlankTiles) {
    copy_.BkgTilePos = {10, 15};  // 250
    Fill(kBkg, 252);
    store_.CharMapData.fill(0x77);
    MapAllCharacters(copy_);
    EXPECT_THAT(BytesOf(store_, kBkg, {250, 252, 255}), ElementsAre(32, 0xEE, 36));
    EXPECT_THAT(Mapped(u"\"$%"), ElementsAre(253, 255, 0x77)) << "the rest stays as it was";
}

TEST_F(MapTools, UsedCharactersOnly) {
    copy_.AllItemTextList = {u"AB", u"A\u0141"};
    copy_.PageItemCount = 1;
    store_.CaptionText = u"C";
    store_.CustomText = {{.Text = u"Z"}};  // not among them
    copy_.ShowPageNumber = true;
    copy_.PageNumberText = u"1/2";
    store_.CharMapData.fill(0x77);
    FillAll(kBkg);
    for (const int tile : {3, 4, 5, 6, 7, 8, 9, 20})
        Fill(kBkg, tile, 0);
    MapUsedCharacters(copy_);
    // In order of code: / 0 1 2 A B C.
    EXPECT_THAT(Mapped(u"/02C3Z"), ElementsAre(3, 4, 6, 9, 0, 0));
    EXPECT_THAT(BytesOf(store_, kBkg, {9, 20}), ElementsAre('C', 0));

    // Numbers of tall sprites' tiles count as codes.
    store_.BigSprite = 1;
    store_.SpriteTileList = {{.Tile = 0x58}, {.Tile = 0x5B}};
    MapUsedCharacters(copy_);
    EXPECT_EQ(store_.CharMapData[0x58], 0) << "no blank tile was left before it";
    FillAll(kBkg);
    for (int tile = 100; tile < 120; ++tile)
        Fill(kBkg, tile, 0);
    MapUsedCharacters(copy_);
    EXPECT_THAT(Mapped(u"XYZ"), ElementsAre(107, 108, 0));
}

TEST_F(MapTools, UnusedBackgroundTilesGo) {
    for (size_t code = 0; code < 128; ++code)
        store_.CharMapData[code] = static_cast<uint8_t>(code);
    copy_.AllItemTextList.assign(100, u"A");
    copy_.PageItemCount = 10;
    store_.CaptionText = u"B";
    store_.CustomText = {{.Text = u"C"}};
    store_.BkgTileList = {{.Tile = 200}};
    store_.SpriteTileList = {{.Tile = 210}, {.Tile = 213}};
    FillAll(kBkg);
    ClearUnusedBkgTiles(copy_);
    EXPECT_EQ(Kept(kBkg), (std::vector<int>{'A', 'B', 'C', 200}));
    FillAll(kBkg);
    copy_.ShowPageNumber = true;
    copy_.PageNumberText = u"01/10";
    store_.BigSprite = 1;
    ClearUnusedBkgTiles(copy_);
    EXPECT_THAT(Kept(kBkg), ElementsAre('/', '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A',
                                        'B', 'C', 200, 210, 211));
    copy_.PageItemCount = 50;
    copy_.PageNumberText = u"1/2";
    ClearUnusedBkgTiles(copy_);
    EXPECT_EQ(Kept(kBkg), (std::vector<int>{'/', '0', '1', '2', 'A', 'B', 'C', 200, 210, 211}));
}

TEST_F(MapTools, UnusedSpriteTilesGo) {
    store_.SpriteTileList = {{.Tile = 7}, {.Tile = 20}};
    store_.ArrowTileList = {{.Tile = 31}, {.Tile = 40}};
    store_.ArrowTile.Tile = 50;
    FillAll(kSp);
    ClearUnusedSpriteTiles(copy_);
    EXPECT_EQ(Kept(kSp), (std::vector<int>{7, 20, 31, 40, 50}));
    store_.BigSprite = 1;
    FillAll(kSp);
    ClearUnusedSpriteTiles(copy_);
    EXPECT_EQ(Kept(kSp), (std::vector<int>{6, 7, 30, 31, 50, 51}))
        << "even tiles show the background table, but the cursor's count";
}

TEST_F(MapTools, OrganisedTilesKeepTheirOrderAndTheirUsers) {
    for (const int tile : {0, 5, 9})
        Fill(kBkg, tile, static_cast<uint8_t>(0x10 + tile));
    store_.BkgTileList = {{.Tile = 9}, {.Tile = 4}, {.Tile = 5}};
    store_.CharMapData['A'] = 9;
    OrganiseBkgTiles(copy_);
    EXPECT_THAT(Kept(kBkg), ElementsAre(0, 1, 2));
    EXPECT_THAT(BytesOf(store_, kBkg, {2}), ElementsAre(0x19));
    EXPECT_THAT(store_.BkgTileList,
                ElementsAre(TileItem{.Index = 0, .Tile = 2}, TileItem{.Index = 1, .Tile = 1}));
    EXPECT_EQ(copy_.nextBkgIndex, 2u);
    EXPECT_EQ(store_.CharMapData['A'], 2);

    for (const int tile : {3, 200})
        Fill(kSp, tile, static_cast<uint8_t>(tile));
    store_.SpriteTileList = {{.Tile = 100}, {.Tile = 200}};
    store_.ArrowTileList = {{.Tile = 100}, {.Tile = 3}};
    store_.ArrowTile.Tile = 200;
    OrganiseSpriteTiles(copy_);
    EXPECT_EQ(Kept(kSp), (std::vector<int>{1, 2}));
    EXPECT_THAT(store_.SpriteTileList, ElementsAre(TileItem{.Index = 0, .Tile = 2}));
    EXPECT_THAT(Tiles(store_.ArrowTileList), ElementsAre(100, 1));
    EXPECT_EQ(store_.ArrowTile.Tile, 2);
}

TEST_F(MapTools, OrganisedPairsPassOverTheNextOne) {
    store_.BigSprite = 1;
    Fill(kSp, 2);    // pair 1, right behind the gap at 0
    Fill(kSp, 9);    // pair 4
    Fill(kSp, 255);  // pair 127
    store_.SpriteTileList = {{.Tile = 9}, {.Tile = 8}, {.Tile = 101}};
    store_.ArrowTile.Tile = 255;
    OrganiseSpriteTiles(copy_);
    // 4 to 0, 127 to 2: 3 is right behind 2.
    EXPECT_THAT(Kept(kSp), ElementsAre(1, 2, 5));
    EXPECT_THAT(Tiles(store_.SpriteTileList), ElementsAre(1, 8, 101)) << "8 is the background's";
    EXPECT_EQ(store_.ArrowTile.Tile, 5);
}

TEST_F(MapTools, FontCopiesAreCutAtTheTablesEnd) {
    copy_.SpTilePos = {0, 13};  // 208: room for 48
    CopyFont(copy_, kSp);
    EXPECT_THAT(BytesOf(store_, kSp, {208, 255}), ElementsAre(32, 79));
    CopyFont(copy_, kBkg);
    EXPECT_THAT(BytesOf(store_, kBkg, {63, 64}), ElementsAre(95, 0));
}

}  // namespace
}  // namespace bw
