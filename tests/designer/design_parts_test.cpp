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

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Language kEnglish = Language::kEnglish;

// What went wrong, or nothing.
std::string Load(DesignPart part, const Bytes& bytes, WorkingCopy& copy, Shift shift = Shift::kUp) {
    const auto result = LoadPart(part, bytes, shift, copy, kEnglish);
    const auto* problem = std::get_if<Diagnostic>(&result);
    if (problem == nullptr) {
        EXPECT_FALSE(std::get<Views>(result).Empty());
    }
    return problem == nullptr ? "" : ToUtf8(problem->text);
}

Bytes Store(DesignPart part, const WorkingCopy& copy, Shift shift = Shift::kUp) {
    const auto result = StorePart(part, shift, copy, kEnglish);
    const auto* bytes = std::get_if<Bytes>(&result);
    return bytes == nullptr ? Bytes{} : *bytes;
}

std::vector<uint32_t> Types(const Bytes& bytes) {
    std::vector<uint32_t> types;
    for (const ChunkView& chunk : ReadChunks(bytes).chunks) {
        types.push_back(chunk.type);
    }
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
    const Bytes screen = Store(DesignPart::kScreen, source);
    EXPECT_THAT(Types(screen), ElementsAre(12, 1, 9, 8, 10, 11, 14, 6));
    const Bytes texts = Store(DesignPart::kTexts, source);
    EXPECT_THAT(Types(texts), ElementsAre(9, 8, 6));

    // A whole design as texts: caption, its place, texts; nothing else.
    const Bytes whole = Store(DesignPart::kDesign, source);
    WorkingCopy copy = Sample();
    copy.Store().CaptionText = u"mine";
    copy.Store().BkgTileSelected.fill(1);
    copy.Store().CustomText.push_back({.Text = u"second"});
    ASSERT_EQ(Load(DesignPart::kTexts, whole, copy), "");
    EXPECT_EQ(copy.document.CaptionPos, source.document.CaptionPos);
    EXPECT_EQ(copy.document.ItemPos, DesignDocument().ItemPos);
    EXPECT_EQ(copy.Store().CaptionText, u"CAPTION");
    EXPECT_THAT(copy.Store().CustomText, SizeIs(1));
    EXPECT_EQ(copy.nextTextIndex, 1u);
    EXPECT_EQ(copy.Store().Attributes, kDefaultAttributes);
    EXPECT_THAT(copy.Store().BkgTileSelected, Each(1));

    // As a screen: with palettes, without tiles, sprites and switches. The current places follow.
    copy = Sample();
    copy.Store().SpriteTileList.push_back({});
    ASSERT_EQ(Load(DesignPart::kScreen, whole, copy), "");
    EXPECT_EQ(copy.Store().BkgPalette, source.Store().BkgPalette);
    EXPECT_EQ(copy.document.ItemPos, source.document.ItemPos);
    EXPECT_THAT(copy.Store().SpriteTileList, SizeIs(2));
    EXPECT_EQ(copy.BkgPalettePos.X, 13);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{1, 1}));

    // Nothing of a design in the file, or damage in a chunk of the part.
    const Bytes before = Store(DesignPart::kDesign, copy);
    Bytes switches;
    AppendChunk(switches, 28, Bytes{1});
    EXPECT_THAT(Load(DesignPart::kTexts, switches, copy), HasSubstr("no design file"));
    EXPECT_THAT(Load(DesignPart::kScreen, Bytes(5), copy), HasSubstr("5 bytes are left"));
    Bytes odd = texts;
    AppendChunk(odd, 8, Bytes(3));
    EXPECT_THAT(Load(DesignPart::kTexts, odd, copy), HasSubstr("an even number"));
    EXPECT_THAT(Load(DesignPart::kDesign, {}, copy), HasSubstr("the file is empty"));
    EXPECT_EQ(Store(DesignPart::kDesign, copy), before);
}

