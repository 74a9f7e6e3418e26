// Designs as files: each chunk's bytes, what a reader takes from files of other shapes, and what it
// refuses.
#include "designer/files/design_file.h"

#include <numeric>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "design_items.h"
#include "designer/model/design_chunks.h"
#include "designer/record_bytes.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

Bytes Place(int32_t x, int32_t y) {
    Bytes bytes;
    Append32(bytes, static_cast<uint32_t>(x));
    Append32(bytes, static_cast<uint32_t>(y));
    return bytes;
}

void Count(std::span<uint8_t> table, uint8_t first) {
    std::iota(table.begin(), table.end(), first);
}

// A document in which everything differs from the defaults.
DesignDocument Full() {
    DesignDocument document;
    DesignStore& store = document.store;
    store.BkgTileList = {{.Index = 0, .X = 3, .Y = -2, .Selected = 1, .Tile = 0x41}};
    store.SpriteTileList = {{.Index = 0, .X = 200, .Y = 100, .Tile = 7, .Palette = 2, .Flags = 5},
                            {.Index = 1, .X = 1, .Y = 2, .Tile = 8, .Reserved = 9}};
    Count(store.CharMapData, 3);
    Count(store.Attributes, 4);
    Count(store.BkgPalette, 5);
    Count(store.SpritePalette, 6);
    document.CaptionPos = {.X = -1, .Y = 2};
    store.CaptionText = u"A\u9B42";
    document.PageNumberPos = {.X = 13, .Y = 27};
    document.ItemPos = {.X = 0x01020304, .Y = 5};
    store.ArrowTile = {.Index = 0, .X = 60, .Y = 40, .Tile = 31, .Flags = 2};
    store.ArrowTileList = {{.Index = 77, .X = 8, .Y = 9, .Tile = 2, .Palette = 3}};
    Count(store.ChrData, 7);
    store.CustomText = {{.Index = 0, .X = -4, .Y = 29, .Text = u"Hi"}};
    document.BigCursor = 1;
    store.BigSprite = 2;
    return document;
}

// The same as a file, byte by byte.
Bytes FullBytes() {
    const Bytes tile{0, 0, 0, 0, 3, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 0x41, 0, 0, 0};
    const Bytes sprite{0, 0, 0, 0, 200, 0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0, 7, 2, 5, 0};
    const Bytes second{1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 8, 0, 0, 9};
    const Bytes arrow{0, 0, 0, 0, 60, 0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 31, 0, 2, 0};
    const Bytes large{77, 0, 0, 0, 8, 0, 0, 0, 9, 0, 0, 0, 0, 0, 0, 0, 2, 3, 0, 0};
    const Bytes text{0xFC, 0xFF, 0xFF, 0xFF, 29, 0, 0, 0, 4, 0, 0, 0,
                     'H',  0,    'i',  0,    0,  0, 0, 0, 0, 0, 0, 0};
    return Chunk(12, tile) + Chunk(13, sprite) + Chunk(13, second) + Chunk(27, Counting(256, 3)) +
           Chunk(1, Counting(64, 4)) + Chunk(2, Counting(16, 5)) + Chunk(3, Counting(16, 6)) +
           Chunk(9, {0xFF, 0xFF, 0xFF, 0xFF, 2, 0, 0, 0}) + Chunk(8, {'A', 0, 0x42, 0x9B}) +
           Chunk(10, {13, 0, 0, 0, 27, 0, 0, 0}) + Chunk(11, {4, 3, 2, 1, 5, 0, 0, 0}) +
           Chunk(14, arrow) + Chunk(15, large) + Chunk(4, Counting(8192, 7)) + Chunk(6, text) +
           Chunk(28, {1}) + Chunk(29, {2});
}

std::string Read(const Bytes& bytes, DesignDocument& document) {
    return Words(ReadDesign(bytes, document, kEnglish));
}

TEST(DesignFile, EveryFieldHasItsPlace) {
    EXPECT_EQ(WriteDesign(Full()), FullBytes());
    DesignDocument read;
    EXPECT_EQ(Read(FullBytes(), read), "");
    EXPECT_EQ(WriteDesign(read), FullBytes());
    // The two sides can't share a mistake in these.
    EXPECT_EQ(read.store.SpriteTileList, Full().store.SpriteTileList);
    EXPECT_EQ(read.store.CustomText, Full().store.CustomText);
    EXPECT_EQ(read.ItemPos, Full().ItemPos);
}

