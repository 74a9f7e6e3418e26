// Designs as folders of text and pictures.
#include "designer/files/design_text.h"

#include <gmock/gmock.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "designer/files/design_folder.h"
#include "designer/files/png_file.h"
#include "designer/files/tile_picture.h"
#include "designer/model/design_records.h"
#include "designer/record_bytes.h"
#include "support/text.h"

namespace bw {
namespace {

using test::ReadText;
using test::WriteText;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::string_view kNoTile =
    " .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. ..";

std::optional<std::string> NoPicture(const std::string& name, std::span<uint8_t>) {
    return name + ": none here";
}

// The file that a text stands for. A problem is the result's only content.
struct Parsed {
    Bytes bytes;
    std::string problem;
};

Parsed Parse(std::string_view text) {
    Parsed parsed;
    if (const auto problem = ParseDesign(text, NoPicture, parsed.bytes)) {
        parsed.problem = std::to_string(problem->place.line) + ": " + ToUtf8(problem->text);
    }
    return parsed;
}

std::string Described(const Bytes& bytes) {
    return DescribeDesign(ReadChunks(bytes).chunks).text;
}

Bytes Tile(uint32_t index, int32_t x, int32_t y, uint8_t tile) {
    return StoredTile({.Index = index, .X = x, .Y = y, .Tile = tile});
}

// Each statement in the words that are written, and the chunk that it stands for.
TEST(DesignText, EveryStatementIsOneChunk) {
    const std::string counting = " 24 25 26 27 28 29 2A 2B 2C 2D 2E 2F 30 31 32 33";
    const std::pair<std::string, Bytes> cases[] = {
        {"tile -2 31 0A", Chunk(12, Tile(0, -2, 31, 0x0A))},
        {"tile 1 2 03 palette=4 flags=9 index=5 selected=6 reserved=7",
         Chunk(12, {5, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 6, 0, 0, 0, 3, 4, 9, 7})},
        {"sprite 255 239 FF palette=3 flip-v flip-h behind",
         Chunk(13, {0, 0, 0, 0, 255, 0, 0, 0, 239, 0, 0, 0, 0, 0, 0, 0, 0xFF, 3, 7, 0})},
        {"sprite 0 0 00 index=4294967295", Chunk(13, Tile(0xFFFFFFFF, 0, 0, 0))},
        {"cursor 8 9 1F", Chunk(14, Tile(0, 8, 9, 31))},
        {"large-cursor-tile 8 9 02", Chunk(15, Tile(0, 8, 9, 2))},
        {"background-palette" + counting, Chunk(2, Counting(16, 0x24))},
        {"sprite-palette" + counting, Chunk(3, Counting(16, 0x24))},
        {"caption-position -1 2", Chunk(9, {0xFF, 0xFF, 0xFF, 0xFF, 2, 0, 0, 0})},
        {"page-number-position 13 27", Chunk(10, {13, 0, 0, 0, 27, 0, 0, 0})},
        {"items-position 9 5", Chunk(11, {9, 0, 0, 0, 5, 0, 0, 0})},
        {R"(caption "A \"B\" \\ #\u000A\uD800")",
         Chunk(8, Units(u"A \"B\" \\ #\n") + Bytes{0, 0xD8})},
        {"caption \"\"", Chunk(8, {})},
        {"caption \"\xF0\x9F\x98\x80\xE9\xAD\x82\"", Chunk(8, Units(u"\U0001F600\u9B42"))},
        {"text -3 4 \"HI\"",
         Chunk(6, Bytes{0xFD, 0xFF, 0xFF, 0xFF, 4, 0, 0, 0, 4, 0, 0, 0} + Units(u"HI") + Bytes(8))},
        {"large-cursor 1", Chunk(28, {1})},
        {"tall-sprites 255", Chunk(29, {255})},
        {"chunk 29 01 02", Chunk(29, {1, 2})},
        {"chunk 29 reserved=4 01", Chunk(29, {1}, {}, 4)},
        {"chunk 4 version=2 FE", Chunk(4, {0xFE}, {}, 0, 2)},
        {"chunk 12 07", Chunk(12, {7})},
        {"chunk 11 00 00 00 00 00 00 00 00 00", Chunk(11, Bytes(9))},
        {"chunk 6 00 00 00 00 00 00 00 00 02 00 00 00 41 00",
         Chunk(6, {0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0, 0, 'A', 0})}};
    for (const auto& [text, chunk] : cases) {
        EXPECT_EQ(Parse(text).problem, "");
        EXPECT_EQ(Parse(text).bytes, chunk) << text;
        EXPECT_THAT(Described(chunk), HasSubstr("\n" + text + "\n"));
    }
    const Bytes unknown = Chunk(99, {}) + Chunk(4294967295, {1}, {}, 2, 3) + Chunk(28, {0});
    EXPECT_THAT(Described(unknown),
                HasSubstr("\nchunk 99\nchunk 4294967295 reserved=2 version=3 01\n"));
    EXPECT_EQ(Parse(Described(unknown)).bytes, unknown);
}

TEST(DesignText, TablesAndScreensTakeRows) {
    std::string text = "attributes\n";
    for (int row = 0; row < 8; ++row)
        text += row == 1 ? "    AB AB AB AB AB AB AB AB\n" : "    00 00 00 00 00 00 00 00\n";
    const Bytes table = Chunk(1, Bytes(8) + Bytes(8, 0xAB) + Bytes(48));
    EXPECT_THAT(Described(table), HasSubstr(text));
    EXPECT_EQ(Parse(text).bytes, table);
    EXPECT_EQ(Parse(Described(Chunk(27, Counting(256)))).bytes, Chunk(27, Counting(256)));

    // A corner of the screen, then the next picture over it, then single items.
    Bytes items;
    for (uint8_t i = 0; i < 22; ++i)
        items = items + Chunk(12, i < 10   ? Tile(i, i, 29, i)
                                  : i < 19 ? Tile(i, 31, i, i)
                                           : Tile(i, 5, 0, i));
    const std::string screen = Described(items);
    EXPECT_EQ(Parse(screen).bytes, items);
    for (const std::string& part : {std::string("    00 01 02 03 04 05 06 07 08 09 .. "),
                                    "   " + std::string(kNoTile) + " 0A\n",
                                    std::string("\ntile 5 0 13\ntile 5 0 14\ntile 5 0 15\n")})
        EXPECT_THAT(screen, HasSubstr(part));
}

TEST(DesignText, PeopleWriteFreely) {
    EXPECT_THAT(Parse("sprite 1 2 0a behind palette=1#no comment").problem,
                HasSubstr("palette=1#no"));
    const Parsed good = Parse(
        "\xEF\xBB\xBF# my\r\n\r\n\tsprite 1 2 0a behind palette=1 # x\r\n"
        "sprite 1 2 0A  flags=4 palette=1");
    EXPECT_EQ(good.problem, "");
    EXPECT_EQ(ReadChunks(good.bytes).chunks.size(), 2u);
    EXPECT_THAT(Described(good.bytes),
                HasSubstr("sprite 1 2 0A palette=1 behind\nsprite 1 2 0A palette=1 behind\n"));
}

TEST(DesignText, ProblemsNameTheirLine) {
    const std::string row = " .." + std::string(kNoTile) + "\n";
    const std::pair<std::string, const char*> cases[] = {
        {"# only\n\n# this\n", "3: nothing in the text belongs to a design"},
        {"chunk 99 01", "1: nothing in the text belongs to a design"},
        {"tall-sprites 1\n\nTall-sprites 1", "3: \"Tall-sprites\" was found, a statement was"},
        {"\"caption\" 1", "1: a statement was expected instead of a quoted text"},
        {"tall-sprites", "1: the line ends, a number from 0 to 255 was expected"},
        {"tall-sprites 256", "1: \"256\" was found, a number from 0 to 255 was expected"},
        {"tall-sprites 1 2", "1: \"2\" is left over at the line's end"},
        {"tile 1 x 00", "1: \"x\" was found, a row (a whole number) was expected"},
        {"tile 2147483648 1 00", "1: \"2147483648\" was found, a column"},
        {"tile 1 1 100", "1: \"100\" was found, a byte of two hexadecimal digits was expected"},
        {"tile 1 1 00 flip", "1: \"flip\" was found, flip-v, flip-h, behind, or index="},
        {"tile 1 1 00 palette=256", "1: \"palette=256\" was found"},
        {"caption Hello", "1: a text in double quotes was expected"},
        {"caption \"Hello", "1: a quoted text doesn't end on its line"},
        {"caption \"Hello\\\"", "1: a quoted text doesn't end on its line"},
        {"caption \"Hello\"there", "1: a blank was expected behind the closing quote"},
        {"caption \"\\n\"", "1: the text isn't UTF-8, or a backslash"},
        {"caption \"\\u12G4\"", "1: the text isn't UTF-8, or a backslash"},
        {"caption \"\xFF\"", "1: the text isn't UTF-8, or a backslash"},
        {"caption \"" + std::string(261, 'a') + '"', "1: the text has 261 characters, at most 260"},
        {"text 1 1 \"" + std::string(261, 'a') + '"', "1: the text has 261 characters"},
        {"attributes\n 00 00", "2: row 1 of attributes has 2 words, 8 were expected"},
        {"attributes 00", "1: \"00\" is left over"},
        {"screen\n" + row + "\n# x\n .. ..\n", "5: row 2 of the screen has 2 words, 32 were"},
        {"screen\n" + row, "2: the text ends before row 2 of the screen"},
        {"screen\n \"" + row, "2: a quoted text doesn't end"},
        {"screen\n -1" + std::string(kNoTile), "2: \"-1\" was found, a byte of two"},
        {"tiles ../a.png b.png", "1: \"../a.png\" is no name of a file beside the text"},
        {"tiles a.png b.png", "1: a.png: none here"},
        {"chunk 28 size=1 00", "1: \"size=1\" was found, reserved= or version="},
        {"chunk 28 1", "1: \"1\" was found, a byte of two hexadecimal digits"},
        {"chunk 6 00", "1: it has 1 bytes, a placed text takes at least 12"}};
    for (const auto& [text, problem] : cases) {
        const Parsed parsed = Parse(text);
        EXPECT_THAT(parsed.problem, StartsWith(problem)) << text;
        EXPECT_TRUE(parsed.bytes.empty());
    }
}

constexpr size_t kPicturePixels = 16384;

// A picture whose pixel at column 9, row 8 (tile 17, its second pixel in the first row) is `value`.
std::vector<uint8_t> OnePixel(size_t value) {
    std::vector<uint8_t> indices(kPicturePixels);
    indices[1033] = static_cast<uint8_t>(value);
    return EncodePng(128, 128, kTileGreys, indices);
}

TEST(TilePicture, PixelsArePlanesOfTiles) {
    constexpr size_t kRow = 272;  // tile 17
    for (const size_t value : {0, 1, 2, 3}) {
        Bytes table(kPatternTableSize, 0xEE);
        ASSERT_EQ(ReadTilePicture(OnePixel(value), table), std::nullopt);
        EXPECT_EQ(table[kRow], (value & 1) != 0 ? 0x40 : 0);
        EXPECT_EQ(table[kRow + 8], (value & 2) != 0 ? 0x40 : 0);
        EXPECT_EQ(std::ranges::count(table, 0), 4096 - (value == 3 ? 2 : value == 0 ? 0 : 1));
        EXPECT_EQ(TilePicture(table), OnePixel(value));
    }
}

TEST(TilePicture, OtherPicturesAreRefused) {
    Bytes table(kPatternTableSize, 0xEE);
    const auto problem = [&](const std::vector<uint8_t>& png) {
        const auto text = ReadTilePicture(png, table);
        EXPECT_EQ(std::ranges::count(table, 0xEE), 4096);
        return text.value_or("");
    };
    const std::vector<uint8_t> black(kPicturePixels);
    const std::array<uint32_t, 1> almost{0x010000};
    const auto good = OnePixel(1);
    EXPECT_THAT(problem(EncodePng(128, 128, almost, black)),
                HasSubstr("pixel at column 0, row 0 is #010000; #000000, #555555"));
    EXPECT_THAT(problem(EncodePng(64, 256, kTileGreys, black)),
                HasSubstr("has 64 by 256 pixels, 128 by 128 were expected"));
    EXPECT_THAT(problem({}), StartsWith("no PNG picture"));
    EXPECT_THAT(problem({'G', 'I', 'F', '8'}), StartsWith("no PNG picture"));
    EXPECT_THAT(problem({good.begin(), good.begin() + 100}), HasSubstr("picture: "));
    for (size_t at = 60; at < good.size() - 20; at += 7) {
        auto damaged = good;
        damaged[at] ^= 0x55;
        EXPECT_NE(problem(damaged), "") << at;
    }
}

class DesignFolder : public testing::Test {
  protected:
    DesignFolder() {
        DesignDocument document;
        for (size_t i = 0; i < kChrDataSize; ++i) {
            document.store.ChrData[i] = static_cast<uint8_t>(i * 7 + i / 256);
        }
        document.store.CustomText = {{.Index = 0, .X = 1, .Y = 2, .Text = u"\u9B42 \"x\""}};
        bytes_ = WriteDesign(document) + Chunk(4, Bytes(kChrDataSize, 1));
        WriteText(file_, std::string(bytes_.begin(), bytes_.end()));
    }
    std::string Unpack() { return Words(UnpackDesign(file_, unpacked_, kEnglish)); }
    std::string Pack(Bytes& bytes) { return Words(PackDesign(unpacked_, bytes, kEnglish)); }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "design.fcm";
    std::filesystem::path unpacked_ = folder_ / "deep" / "unpacked";
    Bytes bytes_;
};

TEST_F(DesignFolder, UnpackedAndPackedIsTheSame) {
    // The second time over files of an older design.
    ASSERT_EQ(Unpack(), "");
    Bytes packed;
    EXPECT_EQ(Pack(packed), "");
    EXPECT_EQ(packed, bytes_);
    WriteText(unpacked_ / "design.txt", std::string(1 << 20, '#'));
    WriteText(unpacked_ / "notes.txt", "mine");
    ASSERT_EQ(Unpack(), "");
    EXPECT_EQ(Pack(packed), "");
    EXPECT_EQ(packed, bytes_);
    EXPECT_EQ(ReadText(unpacked_ / "notes.txt"), "mine");
}

TEST_F(DesignFolder, ProblemsNameTheFile) {
    Bytes packed{1, 2};
    EXPECT_THAT(Pack(packed), HasSubstr("design.txt: No such file"));
    ASSERT_EQ(Unpack(), "");
    std::filesystem::remove(unpacked_ / "sprites.png");
    EXPECT_THAT(Pack(packed), HasSubstr("sprites.png: No such file"));
    WriteText(unpacked_ / "sprites.png", "no picture");
    EXPECT_THAT(Pack(packed), HasSubstr("sprites.png: no PNG picture"));
    WriteText(unpacked_ / "design.txt", "tall-sprites 1\nscreem\n");
    EXPECT_THAT(Pack(packed), HasSubstr("design.txt:2: \"screem\" was found"));
    EXPECT_EQ(packed, (Bytes{1, 2}));
}

TEST_F(DesignFolder, RefusedFilesWriteNothing) {
    WriteText(file_, "damaged");
    EXPECT_THAT(Unpack(), HasSubstr("design.fcm: no design file"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "deep"));
    WriteText(file_, std::string(bytes_.begin(), bytes_.end()));
    WriteText(folder_ / "deep", "a file where the folder should be");
    EXPECT_THAT(Unpack(), HasSubstr("deep: This is a file"));
    std::filesystem::remove(folder_ / "deep");
    ASSERT_EQ(Unpack(), "");
    // The pictures still fit, the text doesn't.
    WriteText(unpacked_ / "sprites.png", "old");
    WriteText(unpacked_ / "design.txt", "old");
    {
        const FileSizeLimit limit(8192);
        EXPECT_THAT(Unpack(), testing::AnyOf(HasSubstr("design.txt: File too large"),
                                             HasSubstr("design.txt: The disk is full")));
    }
    EXPECT_EQ(ReadText(unpacked_ / "design.txt"), "old");
    EXPECT_EQ(ReadText(unpacked_ / "sprites.png"), "old");
    const auto files = std::filesystem::directory_iterator(unpacked_);
    EXPECT_EQ(std::distance(begin(files), end(files)), 3);
}

}  // namespace
}  // namespace bw