TEST(DesignParts, TilesStayInTheirTable) {
    WorkingCopy copy;
    ASSERT_EQ(Load(DesignPart::kSpriteTiles, Bytes(8192, 0xAA), copy), "");
    EXPECT_EQ(copy.Store().ChrData[4095], 0);
    EXPECT_EQ(Store(DesignPart::kSpriteTiles, copy), Bytes(4096, 0xAA));
    ASSERT_EQ(Load(DesignPart::kBkgTiles, Bytes(20, 0xBB), copy), "");
    EXPECT_EQ(copy.Store().ChrData[19], 0xBB);
    EXPECT_EQ(copy.Store().ChrData[20], 0);

    copy.BkgTilePos = {15, 15};
    ASSERT_EQ(Load(DesignPart::kBkgTiles, Bytes(8192, 0xCC), copy, Shift::kDown), "");
    EXPECT_EQ(copy.Store().ChrData[4079], 0);
    EXPECT_EQ(copy.Store().ChrData[4080], 0xCC);
    EXPECT_EQ(copy.Store().ChrData[4096], 0xAA);

    EXPECT_THAT(Store(DesignPart::kBkgTiles, copy, Shift::kDown), SizeIs(4096));
    copy.Store().SpriteTileSelected[3] = copy.Store().SpriteTileSelected[200] = 1;
    copy.Store().ChrData[4096 + 200 * 16] = 0xDD;
    Bytes marked(32, 0xAA);
    marked[16] = 0xDD;
    EXPECT_EQ(Store(DesignPart::kSpriteTiles, copy, Shift::kDown), marked);
    EXPECT_THAT(Store(DesignPart::kSpriteTiles, copy), SizeIs(4096));
}

TEST(DesignParts, NameTablesReplaceOrJoin) {
    WorkingCopy copy = Sample();
    Bytes table(100);
    table[0] = 9;
    table[99] = 8;
    ASSERT_EQ(Load(DesignPart::kNameTable, table, copy), "");
    EXPECT_THAT(copy.Store().BkgTileList,
                ElementsAre(TileItem{.Index = 0, .X = 0, .Y = 0, .Tile = 9},
                            TileItem{.Index = 1, .X = 3, .Y = 3, .Tile = 8}));
    ASSERT_EQ(Load(DesignPart::kNameTable, Bytes(2000, 7), copy, Shift::kDown), "");
    EXPECT_THAT(copy.Store().BkgTileList, SizeIs(2 + 960));
    EXPECT_EQ(copy.Store().BkgTileList.back(),
              (TileItem{.Index = 961, .X = 31, .Y = 29, .Tile = 7}));
    EXPECT_EQ(copy.Store().Attributes, kDefaultAttributes);
}

TEST(DesignParts, NameTablesHoldWhatTheViewShows) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    std::iota(store.CharMapData.begin(), store.CharMapData.end(), uint8_t{0});
    store.CharMapData[' '] = 0xEE;
    store.BkgTileList = {{.X = 0, .Y = 0, .Selected = 1, .Tile = 1},
                         {.X = 0, .Y = 0, .Tile = 2},
                         {.X = 32, .Y = 0, .Selected = 1, .Tile = 3},
                         {.X = 0, .Y = -1, .Tile = 3}};
    copy.document.ItemPos = {30, 28};
    copy.ItemTextList = {u"ABC", u"", u"below"};
    store.CustomText = {{.X = -1, .Y = 1, .Text = u"xy z"},
                        {.X = 0, .Y = -3, .Text = u"above"},
                        {.X = 0, .Y = 3, .Text = u"\u9B42k"},
                        {.X = 0, .Y = 30, .Text = u"below"},
                        {.X = 0, .Y = 4, .Text = u"hidden by it"}};
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
    const Bytes mmc5 = Store(DesignPart::kMmc5Attributes, copy);
    ASSERT_EQ(mmc5.size(), 1024u);
    const auto cell = [&](size_t column, size_t row) { return mmc5[row * 32 + column]; };
    EXPECT_THAT((Bytes{cell(0, 0), cell(1, 1), cell(2, 1), cell(3, 0), cell(0, 2), cell(3, 3)}),
                ElementsAre(0x00, 0x00, 0x40, 0x40, 0x80, 0xC0));
    EXPECT_THAT((Bytes{cell(4, 0), cell(6, 0), cell(30, 30), cell(29, 31)}),
                ElementsAre(0xC0, 0x80, 0x00, 0x40));
    EXPECT_THAT(Store(DesignPart::kAttributesAsBin, copy), IsEmpty());
}

