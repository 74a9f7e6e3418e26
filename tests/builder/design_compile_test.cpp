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
    bool Write(size_t games = 12, const std::optional<std::u16string>& caption = std::nullopt,
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
}

TEST_F(DesignCompile, CaptionEndsAtTheScreensEdgeButIsKeptWhole) {
    const std::u16string caption(40, u'A');
    EXPECT_EQ(CaptionLine(caption), " .STR \"" + std::string(20, 'A') + "\"");
    EXPECT_EQ(design_.CaptionText, caption);
    EXPECT_EQ(CaptionLine(std::u16string(20, u'B')), " .STR \"" + std::string(20, 'B') + "\"");
    design_.CaptionPpuAddr = 0x205F;
    EXPECT_EQ(CaptionLine(u"CD"), " .STR \"C\"");
    design_.CaptionPpuAddr = 0x2040;
    EXPECT_EQ(CaptionLine(caption), " .STR \"" + std::string(32, 'A') + "\"");
}

TEST_F(DesignCompile, CaptionIsOneBytePerCharacterAndCannotBreakTheAssembly) {
    EXPECT_EQ(CaptionLine(u"\u00C9t\u00E9 \u9B42"), " .STR \"\xC9t\xE9 ?\"");
    EXPECT_EQ(CaptionLine(u"A\"B"), " .DB $03,$41,$22,$42");
}

TEST_F(DesignCompile, EmptyCaptionLeavesItsFileAsItIs) {
    EXPECT_TRUE(Write(12, u""));
    EXPECT_FALSE(Contents("game_caption_data.asm"));
    CaptionLine(u"FROM BEFORE");
    EXPECT_TRUE(Write(12, u""));
    EXPECT_EQ(Contents("game_caption_data.asm"), " .STR \"FROM BEFORE\"");
    EXPECT_EQ(design_.CaptionText, u"");
}

TEST_F(DesignCompile, AttributeByteOfASprite) {
    const auto attribute = [](uint8_t flags, uint8_t palette) {
        return SpriteAttribute({.Palette = palette, .Flags = flags});
    };
    EXPECT_EQ(attribute(TileItem::kFlipVertically, 0), 0x80);
    EXPECT_EQ(attribute(TileItem::kFlipHorizontally, 0), 0x40);
    EXPECT_EQ(attribute(TileItem::kBehindBackground, 0), 0x20);
    EXPECT_EQ(attribute(3, 3), 0xC3);
    EXPECT_EQ(attribute(0xF8, 0x0C), 0x0C) << "the other flags mean nothing, the palette is kept";
}

TEST_F(DesignCompile, CursorTakesEverySpriteAndCuts) {
    design_.ArrowTileList = {{.X = 16, .Y = 40, .Tile = 2, .Palette = 1, .Flags = 2},
                             {.X = 300, .Y = 0, .Tile = 3},
                             {.X = -1, .Y = 240, .Tile = 18},
                             {.X = 1, .Y = 1, .Tile = 19},
                             {.X = 2, .Y = 2, .Tile = 20}};
    ASSERT_TRUE(Write());
    EXPECT_EQ(Contents("game_big_arrow_data.bin"),
              "\x28\x02\x41\x10"
              "\x00\x03\x00\x2C"
              "\xF0\x12\x00\xFF"
              "\x01\x13\x00\x01"
              "\x02\x14\x00\x02"s);
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
    struct Case {
        int32_t x;
        std::u16string text;
        std::string cells;
        size_t column = 0;
    };
    const Case cases[] = {
        {-2, u"ABCD", "CD"},
        {-4, u"ABCD", ""},
        {-5, u"ABCD", ""},
        {std::numeric_limits<int32_t>::min(), u"ABCD", ""},
        {29, u"ABCD", "ABC", 29},
        {31, u"ABCD", "A", 31},
        {32, u"ABCD", ""},
        {std::numeric_limits<int32_t>::max(), u"ABCD", ""},
        {-1, u"x" + std::u16string(40, u'E'), std::string(32, 'E')},
        {0, u"\u00C9\u9B42", "\xC9?"},
        {5, u"", ""},
    };
    for (const Case& c : cases) {
        design_.CustomText = {{.X = c.x, .Y = 7, .Text = c.text}};
        EXPECT_EQ(NameTable(), With(7, c.column, c.cells)) << c.x;
    }
    for (const int32_t y : {-1, 30, std::numeric_limits<int32_t>::max()}) {
        design_.CustomText = {{.X = 0, .Y = y, .Text = u"A"}};
        EXPECT_EQ(NameTable(), With(0, 0, "")) << y;
    }
}

TEST_F(DesignCompile, SpacesOfATextShowWhatIsBelow) {
    MapCharacters();
    design_.CharMapData['A'] = 0x80;
    design_.BkgTileList = {{.X = 1, .Y = 7, .Tile = 1}, {.X = 2, .Y = 7, .Tile = 2}};
    design_.CustomText = {{.X = 0, .Y = 7, .Text = u"    "}, {.X = 0, .Y = 7, .Text = u"A A"}};
    EXPECT_EQ(NameTable(), With(7, 0, "\x80\x01\x80"));
}

TEST_F(DesignCompile, WithoutTheCustomMenuEachCharacterIsItsTile) {
    design_.CharMapData.fill(7);
    ASSERT_TRUE(Write(1, std::nullopt, true));
    EXPECT_EQ(Contents("char_mapping.bin"), std::string(256, 7));
    ASSERT_TRUE(Write(1, std::nullopt, false));
    std::string identity(256, '\0');
    std::iota(identity.begin(), identity.end(), '\0');
    EXPECT_EQ(Contents("char_mapping.bin"), identity);
    EXPECT_EQ(design_.CharMapData[0], 7);
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
