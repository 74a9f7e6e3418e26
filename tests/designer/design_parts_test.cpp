// The parts of a design as files, with all that their readers and writers leave out on purpose.
#include "designer/files/design_parts.h"

#include <gmock/gmock.h>

#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "designer/model/chunk_file.h"
#include "designer/record_bytes.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

// What went wrong, or nothing.
std::string Load(DesignPart part, const Bytes& bytes, WorkingCopy& copy, Shift shift = Shift::kUp) {
    const auto result = LoadPart(part, bytes, shift, copy, kEnglish);
    if (const auto* problem = std::get_if<Diagnostic>(&result)) return ToUtf8(problem->text);
    EXPECT_FALSE(std::get<Views>(result).Empty());
    return "";
}

Bytes Store(DesignPart part, const WorkingCopy& copy, Shift shift = Shift::kUp) {
    const auto result = StorePart(part, shift, copy, kEnglish);
    const auto* bytes = std::get_if<Bytes>(&result);
    return bytes == nullptr ? Bytes{} : *bytes;
}

std::vector<uint32_t> Types(const Bytes& bytes) {
    std::vector<uint32_t> types;
    for (const ChunkView& chunk : ReadChunks(bytes).chunks)
        types.push_back(chunk.type);
    return types;
}

// A working copy with an item in every list.
WorkingCopy Sample() {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    store.BkgTileList = {{.Index = 0, .X = 1, .Y = 2, .Tile = 3}};
    store.SpriteTileList = {{.Index = 0, .X = 4, .Y = 5, .Tile = 6}};
    store.ArrowTileList.assign(4, TileItem{.Tile = 7});
    store.CustomText = {{.Index = 0, .X = 8, .Y = 9, .Text = u"old"}};
    store.CaptionText = u"CAPTION";
    copy.nextBkgIndex = copy.nextSpriteIndex = copy.nextTextIndex = 1;
    return copy;
}

TEST(DesignParts, ChunkFilesTakeTheirPart) {
    WorkingCopy source = Sample();
    source.document.CaptionPos = {1, 1};
    source.document.ItemPos = {2, 2};
    source.Store().BkgPalette.fill(0x11);
    source.Store().Attributes.fill(0xFF);
    EXPECT_THAT(Types(Store(DesignPart::kScreen, source)), ElementsAre(12, 1, 9, 8, 10, 11, 14, 6));
    const Bytes texts = Store(DesignPart::kTexts, source);
    EXPECT_THAT(Types(texts), ElementsAre(9, 8, 6));

    // A whole design as texts: caption, its place, texts; nothing else.
    const Bytes whole = Store(DesignPart::kDesign, source);
    WorkingCopy copy = Sample(), expected = Sample();
    copy.Store().CaptionText = u"mine";
    copy.Store().BkgTileSelected.fill(1);
    copy.Store().CustomText.push_back({.Text = u"second"});
    ASSERT_EQ(Load(DesignPart::kTexts, whole, copy), "");
    expected.document.CaptionPos = source.document.CaptionPos;
    EXPECT_EQ(Store(DesignPart::kDesign, copy), Store(DesignPart::kDesign, expected));
    EXPECT_EQ(copy.nextTextIndex, 1u);
    EXPECT_THAT(copy.Store().BkgTileSelected, Each(1));

    // As a screen: with palettes, without tiles, sprites and switches. The current places follow.
    copy = Sample();
    expected = source;
    for (WorkingCopy* either : {&copy, &expected}) {
        either->Store().SpriteTileList.push_back({});
        either->Store().BigSprite = either->Store().ChrData[7] = 1;
    }
    ASSERT_EQ(Load(DesignPart::kScreen, whole, copy), "");
    EXPECT_EQ(Store(DesignPart::kDesign, copy), Store(DesignPart::kDesign, expected));
    EXPECT_EQ(copy.BkgPalettePos.X, 13);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{1, 1}));

    // Nothing of a design in the file, or damage in a chunk of the part.
    const Bytes before = Store(DesignPart::kDesign, copy);
    const std::tuple<DesignPart, Bytes, const char*> damages[] = {
        {DesignPart::kTexts, Chunk(28, {1}), "no design file"},
        {DesignPart::kScreen, Bytes(5), "no design file"},
        {DesignPart::kTexts, texts + Chunk(8, Bytes(3)), "an even number"},
        {DesignPart::kDesign, {}, "the file is empty"}};
    for (const auto& [part, bytes, words] : damages)
        EXPECT_THAT(Load(part, bytes, copy), HasSubstr(words));
    EXPECT_EQ(Store(DesignPart::kDesign, copy), before);
}