TEST(DesignParts, SpritesAreThoseOfTheConsole) {
    WorkingCopy copy = Sample();
    Bytes records{0, 0x41, 0xFF, 255, 240, 1, 0, 1, 239, 2, 0x62, 7, 9, 9, 9};
    ASSERT_EQ(Load(DesignPart::kSprites, records, copy), "");
    EXPECT_THAT(
        copy.Store().SpriteTileList,
        ElementsAre(TileItem{.Index = 0, .X = 255, .Y = 0, .Tile = 0x41, .Palette = 3, .Flags = 7},
                    TileItem{.Index = 1,
                             .X = 7,
                             .Y = 239,
                             .Tile = 2,
                             .Palette = 2,
                             .Flags = TileItem::kFlipHorizontally | TileItem::kBehindBackground}));
    copy.Store().SpriteTileList.push_back({.X = 256, .Y = 1});
    copy.Store().SpriteTileList.push_back({.X = 1, .Y = 240});
    Bytes expected(256, 0xF8);
    std::ranges::copy(Bytes{0, 0x41, 0xE3, 255, 239, 2, 0x62, 7}, expected.begin());
    EXPECT_EQ(Store(DesignPart::kSprites, copy), expected);

    // With Shift the odd tiles, whichever are selected.
    EXPECT_EQ(Store(DesignPart::kSprites, copy, Shift::kDown), expected);
    copy.Store().SpriteTileList[1].Selected = 1;
    std::fill_n(expected.begin() + 4, 4, uint8_t{0xF8});
    EXPECT_EQ(Store(DesignPart::kSprites, copy, Shift::kDown), expected);

    ASSERT_EQ(Load(DesignPart::kSprites, Bytes(1200, 1), copy), "");
    EXPECT_THAT(copy.Store().SpriteTileList, SizeIs(255));
    EXPECT_THAT(Store(DesignPart::kSprites, copy), IsEmpty()) << "no file holds so many";
    copy.Store().SpriteTileList.resize(64);
    EXPECT_EQ(Store(DesignPart::kSprites, copy), Bytes(256, 1));
}

TEST(DesignParts, PalettesAndMaps) {
    WorkingCopy copy;
    ASSERT_EQ(Load(DesignPart::kBkgPalette, {0x30, 0x31, 0x32, 0x33}, copy), "");
    Bytes expected(kDefaultBkgPalette.begin(), kDefaultBkgPalette.end());
    std::ranges::copy(Bytes{0x30, 0x31, 0x32, 0x33}, expected.begin());
    EXPECT_EQ(Store(DesignPart::kBkgPalette, copy), expected);
    EXPECT_EQ(copy.SystemPalettePos, (Pos{1, 3}));
    ASSERT_EQ(Load(DesignPart::kSpritePalette, Counting(40), copy), "");
    EXPECT_EQ(Store(DesignPart::kSpritePalette, copy), Counting(16));
    EXPECT_THAT(Store(DesignPart::kCharMap, copy), SizeIs(256));
    EXPECT_NE(Load(DesignPart::kCharMap, Bytes(256), copy), "");
    EXPECT_THAT(Store(DesignPart::kVideoMemory2000, copy), IsEmpty());
}

