// The tile set: what the packer makes of pictures, which faults it names, and that the set of this
// tree has what the menu needs.
#include "tiles/tile_pack.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/game_image.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<uint8_t> Tile(const PatternTables& tables, size_t table, size_t tile) {
    const auto begin =
        tables.bytes.begin() + static_cast<std::ptrdiff_t>((table * PatternTables::kTiles + tile) *
                                                           PatternTables::kTileBytes);
    return {begin, begin + PatternTables::kTileBytes};
}

TEST(TilePack, PlanesRowsAndTablesAreTheConsoles) {
    PatternTables tables;
    EXPECT_THAT(PackTiles("; a picture\r\n"
                          "tables sprites\r\n"
                          "tiles $0F 1x2 ; two tiles, 16 apart\r\n"
                          "#.......\r\n"
                          ".o......\n"
                          "..+.....\n"
                          "........\n........\n........\n........\n"
                          ".......#\n"
                          "++++++++\n"
                          "........\n........\n........\n........\n........\n........\n........",
                          "a", tables),
                ElementsAre());
    EXPECT_THAT(Tile(tables, 1, 0x0F),
                ElementsAre(0x80, 0, 0x20, 0, 0, 0, 0, 0x01, 0, 0x40, 0x20, 0, 0, 0, 0, 0));
    EXPECT_THAT(Tile(tables, 1, 0x1F),
                ElementsAre(0xFF, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(Tile(tables, 0, 0x0F), testing::Each(0));
}

TEST(TilePack, NamesFileLineAndFault) {
    const std::string row = "........\n";
    const std::string tile = row + row + row + row + row + row + row + row;
    const std::pair<std::string, std::string> cases[] = {
        {"\ncolour 3\n", "f.txt:2: expected"},
        {"tables all\n", "f.txt:1: unknown tables \"all\""},
        {"tiles $G0 1x1\n", "f.txt:1: expected"},
        {"tiles 16 1\n", "f.txt:1: expected"},
        {"tiles 250 8x1\n", "leaves the table"},
        {"tiles 0 0x1\n", "leaves the table"},
        {"tiles 0 1x17\n", "leaves the table"},
        {"tiles 1 1x1\n" + tile + "tiles 1 1x1\n" + tile, "f.txt:10: tile 1 is drawn a second"},
        {"tiles 1 1x1\n" + row + ".......\n" + row + row + row + row + row + row,
         "f.txt:3: expected 8 pixels, found 7"},
        {"tiles 1 1x1\n" + row + "...x....\n" + row + row + row + row + row + row,
         "f.txt:3: unknown pixel 'x'"},
        {"tiles 1 1x1\n" + row + row, "f.txt:3: the picture lacks 6 lines"}};
    for (const auto& [text, fault] : cases) {
        PatternTables tables;
        EXPECT_THAT(PackTiles(text, "f.txt", tables), ElementsAre(HasSubstr(fault))) << text;
    }
}

// The menu shows a character by the tile of its code, a blank by tile 0 or 32, and its cursors by
// the tiles 2, 3, 18, 19, 26 and 31. Two characters that look alike would be a slip of the pen.
TEST(DefaultTileSet, HasWhatTheMenuShows) {
    const std::string bytes = test::ReadText(BANKWEAVER_CHR_DATA);
    ASSERT_EQ(bytes.size(), 8192u);
    const auto tile = [&](size_t number) { return bytes.substr(number * 16, 16); };
    const std::string blank(16, '\0');
    EXPECT_EQ(tile(0), blank);
    EXPECT_EQ(tile(' '), blank);
    std::map<std::string, size_t> seen;
    for (size_t code = '!'; code <= '_'; ++code) {
        EXPECT_NE(tile(code), blank) << "character " << code;
        const auto [other, fresh] = seen.emplace(tile(code), code);
        EXPECT_TRUE(fresh) << "characters " << other->second << " and " << code;
        // Letters must not touch their neighbours to the right and below.
        for (size_t row = 0; row < 16; ++row)
            EXPECT_EQ(tile(code)[row] & 1, 0) << code;
        EXPECT_EQ(tile(code)[7] | tile(code)[15], 0) << code;
    }
    for (const size_t cursor : {2, 3, 18, 19, 26, 27, 28, 29, 30, 31}) {
        EXPECT_NE(tile(cursor), blank) << "tile " << cursor;
    }
    EXPECT_EQ(bytes.substr(0, 4096), bytes.substr(4096)) << "both tables hold the same";
}

}  // namespace
}  // namespace bw