// Lists are emptied, the rest stays; a short payload fills its own length. Of a longer one places
// and the small cursor take their part, a map and switches stay; all else is damage.
TEST(DesignFile, ChunksChangeTheirFieldOnly) {
    const Bytes work(100, 0xAB);
    Bytes arrow, other;
    AppendTile(arrow, 11, 22, 33);
    AppendTile(other, 4, 5, 6);
    const std::pair<Bytes, void (*)(DesignDocument&)> cases[] = {
        {Chunk(1, {0xEE}), [](DesignDocument& d) { d.store.Attributes[0] = 0xEE; }},
        {Chunk(2, {0xEE, 0xEE}),
         [](DesignDocument& d) { d.store.BkgPalette[0] = d.store.BkgPalette[1] = 0xEE; }},
        {Chunk(4, {0xEE}), [](DesignDocument& d) { d.store.ChrData[0] = 0xEE; }},
        {Chunk(27, {0xEE}), [](DesignDocument& d) { d.store.CharMapData[0] = 0xEE; }},
        {Chunk(9, {0xEE}), [](DesignDocument& d) { d.CaptionPos.X = -0x12; }},
        {Chunk(14, {9, 0, 0, 0, 0xEE}),
         [](DesignDocument& d) {
             d.store.ArrowTile.Index = 9;
             d.store.ArrowTile.X = 0xEE;
         }},
        {Chunk(12, {9, 0, 0, 0, 2}),
         [](DesignDocument& d) { d.store.BkgTileList = {{.Index = 0, .X = 2}}; }},
        {Chunk(29, {}), [](DesignDocument&) {}},
        {Chunk(8, {}), [](DesignDocument& d) { d.store.CaptionText.clear(); }},
        {Chunk(11, Place(6, 7) + Bytes(9, 0xEE)),
         [](DesignDocument& d) {
             d.ItemPos = Pos{6, 7};
         }},
        {Chunk(14, arrow + Bytes{1}),
         [](DesignDocument& d) { d.store.ArrowTile = {77, 11, 22, 1, 33, 2, 5, 0xEE}; }},
        {Chunk(27, Bytes(257, 1)), [](DesignDocument&) {}},
        {Chunk(28, {7, 7}) + Chunk(29, {7, 7}), [](DesignDocument&) {}},
        // In any order, with unknown types. Only the large cursor's old numbers stay.
        {Chunk(29, {1}) + Chunk(5, work) + Chunk(16, work) + Chunk(13, other) +
             Chunk(0xFFFFFFFF, {}) + Chunk(12, arrow) + Chunk(34, work) + Chunk(13, arrow) +
             Chunk(12, other) + Chunk(15, arrow),
         [](DesignDocument& d) {
             const TileItem first{0, 11, 22, 1, 33, 2, 5, 0xEE};
             const TileItem second{1, 4, 5, 1, 6, 2, 5, 0xEE};
             d.store.BkgTileList = {first, second};
             d.store.SpriteTileList = {second, first};
             Renumber(d.store.SpriteTileList);
             d.store.ArrowTileList = {{77, 11, 22, 1, 33, 2, 5, 0xEE}};
             d.store.BigSprite = 1;
         }}};
    for (const auto& [bytes, change] : cases) {
        DesignDocument document = Full();
        document.store.BkgTileSelected.fill(1);
        ASSERT_EQ(Read(bytes, document), "");
        DesignDocument expected = Full();
        expected.store.BkgTileList = expected.store.SpriteTileList =
            expected.store.ArrowTileList = {};
        expected.store.CustomText = {};
        change(expected);
        EXPECT_EQ(WriteDesign(document), WriteDesign(expected)) << int{bytes[0]};
        EXPECT_THAT(document.store.BkgTileSelected, Each(0));
    }
}

