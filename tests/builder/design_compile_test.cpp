#include "builder/tables/design_compile.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "support/files.h"

namespace bw {
namespace {

using namespace std::string_literals;

class DesignCompile : public testing::Test {
  protected:
    FileResult<> Write(size_t games = 12, const std::optional<std::u16string>& caption = {},
                       bool custom = true) {
        return WriteDesignFiles(design_, games, caption, folder_.Path(), custom);
    }
    // The bytes of a file, or nothing.
    std::optional<std::string> Contents(const char* name) const {
        const auto bytes = ReadFile(folder_ / name);
        return bytes ? std::optional<std::string>({bytes->begin(), bytes->end()}) : std::nullopt;
    }
    std::string CaptionLine(const std::u16string& caption) {
        EXPECT_TRUE(Write(1, caption));
        return Contents("game_caption_data.asm").value_or("");
    }
    // The whole name table, and how it looks with one row of cells in it.
    std::string NameTable() {
        EXPECT_TRUE(Write());
        return Contents("game_name_table.bin").value_or("");
    }
    static std::string With(size_t row, size_t column, const std::string& cells) {
        std::string table(960, '\0');
        std::ranges::copy(cells, table.begin() + static_cast<std::ptrdiff_t>(row * 32 + column));
        return table;
    }
    void MapCharacters() {
        std::iota(design_.CharMapData.begin(), design_.CharMapData.end(), uint8_t{0});
    }

