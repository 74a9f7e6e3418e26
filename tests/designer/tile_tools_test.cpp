#include "designer/tools/tile_tools.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "designer/model/tiles.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSp = PatternTable::kSprites;

std::string Text(ConstTile tile) {
    std::string text;
    for (size_t row = 0; row < 8; ++row) {
        for (int bit = 7; bit >= 0; --bit)
            text +=
                static_cast<char>('0' + (tile[row + 8] >> bit & 1) * 2 + (tile[row] >> bit & 1));
        text += '\n';
    }
    return text;
}

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

void Fill(WorkingCopy& copy, PatternTable table, int tile, uint8_t byte) {
    std::ranges::fill(TileAt(copy.Store(), table, tile), byte);
}

bool Holds(const WorkingCopy& copy, PatternTable table, int tile, uint8_t byte) {
    return std::ranges::all_of(TileAt(copy.Store(), table, tile),
                               [&](uint8_t found) { return found == byte; });
}

TEST(TileTools, RecodeEveryPixel) {
    const struct {
        const char* to;  // what becomes of 0, 1, 2 and 3
        TileTool tool;
        int repetitions;  // that give the first tile back; 0: none
    } cases[] = {
        {"3012", TileTool::kColoursLeft, 4},
        {"1230", TileTool::kColoursRight, 4},
        {"0312", TileTool::kColoursLeftButEmpty, 3},
        {"0231", TileTool::kColoursRightButEmpty, 3},
        {"0023", TileTool::kRemove1, 0},
        {"0103", TileTool::kRemove2, 0},
        {"0120", TileTool::kRemove3, 0},
        {"0213", TileTool::kSwap1And2, 2},
        {"0321", TileTool::kSwap1And3, 2},
        {"0132", TileTool::kSwap2And3, 2},
    };
    for (const auto& [to, tool, repetitions] : cases) {
        WorkingCopy copy;
        copy.Store().BkgTileSelected[3] = copy.Store().SpriteTileSelected[255] = 1;
        for (const int tile : {3, 4})
            DrawPattern(TileAt(copy.Store(), kBkg, tile));
        DrawPattern(TileAt(copy.Store(), kSp, 255));
        const std::string before = Text(TileAt(copy.Store(), kBkg, 3));
        std::string expected = before;
        for (char& pixel : expected)
            if (pixel != '\n') pixel = to[pixel - '0'];
        ApplyTileTool(copy, tool);
        EXPECT_EQ(Text(TileAt(copy.Store(), kBkg, 3)), expected) << to;
        EXPECT_EQ(Text(TileAt(copy.Store(), kSp, 255)), expected) << to;
        EXPECT_EQ(Text(TileAt(copy.Store(), kBkg, 4)), before) << "not selected";
        for (int i = 1; i < repetitions; ++i)
            ApplyTileTool(copy, tool);
        EXPECT_EQ(Text(TileAt(copy.Store(), kBkg, 3)) == before, repetitions != 0) << to;
    }
}

TEST(TileTools, MovesLoseWhatLeavesTheTile) {
    const struct {
        TileTool tool;
        int x, y;
    } cases[] = {{TileTool::kPixelsLeft, 1, 0},
                 {TileTool::kPixelsRight, -1, 0},
                 {TileTool::kPixelsUp, 0, 1},
                 {TileTool::kPixelsDown, 0, -1}};
    for (const auto& [tool, x, y] : cases) {
        WorkingCopy copy;
        copy.Store().BkgTileSelected[0] = 1;
        const Tile tile = TileAt(copy.Store(), kBkg, 0);
        DrawPattern(tile);
        const std::string before = Text(tile);
        ApplyTileTool(copy, tool);
        const std::string after = Text(tile);
        for (int row = 0; row < 8; ++row)
            for (int column = 0; column < 8; ++column) {
                const int fromRow = row + y, fromColumn = column + x;
                const bool inside =
                    fromRow >= 0 && fromRow < 8 && fromColumn >= 0 && fromColumn < 8;
                const auto at = [](int r, int c) {
                    return static_cast<size_t>(r) * 9 + static_cast<size_t>(c);
                };
                EXPECT_EQ(after[at(row, column)], inside ? before[at(fromRow, fromColumn)] : '0');
            }
        for (int i = 0; i < 7; ++i)
            ApplyTileTool(copy, tool);
        EXPECT_TRUE(IsBlank(tile));
    }
}