TEST(DesignFile, DamageIsRefusedAndNothingChanges) {
    const auto text = [](uint32_t length, size_t units) {
        Bytes bytes = Place(1, 2);
        Append32(bytes, length);
        return bytes + Bytes(units * 2 + 8, 'x');
    };
    const Bytes good = Chunk(28, {0});  // 17 bytes that would have changed the switch
    const std::pair<Bytes, const char*> cases[] = {
        {Bytes(15, 0), "chunk at offset 17: 15 bytes are left, but a header takes 16"},
        {{1}, "chunk at offset 17: 1 bytes are left"},
        {Chunk(1, Bytes(63), 64), "chunk at offset 17, type 1: its size is 64 bytes, but 63"},
        {Chunk(99, {}, 0xFFFFFFFF), "type 99: its size is 4294967295 bytes, but 0 are left"},
        {Chunk(12, Bytes(20), 0x80000014), "its size is 2147483668 bytes, but 20 are left"},
        {Chunk(1, Bytes(65)), "type 1: it has 65 bytes, at most 64 were expected"},
        {Chunk(2, Bytes(17)), "type 2: it has 17 bytes, at most 16"},
        {Chunk(3, Bytes(17)), "type 3: it has 17 bytes, at most 16"},
        {Chunk(4, Bytes(8193)), "type 4: it has 8193 bytes, at most 8192"},
        {Chunk(12, Bytes(21)), "type 12: it has 21 bytes, at most 20"},
        {Chunk(13, Bytes(21)), "type 13: it has 21 bytes, at most 20"},
        {Chunk(15, Bytes(21)), "type 15: it has 21 bytes, at most 20"},
        {Chunk(8, Bytes(522)), "type 8: its text has 522 bytes, at most 520"},
        {Chunk(8, Bytes(3)), "type 8: its text has 3 bytes, an even number"},
        {Chunk(6, Bytes(11)), "type 6: it has 11 bytes, a placed text takes at least 12"},
        {Chunk(6, text(522, 261)), "type 6: its text has 522 bytes, at most 520"},
        {Chunk(6, text(5, 3)), "type 6: its text has 5 bytes, an even number"},
        {Chunk(6, text(16, 3)), "type 6: its text has 16 bytes, but 14 are left in the chunk"},
        {Chunk(6, text(0xFFFFFFFE, 3)), "type 6: its text has 4294967294 bytes, at most 520"}};
    for (const auto& [damage, words] : cases) {
        DesignDocument document = Full();
        EXPECT_THAT(Read(good + damage, document), HasSubstr(words));
        EXPECT_EQ(WriteDesign(document), FullBytes()) << words;
    }
    // The longest that still fits.
    DesignDocument document;
    EXPECT_EQ(Read(Chunk(6, text(520, 260)) + Chunk(8, Bytes(520, 1)), document), "");
    EXPECT_EQ(document.store.CustomText.at(0).Text.size(), 260u);
}

TEST(DesignFile, FilesThatAreNoDesigns) {
    const TemporaryFolder folder;
    const auto load = [&](const std::filesystem::path& file) {
        DesignDocument document = Full();
        const DesignProblem problem = LoadDesign(file, document, kEnglish);
        EXPECT_EQ(WriteDesign(document), FullBytes());
        return Words(problem);
    };
    const auto file = folder / "x.fcm";
    EXPECT_THAT(load(file), HasSubstr("x.fcm: No such file"));
    const Bytes unknown = Chunk(99, Bytes(10));
    const std::pair<std::string, const char*> contents[] = {
        {"", "x.fcm: the file is empty"},
        {std::string(4096, '\0'), "x.fcm: no design file"},
        {{unknown.begin(), unknown.end()}, "no design file"},
        {std::string(100, 'x'), "x.fcm: no design file"}};
    for (const auto& [text, words] : contents) {
        test::WriteText(file, text);
        EXPECT_THAT(load(file), HasSubstr(words));
    }
    std::filesystem::resize_file(file, kLargestDesignFile + 1);
    EXPECT_THAT(load(file), HasSubstr("16777217 bytes, at most 16777216"));
    EXPECT_THAT(load(folder / "."), HasSubstr("This is a folder"));
}

