// Pictures that become screens: without loss where a console could show them, within the room there
// is, and with less error than the plain way.
#include "designer/import/picture_import.h"

#include <cmath>
#include <functional>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "design_items.h"
#include "designer/files/design_folder.h"
#include "designer/history/edit_session.h"
#include "designer/model/attribute_table.h"
#include "designer/model/system_palette.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/tools/used_tiles.h"
#include "pictures/drawn_pictures.h"
#include "pictures/plain_conversion.h"

namespace bw {
namespace {

using testing::ElementsAre;

const WorkingCopy& Nothing() {
    static const WorkingCopy kNothing;
    return kNothing;
}

ImportResult Imported(const WorkingCopy& copy, const Picture& picture, ImportOptions options = {}) {
    const std::atomic<bool> stop = false;
    return ImportPicture(copy, picture, options, stop).value();
}

// The design's background alone, 512 by 480 pixels.
Picture Screen(WorkingCopy copy) {
    copy.Show_Sp_Tile = copy.Show_List = copy.Show_Custom_Text = copy.Show_Caption =
        copy.Show_Cursor = copy.markPlaces = false;
    TileImage tiles;
    tiles.Redraw(copy.Store().ChrData, copy.Store().BkgPalette, copy.Store().SpritePalette, {}, {});
    NameTablePicture screen;
    screen.Compose(copy, tiles, {});
    const auto pixels = screen.Picture().Pixels();
    return {.width = kNameTableWidth,
            .height = kNameTableHeight,
            .pixels = {pixels.begin(), pixels.end()}};
}

Picture WithColours(Picture picture, const std::function<uint32_t(uint32_t)>& colour) {
    for (uint32_t& pixel : picture.pixels)
        pixel = colour(pixel);
    return picture;
}

// Whether equal pixels of one are equal in the other, and different ones different.
bool SameButForColours(const Picture& one, const Picture& other) {
    std::map<uint32_t, uint32_t> there;
    std::map<uint32_t, uint32_t> back;
    for (size_t i = 0; i < one.pixels.size(); ++i) {
        const uint32_t a = one.pixels[i];
        const uint32_t b = other.pixels[i];
        if (there.emplace(a, b).first->second != b || back.emplace(b, a).first->second != a)
            return false;
    }
    return one.pixels.size() == other.pixels.size();
}

void ExpectLossless(const WorkingCopy& before, const Picture& picture) {
    WorkingCopy copy = before;
    const ImportResult result = Imported(copy, picture);
    EXPECT_TRUE(result.withoutLoss && !result.cut && result.lossyBlocks.empty());
    EXPECT_EQ(result.meanError, 0);
    ApplyImport(copy, result);
    EXPECT_TRUE(SameButForColours(picture, Screen(copy)));
    const DesignStore& store = copy.Store();
    for (size_t entry = 0; entry < kPaletteSize; entry += 4) {
        EXPECT_EQ(store.BkgPalette[entry], store.BkgPalette[0]);
        EXPECT_EQ(store.SpritePalette[entry], store.BkgPalette[0]);
    }
    EXPECT_EQ(std::ranges::count(store.BkgPalette, 0x0D), 0);
}

uint32_t Tinted(uint32_t colour) {  // as another emulator might have it
    return (colour * 3 / 4 & 0x3F3F3F) + (colour >> 1 & 0x7F7F7F) + 0x100408;
}

// All 256 tiles, each in several sub-palettes, letters in the tiles of the table.
WorkingCopy FullTable() {
    std::mt19937 random(5);
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    for (uint8_t& byte : store.ChrData)
        byte = static_cast<uint8_t>(random());
    for (uint8_t& byte : store.Attributes)
        byte = static_cast<uint8_t>(random());
    store.BkgPalette = {0x0F, 0x30, 0x16, 0x27, 0x0F, 0x30, 0x1A, 0x29,
                        0x0F, 0x11, 0x21, 0x31, 0x0F, 0x30, 0x00, 0x10};
    store.SpritePalette.fill(0x0F);
    for (int32_t cell = 0; cell < kScreenColumns * kScreenRows; ++cell)
        store.BkgTileList.push_back(
            {.X = cell % 32, .Y = cell / 32, .Tile = static_cast<uint8_t>(cell * 7)});
    SetDefaultCharMap(store);
    copy.nextBkgIndex = Renumber(store.BkgTileList);
    return copy;
}

TEST(PictureImport, ScreensOfTheConsoleComeBackWithoutLoss) {
    for (const char* name : {"loom", "night_sea"}) {
        SCOPED_TRACE(name);
        WorkingCopy design;
        std::vector<uint8_t> bytes;
        const auto folder = std::filesystem::path(BANKWEAVER_DESIGNS) / name;
        ASSERT_EQ(PackDesign(folder, bytes, Language::kEnglish), std::nullopt);
        ASSERT_EQ(ReadDesign(bytes, design.document, Language::kEnglish), std::nullopt);
        ExpectLossless(Nothing(), Screen(design));
        ExpectLossless(design, WithColours(Screen(design), Tinted));
    }
    const WorkingCopy full = FullTable();
    const Picture picture = WithColours(Screen(full), Tinted);
    ExpectLossless(Nothing(), picture);
    ExpectLossless(full, picture);
    EXPECT_EQ(Imported(Nothing(), picture).tiles, 256u);
    EXPECT_GT(Imported(full, picture).lettersTaken, 0u);
    EXPECT_EQ(Imported(Nothing(), Unmagnified(picture)).meanError, 0);
}

class DrawnPicture : public testing::TestWithParam<size_t> {};
TEST_P(DrawnPicture, HasNoMoreErrorThanThePlainWay) {
    const auto drawn = bench::DrawnPictures()[GetParam()];
    const ImportResult result = Imported(Nothing(), drawn.picture);
    const auto shown = result.result.Pixels();
    const double error = bench::MeanError(drawn.picture, {shown.begin(), shown.end()});
    EXPECT_LE(error, bench::MeanError(drawn.picture, bench::PlainScreen(drawn.picture)))
        << drawn.name;
    EXPECT_TRUE(result.withoutLoss || std::abs(error - result.meanError) < 0.01);
}
INSTANTIATE_TEST_SUITE_P(All, DrawnPicture, testing::Range(size_t{0}, size_t{10}));

TEST(PictureImport, KeepsWhatTheRestOfTheDesignShows) {
    WorkingCopy copy = FullTable();
    DesignStore& store = copy.Store();
    std::erase_if(store.BkgTileList,
                  [](const TileItem& item) { return item.Y < 28; });  // 64 are left
    copy.AllItemTextList = {u"ABBA"};
    store.BigSprite = 1;
    store.SpriteTileList = {{.X = 3, .Y = 3, .Tile = 0xC4}};
    const auto before = store.ChrData;
    Picture picture = bench::DrawnPictures()[7].picture;  // no two tiles alike
    picture.height = 12 * 8;
    picture.pixels.resize(size_t{picture.width} * picture.height);
    const ImportResult result = Imported(copy, picture);
    ByteSet shown;
    for (const TileItem& item : store.BkgTileList)
        shown.set(item.Tile);
    for (const size_t tile : {size_t{0}, size_t{'A'}, size_t{'B'}, size_t{0xC4}, size_t{0xC5}})
        shown.set(tile);
    EXPECT_EQ(result.drawn.size(), kTileCount - shown.count()) << "all that is free";
    EXPECT_TRUE(Imported(copy, picture).drawn == result.drawn) << "the same again";
    ApplyImport(copy, result);
    for (int tile = 0; tile < kTileCount; ++tile)
        if (shown.test(static_cast<size_t>(tile))) {
            EXPECT_TRUE(std::ranges::equal(TileAt(store, kBkg, tile),
                                           std::span(before).subspan(size_t(tile) * 16, 16)));
        }
    EXPECT_EQ(store.BkgTileList.size(), 64u + 384u);
}

TEST(PictureImport, KeepsPalettesAndTilesWhereAsked) {
    WorkingCopy copy = FullTable();
    const DesignStore before = copy.Store();
    const Picture picture = bench::DrawnPictures()[2].picture;
    ApplyImport(copy, Imported(copy, picture, {.keepPalettes = true, .keepTiles = true}));
    EXPECT_EQ(copy.Store().BkgPalette, before.BkgPalette);
    EXPECT_EQ(copy.Store().SpritePalette, before.SpritePalette);
    EXPECT_EQ(copy.Store().ChrData, before.ChrData);
    ApplyImport(copy, Imported(copy, picture, {.keepPalettes = true}));
    EXPECT_EQ(copy.Store().BkgPalette, before.BkgPalette);
    EXPECT_NE(copy.Store().ChrData, before.ChrData);
    // The screen as it is costs nothing then.
    EXPECT_EQ(Imported(copy, Screen(copy), {.keepPalettes = true, .keepTiles = true}).meanError, 0);
}

TEST(PictureImport, MixesColoursByAPattern) {
    WorkingCopy copy;
    copy.Store().BkgPalette.fill(0x0F);
    copy.Store().BkgPalette[1] = 0x30;
    copy.Store().SpritePalette.fill(0x0F);
    const Picture grey{.width = 16, .height = 16, .pixels = std::vector<uint32_t>(256, 0x707070)};
    ImportOptions options{.keepPalettes = true, .dithering = Dithering::kOrdered};
    const ImportResult mixed = Imported(copy, grey, options);
    const auto whites = std::ranges::count(mixed.result.Pixels(), 0xFFFFFFu);
    EXPECT_TRUE(whites > 64 && whites < 192) << whites;
    EXPECT_EQ(mixed.tiles, 1u);
}

TEST(PictureImport, APartGoesToItsPlaceAndWhatIsClearStaysClear) {
    WorkingCopy copy = FullTable();
    copy.Store().BkgTileList.resize(100);  // some tiles are free then
    Picture picture{.width = 12, .height = 9, .pixels = std::vector<uint32_t>(108, 0xFF0000)};
    std::fill_n(picture.pixels.begin() + 96, 12, 0xFF0000 | kTransparentPixel);
    const ImportResult result = Imported(copy, picture, {.at = {31, 28}});
    EXPECT_TRUE(result.cut);
    EXPECT_EQ(result.area, (TileArea{31, 28, 1, 2}));
    EXPECT_THAT(result.items, ElementsAre(Item(31, 28, result.drawn.at(0).number)));
    ApplyImport(copy, result);
    EXPECT_EQ(copy.Store().BkgTileList.size(), 101u) << "a clear tile isn't placed";
    picture.pixels.assign(108, kTransparentPixel);
    EXPECT_TRUE(Imported(copy, picture).items.empty());
    const std::atomic<bool> stop = true;
    EXPECT_FALSE(ImportPicture(copy, picture, {}, stop).has_value());
}

TEST(PictureImport, IsOneStepOfTheHistory) {
    EditSession session(FullTable());
    const DesignStore before = session.Copy().Store();
    const ImportResult result = Imported(session.Copy(), bench::DrawnPictures()[0].picture);
    session.Run([&](WorkingCopy& copy) { return ApplyImport(copy, result); });
    const DesignStore after = session.Copy().Store();
    EXPECT_NE(after.ChrData, before.ChrData);
    const auto expectIs = [&](const DesignStore& expected) {
        const DesignStore& store = session.Copy().Store();
        EXPECT_EQ(store.ChrData, expected.ChrData);
        EXPECT_EQ(store.Attributes, expected.Attributes);
        EXPECT_EQ(store.BkgPalette, expected.BkgPalette);
        EXPECT_EQ(store.SpritePalette, expected.SpritePalette);
        EXPECT_EQ(Tiles(store.BkgTileList), Tiles(expected.BkgTileList));
    };
    session.Undo();
    expectIs(before);
    session.Redo();
    expectIs(after);
}

TEST(PictureImport, DamagedPicturesAreRefusedInTime) {
    const std::vector<uint32_t> palette{0x000000, 0xFFFFFF};
    const std::vector<uint8_t> good = EncodePng(40, 30, palette, std::vector<uint8_t>(1200, 1));
    Picture picture;
    using Kind = PictureFault::Kind;
    const auto kind = [&](const std::vector<uint8_t>& bytes) {
        const auto fault = DecodeAnyPng(bytes, kLargestPictureSide, picture);
        return fault ? std::optional(fault->kind) : std::nullopt;
    };
    EXPECT_EQ(kind(good), std::nullopt);
    EXPECT_EQ(picture.pixels, std::vector<uint32_t>(1200, 0xFFFFFF));
    // libpng looks at the header's own check sum as well, so that takes part in the lie.
    const auto claims = [&](std::initializer_list<uint8_t> size,
                            std::initializer_list<uint8_t> sum) {
        std::vector<uint8_t> bytes = good;
        std::ranges::copy(size, bytes.begin() + 16);
        std::ranges::copy(sum, bytes.begin() + 29);
        return kind(bytes);
    };
    EXPECT_EQ(claims({0, 0, 0x75, 0x30, 0, 0, 0x75, 0x30}, {0x5C, 0xE9, 0x6A, 0xF9}),
              Kind::kTooLarge);
    EXPECT_EQ(claims({0, 0, 8, 0, 0, 0, 8, 0}, {0x88, 0x69, 0x41, 0x73}), Kind::kMoreThanHeld);
    EXPECT_EQ(claims({0, 0, 0, 40, 0, 0, 0, 31}, {1, 2, 3, 4}), Kind::kNoPng);
    for (size_t length = 0; length < good.size() - 12; ++length)  // the end mark may be missing
        EXPECT_NE(kind({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)}),
                  std::nullopt);
    for (size_t at = 0; at < good.size() - 12; ++at) {
        std::vector<uint8_t> bytes = good;
        bytes[at] ^= 0x20;
        EXPECT_NE(kind(bytes), std::nullopt) << at;
    }
}

}  // namespace
}  // namespace bw