TEST(DesignParts, TilesStayInTheirTable) {
    WorkingCopy copy;
    copy.BkgTilePos = {15, 15};
    ASSERT_EQ(Load(DesignPart::kSpriteTiles, Bytes(8192, 0xAA), copy), "");
    ASSERT_EQ(Load(DesignPart::kBkgTiles, Bytes(20, 0xBB), copy), "");
    ASSERT_EQ(Load(DesignPart::kBkgTiles, Bytes(8192, 0xCC), copy, Shift::kDown), "");
    EXPECT_EQ(Store(DesignPart::kSpriteTiles, copy), Bytes(4096, 0xAA));
    EXPECT_EQ(Store(DesignPart::kBkgTiles, copy, Shift::kDown),
              Bytes(20, 0xBB) + Bytes(4060) + Bytes(16, 0xCC));
    copy.Store().SpriteTileSelected[3] = copy.Store().SpriteTileSelected[200] = 1;
    copy.Store().ChrData[4096 + 200 * 16] = 0xDD;
    EXPECT_EQ(Store(DesignPart::kSpriteTiles, copy, Shift::kDown),
              Bytes(16, 0xAA) + Bytes{0xDD} + Bytes(15, 0xAA));
    EXPECT_THAT(Store(DesignPart::kSpriteTiles, copy), SizeIs(4096));
}

TEST(DesignParts, NameTablesReplaceOrJoin) {
    WorkingCopy copy = Sample();
    Bytes table(100);
    table[0] = 9;
    table[99] = 8;
    ASSERT_EQ(Load(DesignPart::kNameTable, table, copy), "");
    EXPECT_THAT(copy.Store().BkgTileList,
                ElementsAre(TileItem{0, 0, 0, 0, 9}, TileItem{1, 3, 3, 0, 8}));
    ASSERT_EQ(Load(DesignPart::kNameTable, Bytes(2000, 7), copy, Shift::kDown), "");
    EXPECT_THAT(copy.Store().BkgTileList, SizeIs(2 + 960));
    EXPECT_EQ(copy.Store().BkgTileList.back(), (TileItem{961, 31, 29, 0, 7}));
    EXPECT_EQ(copy.Store().Attributes, kDefaultAttributes);
}

TEST(DesignParts, NameTablesHoldWhatTheViewShows) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    std::iota(store.CharMapData.begin(), store.CharMapData.end(), uint8_t{0});
    store.CharMapData[' '] = 0xEE;
    store.BkgTileList = {{0, 0, 0, 1, 1}, {0, 0, 0, 0, 2}, {0, 32, 0, 1, 3}, {0, 0, -1, 0, 3}};
    copy.document.ItemPos = {30, 28};
    copy.ItemTextList = {u"ABC", u"", u"below"};
    store.CustomText = {{0, -1, 1, u"xy z"},
                        {0, 0, -3, u"above"},
                        {0, 0, 3, u"\u9B42k"},
                        {0, 0, 30, u"below"},
                        {0, 0, 4, u"hidden by it"}};
    copy.document.CaptionPos = {29, 2};
    store.CaptionText = u"CAPTION";
    Bytes cells(960);
    cells[0] = 2;
    const Bytes tilesOnly = cells;
    const auto put = [&](size_t at, std::string_view text) {
        std::ranges::copy(text, cells.begin() + static_cast<std::ptrdiff_t>(at));
    };
    put(28 * 32 + 30, "AB");
    put(32, "y\xEEz");
    put(3 * 32 + 1, "k");
    put(2 * 32 + 29, "CAP");
    EXPECT_EQ(Store(DesignPart::kNameTable, copy), cells);
    cells[0] = 1;
    EXPECT_EQ(Store(DesignPart::kNameTable, copy, Shift::kDown), cells);
    copy.Show_List = copy.Show_Custom_Text = copy.Show_Caption = false;
    copy.Show_Bg_Tile = false;  // the tiles are in the file all the same
    EXPECT_EQ(Store(DesignPart::kNameTable, copy), tilesOnly);
    copy.Show_List = true;
    copy.document.ItemPos = {0x7FFFFFFF, 0};
    EXPECT_EQ(Store(DesignPart::kNameTable, copy), tilesOnly);
}