TEST(DesignFile, SavingReplacesTheFileOrLeavesIt) {
    const TemporaryFolder folder;
    const auto file = folder / "design.fcm";
    test::WriteText(file, std::string(100000, 'x'));
    EXPECT_EQ(SaveDesign(file, Full(), kEnglish), std::nullopt);
    DesignDocument read;
    EXPECT_EQ(LoadDesign(file, read, kEnglish), std::nullopt);
    EXPECT_EQ(WriteDesign(read), FullBytes());
    EXPECT_THAT(Words(SaveDesign(folder / "no" / "x.fcm", Full(), kEnglish)),
                HasSubstr("x.fcm: No such file"));
    {
        const FileSizeLimit limit(4096);
        EXPECT_TRUE(SaveDesign(file, Full(), kEnglish));
    }
    EXPECT_EQ(std::filesystem::file_size(file), FullBytes().size());
    EXPECT_EQ(folder.CountFiles(), 1u);
    // A text that no reader takes would cost the whole file.
    DesignDocument wordy = Full();
    wordy.store.CaptionText = std::u16string(300, u'c');
    wordy.store.CustomText[0].Text = std::u16string(300, u't');
    EXPECT_EQ(Read(WriteDesign(wordy), read), "");
    EXPECT_EQ(read.store.CaptionText.size() + read.store.CustomText[0].Text.size(), 520u);
}

TEST(DesignFile, StoredDesignsAreWhatBuildsRead) {
    const auto settings = MakeMemoryStore();
    settings->RegWriteBinary(kDesignKey, "SpriteTileList", Bytes(20));
    DesignDocument document = Full();
    document.store.SpriteTileList.clear();
    document.store.ArrowTileList.assign(4, TileItem{.Index = 9, .X = 5, .Y = 6, .Tile = 2});
    document.store.CustomText = {{5, -2, 0, u"ab"},
                                 {5, -2, 0, u"abc"},
                                 {5, 32, 0, u"a"},
                                 {5, 31, 30, u"a"},
                                 {5, 31, 29, u"last"}};
    document.ItemPos = {.X = 31, .Y = 29};
    ASSERT_TRUE(StoreDesign(document, *settings));
    EXPECT_EQ(document.store.CaptionPpuAddr, 0x203Fu);  // column -1 is the end of the row above
    EXPECT_EQ(document.store.PageNumberPpuAddr, 0x236Du);
    EXPECT_EQ(document.store.ItemPpuAddr, 0x23BFu);

    DesignDocument loaded = document;
    loaded.store = DesignStore();
    loaded.store.CaptionText = document.store.CaptionText;
    ASSERT_TRUE(LoadDesignData(loaded.store, *settings, Bytes{1}));
    LoadDesignTables(loaded.store, *settings);
    EXPECT_EQ(WriteDesign(loaded), WriteDesign(document));
    EXPECT_THAT(loaded.store.CustomText,
                ElementsAre(TextItem{.Index = 0, .X = -2, .Y = 0, .Text = u"abc"},
                            TextItem{.Index = 1, .X = 31, .Y = 29, .Text = u"last"}));
    EXPECT_EQ(loaded.store.ItemPpuAddr, DesignStore().ItemPpuAddr)
        << "stored as bytes, read as a number";
}

TEST(DesignFile, ShortLargeCursorsAreRebuilt) {
    const std::tuple<Pos, uint8_t, Pos> cases[] = {{{9, 5}, 0, {54, 36}},
                                                   {{9, 5}, 1, {54, 36}},
                                                   {{0, 0}, 0, {0, 1}},
                                                   {{0x7FFFFFFF, 0x7FFFFFFF}, 0, {255, 239}}};
    for (const auto& [items, tall, first] : cases) {
        DesignDocument document;
        std::vector<TileItem>& arrows = document.store.ArrowTileList;
        document.ItemPos = items;
        document.store.BigSprite = tall;
        arrows.resize(3);
        RebuildShortLargeCursor(document);
        const int32_t x = first.X, y = first.Y, below = tall != 0 ? y + 16 : y + 8;
        EXPECT_THAT(arrows, ElementsAre(Item(x, y, 2), Item(x + 8, y, 3), Item(x, below, 18),
                                        Item(x + 8, below, 19)));
        arrows[2].X = 7;
        RebuildShortLargeCursor(document);
        EXPECT_EQ(arrows[2].X, 7) << "four are enough";
    }
}

}  // namespace
}  // namespace bw