    TemporaryFolder folder_;
    DesignStore design_;
};

TEST_F(DesignCompile, WritesTwelveFilesOfTheirSizes) {
    design_.ChrData.fill(0x5A);
    design_.Attributes.fill(0x11);
    design_.BkgPalette.fill(0x22);
    design_.SpritePalette.fill(0x33);
    ASSERT_TRUE(Write());
    EXPECT_EQ(folder_.CountFiles(), 12u);
    EXPECT_EQ(Contents("game_caption_addr.asm"), "TITLE_SHOW_POS = $204C");
    EXPECT_EQ(Contents("game_caption_data.asm"), " .STR \"12 IN 1\"");
    EXPECT_EQ(Contents("game_page_number_addr.asm"), "PAGE_INDER_SHOW_POS = $236D");
    EXPECT_EQ(Contents("game_item_addr.asm"), "ITEM_SHOW_POS = $20A9");
    EXPECT_EQ(Contents("game_big_arrow_data.bin"), "");
    EXPECT_EQ(Contents("game_attributes_data.bin"), std::string(64, 0x11));
    EXPECT_EQ(Contents("game_bkg_palette_data.bin"), std::string(16, 0x22));
    EXPECT_EQ(Contents("game_sprite_palette_data.bin"), std::string(16, 0x33));
    EXPECT_EQ(Contents("game_sprite_list.asm"), "");
    EXPECT_EQ(Contents("game_name_table.bin"), std::string(960, '\0'));
    EXPECT_EQ(Contents("custom_chr_data.bin"), std::string(8192, 0x5A));
    EXPECT_EQ(Contents("char_mapping.bin"), std::string(256, '\0'));
    ASSERT_TRUE(Write(12, {}, false));
    std::string identity(256, '\0');  // without a design each character is its tile
    std::iota(identity.begin(), identity.end(), '\0');
    EXPECT_EQ(Contents("char_mapping.bin"), identity);
    EXPECT_EQ(design_.CharMapData[1], 0);
}

TEST_F(DesignCompile, CaptionEndsAtTheScreensEdgeButIsKeptWhole) {
    const std::u16string caption(40, u'A');
    const std::tuple<uint32_t, std::u16string, std::string> rows[] = {
        {0x204C, u"\u00C9t\u00E9 \u9B42", " .STR \"\xC9t\xE9 ?\""},  // a byte for each character
        {0x204C, u"A\"B", " .DB $03,$41,$22,$42"},
        {0x204C, std::u16string(20, u'B'), " .STR \"" + std::string(20, 'B') + "\""},
        {0x205F, u"CD", " .STR \"C\""},
        {0x2040, caption, " .STR \"" + std::string(32, 'A') + "\""},
        {0x204C, caption, " .STR \"" + std::string(20, 'A') + "\""}};
    for (const auto& [address, text, line] : rows) {
        design_.CaptionPpuAddr = address;
        EXPECT_EQ(CaptionLine(text), line);
        EXPECT_EQ(design_.CaptionText, text);
    }
    EXPECT_TRUE(Write(12, u""));
    EXPECT_EQ(Contents("game_caption_data.asm"), " .STR \"" + std::string(20, 'A') + "\"");
    EXPECT_EQ(design_.CaptionText, u"");
}

TEST_F(DesignCompile, CursorTakesEverySpriteAndCuts) {
    design_.ArrowTileList = {
        {.X = 16, .Y = 40, .Tile = 2, .Palette = 1, .Flags = TileItem::kFlipHorizontally},
        {.X = 300, .Y = 0, .Tile = 3, .Flags = TileItem::kFlipVertically},
        {.X = -1, .Y = 240, .Tile = 18, .Flags = TileItem::kBehindBackground},
        {.X = 1, .Y = 1, .Tile = 19, .Palette = 3, .Flags = 3},
        {.X = 2, .Y = 2, .Tile = 20, .Palette = 12, .Flags = 0xF8}};  // no such flags
    ASSERT_TRUE(Write());
    EXPECT_EQ(Contents("game_big_arrow_data.bin"),
              "\x28\x02\x41\x10\x00\x03\x80\x2C\xF0\x12\x20\xFF\x01\x13\xC3\x01\x02\x14\x0C\x02"s);
}

TEST_F(DesignCompile, SpritesOutsideTheScreenAreLeftOut) {
    design_.SpriteTileList = {{.X = 0, .Y = 1, .Tile = 0xAB, .Palette = 3, .Flags = 7},
                              {.X = 10, .Y = 0, .Tile = 1},
                              {.X = 10, .Y = 240, .Tile = 1},
                              {.X = -1, .Y = 10, .Tile = 1},
                              {.X = 256, .Y = 10, .Tile = 1},
                              {.X = 255, .Y = 239, .Tile = 5}};
    ASSERT_TRUE(Write());
    EXPECT_EQ(Contents("game_sprite_list.asm"), " .DB $01,$AB,$E3,$00\r\n .DB $EF,$05,$00,$FF\r\n");
}

TEST_F(DesignCompile, LaterTilesCoverEarlierOnes) {
    design_.BkgTileList = {{.X = 3, .Y = 4, .Tile = 1},   {.X = 3, .Y = 4, .Tile = 2},
                           {.X = 31, .Y = 29, .Tile = 3}, {.X = 32, .Y = 4, .Tile = 9},
                           {.X = -1, .Y = 4, .Tile = 9},  {.X = 0, .Y = 30, .Tile = 9},
                           {.X = 0, .Y = -1, .Tile = 9}};
    // Column -1 is not the end of the row before, column 32 not the start of the next one.
    std::string expected = With(4, 3, "\x02");
    expected.back() = 3;
    EXPECT_EQ(NameTable(), expected);
}

TEST_F(DesignCompile, TextsAreCutAtBothEdges) {
    MapCharacters();
    const auto shown = [&](int32_t x, const std::u16string& text, int32_t y = 7) {
        design_.CustomText = {{.X = x, .Y = y, .Text = text}};
        return NameTable();
    };
    using Limits = std::numeric_limits<int32_t>;
    EXPECT_EQ(shown(-2, u"ABCD"), With(7, 0, "CD"));
    EXPECT_EQ(shown(29, u"ABCD"), With(7, 29, "ABC"));
    EXPECT_EQ(shown(31, u"ABCD"), With(7, 31, "A"));
    EXPECT_EQ(shown(-1, u"x" + std::u16string(40, u'E')), With(7, 0, std::string(32, 'E')));
    EXPECT_EQ(shown(0, u"\u00C9\u9B42"), With(7, 0, "\xC9?"));
    EXPECT_EQ(shown(5, u""), With(0, 0, ""));
    for (const int32_t x : {-4, -5, 32, Limits::min(), Limits::max()})
        EXPECT_EQ(shown(x, u"ABCD"), With(0, 0, "")) << x;
    for (const int32_t y : {-1, 30, Limits::max()})
        EXPECT_EQ(shown(0, u"A", y), With(0, 0, "")) << y;
}

TEST_F(DesignCompile, SpacesOfATextShowWhatIsBelow) {
    MapCharacters();
    design_.CharMapData['A'] = 0x80;
    design_.BkgTileList = {{.X = 1, .Y = 7, .Tile = 1}, {.X = 2, .Y = 7, .Tile = 2}};
    design_.CustomText = {{.X = 0, .Y = 7, .Text = u"    "}, {.X = 0, .Y = 7, .Text = u"A A"}};
    EXPECT_EQ(NameTable(), With(7, 0, "\x80\x01\x80"));
}

TEST_F(DesignCompile, FirstFileThatCannotBeWrittenEndsIt) {
    std::filesystem::create_directory(folder_ / "game_item_addr.asm");
    EXPECT_FALSE(Write(3));
    EXPECT_EQ(Contents("game_page_number_addr.asm"), "PAGE_INDER_SHOW_POS = $236D");
    EXPECT_EQ(folder_.CountFiles(), 4u) << "three before it, and the folder in its way";
    EXPECT_EQ(design_.CaptionText, u"3 IN 1");
}

}  // namespace
}  // namespace bw