TEST(DesignParts, Attributes) {
    WorkingCopy copy;
    ASSERT_EQ(Load(DesignPart::kAttributes, Bytes(1024, 0x1B), copy), "");
    EXPECT_THAT(copy.Store().Attributes, Each(0x1B));
    EXPECT_EQ(Store(DesignPart::kAttributes, copy), Bytes(64, 0x1B));
    ASSERT_EQ(Load(DesignPart::kAttributes, {0xE4}, copy), "");
    EXPECT_EQ(copy.CurrentAttribute, 0xE4);
    // The first byte's four quadrants are 0, 1, 2 and 3, those of all others 3, 2, 1 and 0.
    const Bytes mmc5 = Store(DesignPart::kMmc5Attributes, copy);
    ASSERT_EQ(mmc5.size(), 1024u);
    for (size_t at = 0; at < mmc5.size(); ++at) {
        const size_t column = at % 32, row = at / 32, quadrant = row % 4 / 2 * 2 + column % 4 / 2;
        EXPECT_EQ(mmc5[at], 0x40 * (column < 4 && row < 4 ? quadrant : 3 - quadrant)) << at;
    }
    EXPECT_THAT(Store(DesignPart::kAttributesAsBin, copy), IsEmpty());
}

TEST(DesignParts, SpritesAreThoseOfTheConsole) {
    WorkingCopy copy = Sample();
    Bytes records{0, 0x41, 0xFF, 255, 240, 1, 0, 1, 239, 2, 0x62, 7, 9, 9, 9};
    ASSERT_EQ(Load(DesignPart::kSprites, records, copy), "");
    EXPECT_THAT(copy.Store().SpriteTileList,
                ElementsAre(TileItem{0, 255, 0, 0, 0x41, 3, 7}, TileItem{1, 7, 239, 0, 2, 2, 6}));
    const auto views = LoadPart(DesignPart::kSprites, records, Shift::kUp, copy, kEnglish);
    EXPECT_TRUE(std::get<Views>(views).Has(View::kCheckBoxes)) << "the flags of what is selected";
    copy.Store().SpriteTileList.push_back({.X = 256, .Y = 1});
    copy.Store().SpriteTileList.push_back({.X = 1, .Y = 240});
    const Bytes first{0, 0x41, 0xE3, 255}, second{239, 2, 0x62, 7};
    EXPECT_EQ(Store(DesignPart::kSprites, copy), first + second + Bytes(248, 0xF8));

    // With Shift the odd tiles, whichever are selected.
    EXPECT_EQ(Store(DesignPart::kSprites, copy, Shift::kDown), Store(DesignPart::kSprites, copy));
    copy.Store().SpriteTileList[1].Selected = 1;
    EXPECT_EQ(Store(DesignPart::kSprites, copy, Shift::kDown), first + Bytes(252, 0xF8));

    ASSERT_EQ(Load(DesignPart::kSprites, Bytes(1200, 1), copy), "");
    EXPECT_THAT(copy.Store().SpriteTileList, SizeIs(255));
    EXPECT_THAT(Store(DesignPart::kSprites, copy), IsEmpty()) << "no file holds so many";
    copy.Store().SpriteTileList.resize(64);
    EXPECT_EQ(Store(DesignPart::kSprites, copy), Bytes(256, 1));
}

TEST(DesignParts, PalettesAndMaps) {
    WorkingCopy copy;
    ASSERT_EQ(Load(DesignPart::kBkgPalette, {0x30, 0x31, 0x32, 0x33}, copy), "");
    EXPECT_EQ(Store(DesignPart::kBkgPalette, copy),
              (Bytes{0x30, 0x31, 0x32, 0x33} +
               Bytes(kDefaultBkgPalette.begin() + 4, kDefaultBkgPalette.end())));
    EXPECT_EQ(copy.SystemPalettePos, (Pos{1, 3}));
    ASSERT_EQ(Load(DesignPart::kSpritePalette, Counting(40), copy), "");
    EXPECT_EQ(Store(DesignPart::kSpritePalette, copy), Counting(16));
    EXPECT_THAT(Store(DesignPart::kCharMap, copy), SizeIs(256));
    EXPECT_NE(Load(DesignPart::kCharMap, Bytes(256), copy), "");
    EXPECT_THAT(Store(DesignPart::kVideoMemory2000, copy), IsEmpty());
}