TEST(DesignParts, ImagesOfVideoMemory) {
    Bytes image(16384);
    image[0] = 1;
    image[8191] = 2;
    image[0x2000 + 33] = 3;
    image[0x2000 + 960] = 4;
    image[0x2C00 + 959] = 5;
    image[0x2C00 + 960 + 63] = 6;
    image[0x3F00] = 7;
    image[0x3F1F] = 8;
    WorkingCopy copy = Sample();
    EXPECT_THAT(Load(DesignPart::kVideoMemory2000, Bytes(16383), copy),
                HasSubstr("16384 bytes, the file has 16383"));
    EXPECT_THAT(copy.Store().CustomText, SizeIs(1));
    ASSERT_EQ(Load(DesignPart::kVideoMemory2000, image, copy), "");
    const DesignStore& store = copy.Store();
    EXPECT_EQ(store.ChrData[0] + store.ChrData[8191], 3);
    EXPECT_THAT(store.BkgTileList, ElementsAre(TileItem{.Index = 0, .X = 1, .Y = 1, .Tile = 3}));
    EXPECT_EQ(store.Attributes[0], 4);
    EXPECT_EQ(store.BkgPalette[0], 7);
    EXPECT_EQ(store.SpritePalette[15], 8);
    EXPECT_THAT(store.CustomText, IsEmpty());
    EXPECT_THAT(store.SpriteTileList, IsEmpty());
    EXPECT_THAT(store.ArrowTileList, SizeIs(4));
    ASSERT_EQ(Load(DesignPart::kVideoMemory2C00, image, copy), "");
    EXPECT_THAT(store.BkgTileList, ElementsAre(TileItem{.Index = 0, .X = 31, .Y = 29, .Tile = 5}));
    EXPECT_EQ(store.Attributes[63], 6);
}

TEST(DesignParts, FilesAreReplacedOrKeepTheirTail) {
    const TemporaryFolder folder;
    const WorkingCopy copy = Sample();
    const struct {
        DesignPart part;
        bool keepsTail;
    } cases[] = {{DesignPart::kDesign, false},         {DesignPart::kScreen, true},
                 {DesignPart::kTexts, true},           {DesignPart::kBkgTiles, false},
                 {DesignPart::kSpriteTiles, false},    {DesignPart::kNameTable, false},
                 {DesignPart::kAttributes, true},      {DesignPart::kMmc5Attributes, true},
                 {DesignPart::kAttributesAsBin, true}, {DesignPart::kSprites, false},
                 {DesignPart::kBkgPalette, true},      {DesignPart::kSpritePalette, true},
                 {DesignPart::kCharMap, false}};
    for (const auto& test : cases) {
        const Bytes bytes = Store(test.part, copy);
        const std::string written(bytes.begin(), bytes.end());
        const std::string old(20000, 'o');
        const auto file = folder / "part";
        const auto save = [&] { return SavePart(file, test.part, Shift::kUp, copy, kEnglish); };
        EXPECT_EQ(save(), std::nullopt);
        EXPECT_EQ(test::ReadText(file), written);
        test::WriteText(file, old);
        EXPECT_EQ(save(), std::nullopt);
        EXPECT_EQ(test::ReadText(file),
                  test.keepsTail ? written + old.substr(written.size()) : written);
        std::filesystem::remove(file);
    }
    WorkingCopy crowded = copy;
    crowded.Store().SpriteTileList.assign(65, TileItem{.X = 1, .Y = 1});
    const auto problem =
        SavePart(folder / "x.spl", DesignPart::kSprites, Shift::kUp, crowded, kEnglish);
    EXPECT_THAT(ToUtf8(FullText(problem.value_or(Diagnostic{}))),
                AllOf(HasSubstr("x.spl: "), HasSubstr("holds 64")));
    EXPECT_EQ(folder.CountFiles(), 0u);

    EXPECT_EQ(WithPartExtension("a.FCM", PartExtension(DesignPart::kDesign)), "a.FCM");
    EXPECT_EQ(WithPartExtension("a.b", PartExtension(DesignPart::kSprites)), "a.b.spl");
    EXPECT_EQ(WithPartExtension("dir.pal/a", PartExtension(DesignPart::kBkgPalette)),
              "dir.pal/a.pal");
}

}  // namespace
}  // namespace bw
