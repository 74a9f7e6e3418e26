#include "designer/tools/tile_tools.h"

#include <string>

#include "design_items.h"

namespace bw {
namespace {

using testing::ElementsAre;

// Row by row 01230123, the rows turned by one pixel each, so that every shift shows.
void DrawPattern(Tile tile) {
    std::ranges::fill(tile, uint8_t{0});
    for (unsigned row = 0; row < 8; ++row)
        for (unsigned column = 0; column < 8; ++column) {
            const unsigned value = (row + column) % 4;
            tile[row] = static_cast<uint8_t>(tile[row] | (value & 1) << (7 - column));
            tile[row + 8] = static_cast<uint8_t>(tile[row + 8] | (value >> 1) << (7 - column));
        }
}

TEST(TileTools, RecodeEveryPixel) {
    using enum TileTool;
    // What becomes of 0, 1, 2 and 3.
    const std::pair<const char*, TileTool> cases[] = {{"3012", kColoursLeft},
                                                      {"1230", kColoursRight},
                                                      {"0312", kColoursLeftButEmpty},
                                                      {"0231", kColoursRightButEmpty},
                                                      {"0023", kRemove1},
                                                      {"0103", kRemove2},
                                                      {"0120", kRemove3},
                                                      {"0213", kSwap1And2},
                                                      {"0321", kSwap1And3},
                                                      {"0132", kSwap2And3}};
    for (const auto& [to, tool] : cases) {
        WorkingCopy copy;
        copy.Store().BkgTileSelected[3] = copy.Store().SpriteTileSelected[255] = 1;
        for (const int tile : {3, 4})
            DrawPattern(TileAt(copy.Store(), kBkg, tile));
        DrawPattern(TileAt(copy.Store(), kSp, 255));
        const std::string before = Text(TileAt(copy.Store(), kBkg, 3));
        std::string expected = before;
        for (char& pixel : expected)
            pixel = to[pixel - '0'];
        ApplyTileTool(copy, tool);
        EXPECT_EQ(Text(TileAt(copy.Store(), kBkg, 3)), expected) << to;
        EXPECT_EQ(Text(TileAt(copy.Store(), kSp, 255)), expected) << to;
        EXPECT_EQ(Text(TileAt(copy.Store(), kBkg, 4)), before) << "not selected";
    }
}

TEST(TileTools, MovesLoseWhatLeavesTheTile) {
    using enum TileTool;
    const std::tuple<TileTool, int, int> cases[] = {
        {kPixelsLeft, 1, 0}, {kPixelsRight, -1, 0}, {kPixelsUp, 0, 1}, {kPixelsDown, 0, -1}};
    for (const auto& [tool, x, y] : cases) {
        WorkingCopy copy;
        copy.Store().BkgTileSelected[0] = 1;
        const Tile tile = TileAt(copy.Store(), kBkg, 0);
        DrawPattern(tile);
        std::string expected;
        for (int row = y; row < 8 + y; ++row)
            for (int column = x; column < 8 + x; ++column) {
                const bool inside = row >= 0 && row < 8 && column >= 0 && column < 8;
                expected += inside ? static_cast<char>('0' + (row + column) % 4) : '0';
            }
        ApplyTileTool(copy, tool);
        EXPECT_EQ(Text(tile), expected);
    }
}

TEST(TileTools, CopiesRunInOrderOfNumberAndOneTileTooFar) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    for (const int tile : {2, 5, 9}) {
        FillTile(store, kBkg, tile, tile);
        FillTile(store, kSp, tile, 0x10 + tile);
        store.BkgTileSelected[static_cast<size_t>(tile)] = 1;
        store.SpriteTileSelected[static_cast<size_t>(tile)] = 1;
    }
    copy.SpTilePos = {14, 15};
    EXPECT_FALSE(CopySelectedTiles(copy, kBkg).Has(View::kBkgTiles));
    EXPECT_THAT(BytesOf(store, kSp, {254, 255}), ElementsAre(2, 5));
    EXPECT_EQ(store.DefaultChrData[15], 9) << "the font's first tile lies behind";
    EXPECT_EQ(store.DefaultChrData[16], 0);
    copy.BkgTilePos = {15, 15};
    CopySelectedTiles(copy, kSp);
    EXPECT_THAT(BytesOf(store, kBkg, {255}), ElementsAre(0x12));
    EXPECT_THAT(BytesOf(store, kSp, {0, 1}), ElementsAre(0x15, 0)) << "this table lies behind";
    copy.SpTilePos = {-3, 0};
    CopySelectedTiles(copy, kBkg);
    EXPECT_THAT(BytesOf(store, kSp, {0, 2}), ElementsAre(2, 9)) << "counts as 0";
}

TEST(TileTools, PaintingTakesTheColourOfTheEntry) {
    WorkingCopy copy;
    copy.SpTilePos = {1, 2};
    for (const auto& [entry, pixel, drawn] : {std::tuple{7, Pos{0, 0}, "30000000"},
                                              {10, {7, 0}, "30000002"},
                                              {4, {0, 0}, "00000002"}}) {
        copy.SpPalettePos = {entry, 0};
        EXPECT_TRUE(PaintPixel(copy, kSp, pixel).Has(View::kSpriteTileEditor));
        EXPECT_EQ(copy.SpPixelPos, pixel);
        EXPECT_EQ(Text(TileAt(copy.Store(), kSp, 33)), drawn + std::string(56, '0'));
    }
}

TEST(TileTools, WholeTables) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    FillTile(store, kBkg, 1, 0x11);
    FillTile(store, kSp, 1, 0x22);
    store.DefaultChrData.fill(0x33);
    store.DefaultChrData[4096 + 31] = 0x44;
    SwapPatternTables(copy);
    EXPECT_THAT(BytesOf(store, kSp, {1}), ElementsAre(0x11));
    ResetPatternTable(copy, kSp);
    EXPECT_THAT(BytesOf(store, kBkg, {1}), ElementsAre(0x22));
    EXPECT_THAT(BytesOf(store, kSp, {1}), ElementsAre(0x44));
    store.BkgTileSelected[1] = store.SpriteTileSelected[2] = 1;
    BlankSelectedTiles(copy);
    EXPECT_THAT(BytesOf(store, kBkg, {1}), ElementsAre(0));
    EXPECT_THAT(BytesOf(store, kSp, {2, 3}), ElementsAre(0, 0x33));
    EXPECT_EQ(store.BkgTileSelected[1] + store.SpriteTileSelected[2], 0);
}

}  // namespace
}  // namespace bw