TEST(DesignParts, ImagesOfVideoMemory) {
    const Bytes image = Counting(8192) + Bytes(33) + Bytes{3} + Bytes(926) + Counting(64, 4) +
                        Bytes(2048) + Bytes(959) + Bytes{5} + Counting(64, 6) + Bytes(0xF00) +
                        Counting(16, 7) + Counting(16, 8) + Bytes(0xE0);
    WorkingCopy copy = Sample(), expected = Sample();
    EXPECT_THAT(Load(DesignPart::kVideoMemory2000, Bytes(16383), copy),
                HasSubstr("16384 bytes, the file has 16383"));
    EXPECT_EQ(Store(DesignPart::kDesign, copy), Store(DesignPart::kDesign, expected));
    DesignStore& store = expected.Store();
    store.CustomText = {};
    store.SpriteTileList = {};
    std::ranges::copy(Counting(8192), store.ChrData.begin());
    std::ranges::copy(Counting(16, 7), store.BkgPalette.begin());
    std::ranges::copy(Counting(16, 8), store.SpritePalette.begin());
    for (const auto& [part, item, first] :
         {std::tuple{DesignPart::kVideoMemory2000, TileItem{0, 1, 1, 0, 3}, uint8_t{4}},
          {DesignPart::kVideoMemory2C00, {0, 31, 29, 0, 5}, 6}}) {
        ASSERT_EQ(Load(part, image, copy), "");
        store.BkgTileList = {item};
        std::ranges::copy(Counting(64, first), store.Attributes.begin());
        EXPECT_EQ(Store(DesignPart::kDesign, copy), Store(DesignPart::kDesign, expected));
    }
}

TEST(DesignParts, FilesAreReplacedOrKeepTheirTail) {
    const TemporaryFolder folder;
    const WorkingCopy copy = Sample();
    using enum DesignPart;
    // The first seven keep it.
    const DesignPart parts[] = {kScreen,          kTexts,       kAttributes,    kMmc5Attributes,
                                kAttributesAsBin, kBkgPalette,  kSpritePalette, kDesign,
                                kBkgTiles,        kSpriteTiles, kNameTable,     kSprites,
                                kCharMap};
    for (const DesignPart& part : parts) {
        const Bytes bytes = Store(part, copy);
        const std::string written(bytes.begin(), bytes.end()), old(20000, 'o');
        const auto file = folder / "part";
        const auto save = [&] { return Words(SavePart(file, part, Shift::kUp, copy, kEnglish)); };
        EXPECT_EQ(save(), "");
        EXPECT_EQ(test::ReadText(file), written);
        test::WriteText(file, old);
        EXPECT_EQ(save(), "");
        EXPECT_EQ(test::ReadText(file),
                  &part - parts < 7 ? written + old.substr(written.size()) : written);
        std::filesystem::remove(file);
    }
    WorkingCopy crowded = copy;
    crowded.Store().SpriteTileList.assign(65, TileItem{.X = 1, .Y = 1});
    EXPECT_THAT(Words(SavePart(folder / "x.spl", kSprites, Shift::kUp, crowded, kEnglish)),
                MatchesRegex(".*x.spl: .*holds 64.*"));
    EXPECT_EQ(folder.CountFiles(), 0u);

    EXPECT_EQ(WithPartExtension("a.FCM", PartExtension(DesignPart::kDesign)), "a.FCM");
    EXPECT_EQ(WithPartExtension("a.b", PartExtension(DesignPart::kSprites)), "a.b.spl");
    EXPECT_EQ(WithPartExtension("dir.pal/a", PartExtension(DesignPart::kBkgPalette)),
              "dir.pal/a.pal");
}

}  // namespace
}  // namespace bw