TEST(TileTools, CopiesRunInOrderOfNumberAndOneTileTooFar) {
    WorkingCopy copy;
    for (const int tile : {2, 5, 9}) {
        Fill(copy, kBkg, tile, static_cast<uint8_t>(tile));
        Fill(copy, kSp, tile, static_cast<uint8_t>(0x10 + tile));
        copy.Store().BkgTileSelected[static_cast<size_t>(tile)] = 1;
        copy.Store().SpriteTileSelected[static_cast<size_t>(tile)] = 1;
    }
    copy.SpTilePos = {14, 15};
    EXPECT_FALSE(CopySelectedTiles(copy, kBkg).Has(View::kBkgTiles));
    EXPECT_TRUE(Holds(copy, kSp, 254, 2) && Holds(copy, kSp, 255, 5));
    EXPECT_EQ(copy.Store().DefaultChrData[15], 9) << "the font's first tile lies behind";
    EXPECT_EQ(copy.Store().DefaultChrData[16], 0);

    copy.BkgTilePos = {15, 15};
    CopySelectedTiles(copy, kSp);
    EXPECT_TRUE(Holds(copy, kBkg, 255, 0x12));
    EXPECT_TRUE(Holds(copy, kSp, 0, 0x15)) << "the sprite table lies behind";
    EXPECT_TRUE(Holds(copy, kSp, 1, 0));
    copy.SpTilePos = {-3, 0};
    CopySelectedTiles(copy, kBkg);
    EXPECT_TRUE(Holds(copy, kSp, 0, 2) && Holds(copy, kSp, 2, 9)) << "counts as 0";
}

TEST(TileTools, PaintingTakesTheColourOfTheEntry) {
    WorkingCopy copy;
    copy.SpTilePos = {1, 2};
    copy.SpPalettePos = {7, 0};
    EXPECT_TRUE(PaintPixel(copy, kSp, {0, 0}).Has(View::kSpriteTileEditor));
    copy.SpPalettePos = {10, 0};
    PaintPixel(copy, kSp, {7, 3});
    EXPECT_EQ(copy.SpPixelPos, (Pos{7, 3}));
    EXPECT_EQ(Text(TileAt(copy.Store(), kSp, 33)).substr(0, 36),
              "30000000\n00000000\n00000000\n00000002\n");
    copy.SpPalettePos = {4, 0};
    PaintPixel(copy, kSp, {0, 0});
    EXPECT_EQ(TileAt(copy.Store(), kSp, 33)[0] | TileAt(copy.Store(), kSp, 33)[8], 0);
}

TEST(TileTools, WholeTables) {
    WorkingCopy copy;
    Fill(copy, kBkg, 1, 0x11);
    Fill(copy, kSp, 1, 0x22);
    copy.Store().DefaultChrData.fill(0x33);
    copy.Store().DefaultChrData[4096 + 16] = 0x44;
    SwapPatternTables(copy);
    EXPECT_TRUE(Holds(copy, kBkg, 1, 0x22) && Holds(copy, kSp, 1, 0x11));
    ResetPatternTable(copy, kSp);
    EXPECT_EQ(TileAt(copy.Store(), kSp, 1)[0], 0x44);
    EXPECT_TRUE(Holds(copy, kBkg, 1, 0x22));
    copy.Store().BkgTileSelected[1] = copy.Store().SpriteTileSelected[2] = 1;
    BlankSelectedTiles(copy);
    EXPECT_TRUE(Holds(copy, kBkg, 1, 0) && Holds(copy, kSp, 2, 0) && Holds(copy, kSp, 3, 0x33));
    EXPECT_EQ(copy.Store().BkgTileSelected[1] + copy.Store().SpriteTileSelected[2], 0);
}

}  // namespace
}  // namespace bw
