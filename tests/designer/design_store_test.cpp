#include "designer/model/design_store.h"

#include <limits>
#include <span>

#include "design_items.h"
#include "designer/model/design_records.h"
#include "designer/record_bytes.h"

namespace bw {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class DesignStoreTest : public testing::Test {
  protected:
    void Store(const char* name, const Bytes& value) {
        EXPECT_TRUE(settings_->RegWriteBinary(kDesignKey, name, value));
    }
    // A list of tiles with these places.
    void StoreTiles(const char* name, const std::vector<Pos>& places, uint8_t tile) {
        Bytes tiles;
        for (const Pos& place : places)
            AppendTile(tiles, place.X, place.Y, tile);
        Store(name, tiles);
    }
    bool Load() { return LoadDesignData(design_, *settings_, tiles_); }

    std::unique_ptr<SettingsStore> settings_ = MakeMemoryStore();
    Bytes tiles_ = Counting(kChrDataSize);
    DesignStore design_;
};

TileItem CursorTile(uint32_t index, uint8_t tile, int32_t x = 0, int32_t y = 1) {
    return {.Index = index, .X = x, .Y = y, .Tile = tile};
}

TEST_F(DesignStoreTest, FirstStart) {
    ASSERT_TRUE(Load());
    LoadDesignTables(design_, *settings_);
    EXPECT_THAT(design_.ChrData, ElementsAreArray(tiles_));
    EXPECT_EQ(design_.ArrowTile, CursorTile(0xFFFFFFFF, 31));
    EXPECT_THAT(design_.ArrowTileList, ElementsAre(CursorTile(0, 2), CursorTile(1, 3),
                                                   CursorTile(2, 18), CursorTile(3, 19)));
    for (size_t code = 0; code < kCharMapSize; ++code)
        EXPECT_EQ(design_.CharMapData[code], code >= 33 && code <= 127 ? code : 0) << code;
    EXPECT_EQ(design_.Attributes, kDefaultAttributes);
    for (const auto& [row, value] :
         {std::pair{0, 0x00}, {1, 0x55}, {5, 0x55}, {6, 0xA5}, {7, 0xAA}})
        EXPECT_THAT(std::span(design_.Attributes).subspan(row * 8u, 8), Each(value));
    EXPECT_THAT(design_.BkgPalette, ElementsAre(0x0F, 0x24, 0x23, 0x23, 0x0F, 0x21, 0x21, 0x21,
                                                0x0F, 0x27, 0x22, 0x22, 0x0F, 0x22, 0x22, 0x22));
    EXPECT_THAT(design_.SpritePalette, ElementsAre(0x0F, 0x20, 0x27, 0x22, 0x0F, 0x24, 0x24, 0x24,
                                                   0x0F, 0x21, 0x21, 0x21, 0x0F, 0x22, 0x22, 0x22));
}

// Values of another size or form leave the defaults.
TEST_F(DesignStoreTest, StoredValuesReplaceTheDefaults) {
    const std::pair<const char*, size_t> values[] = {{"ChrData", kChrDataSize},
                                                     {"CharMapData", kCharMapSize},
                                                     {"BigSprite", 1},
                                                     {"Attributes", kAttributeSize},
                                                     {"BkgPalette", kPaletteSize},
                                                     {"SpritePalette", kPaletteSize},
                                                     {"ArrowTile", TileItem::kStoredSize}};
    for (const bool fits : {false, true}) {
        for (const auto& [name, size] : values)
            Store(name, Bytes(fits ? size : 15, 0x11));
        settings_->RegWriteString(kDesignKey, "BkgTileList", u"0123456789");
        ASSERT_TRUE(Load());
        LoadDesignTables(design_, *settings_);
        EXPECT_THAT(design_.DefaultChrData, ElementsAreArray(tiles_));
        EXPECT_THAT(design_.BkgTileList, IsEmpty());
        const Bytes read{design_.ArrowTile.Palette, design_.ChrData[5],    design_.CharMapData['A'],
                         design_.BigSprite,         design_.Attributes[8], design_.BkgPalette[1],
                         design_.SpritePalette[1]};
        EXPECT_EQ(read, fits ? Bytes(7, 0x11) : (Bytes{0, 6, 'A', 0, 0x55, 0x24, 0x20}));
    }
}

TEST_F(DesignStoreTest, CursorsOutOfRangeAreBroughtBackEachInItsWay) {
    StoreTiles("ArrowTileList", {{300, 240}, {-1, 0}, {255, 239}, {0, 1}}, 1);
    StoreTiles("ArrowTile", {{300, 1000}}, 31);
    ASSERT_TRUE(Load());
    EXPECT_THAT(design_.ArrowTileList, ElementsAre(At(0, 1), At(0, 1), At(255, 239), At(0, 1)));
    EXPECT_THAT(design_.ArrowTile, At(255, 239));
}

TEST_F(DesignStoreTest, ShortLargeCursorIsReplacedByOneMadeFromTheSmallCursor) {
    StoreTiles("ArrowTileList", {{10, 10}, {10, 10}, {10, 10}}, 99);
    StoreTiles("ArrowTile", {{20, 12}}, 31);  // as pixels: 20 * 8 - 18, 12 * 8 - 4
    ASSERT_TRUE(Load());
    EXPECT_THAT(design_.ArrowTileList, ElementsAre(Item(142, 92, 2), Item(142, 92, 3),
                                                   Item(142, 92, 18), Item(142, 92, 19)));
    // An absurd place does no harm.
    design_.ArrowTileList.clear();
    constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
    StoreTiles("ArrowTile", {{kMax, -kMax - 1}}, 31);
    ASSERT_TRUE(Load());
    EXPECT_EQ(design_.ArrowTileList.at(0), CursorTile(0, 2));
    EXPECT_THAT(design_.ArrowTile, At(255, 1));
}

TEST_F(DesignStoreTest, ListsThatHoldItemsAreLeftAlone) {
    for (const char* name : {"BkgTileList", "SpriteTileList", "ArrowTileList"})
        StoreTiles(name, std::vector<Pos>(5), 3);
    Bytes texts;
    AppendText(texts, {.text = u"stored"});
    AppendText(texts, {.text = u"another"});
    Store("CustomText", texts);
    const auto sizes = [&] {
        return std::vector{design_.BkgTileList.size(), design_.SpriteTileList.size(),
                           design_.ArrowTileList.size(), design_.CustomText.size()};
    };
    ASSERT_TRUE(Load());
    EXPECT_THAT(sizes(), ElementsAre(5, 5, 5, 2)) << "more than four stay";
    design_.BkgTileList.resize(1);
    design_.SpriteTileList.resize(1);
    design_.ArrowTileList.resize(4);
    design_.CustomText.resize(1);
    ASSERT_TRUE(Load());
    EXPECT_THAT(sizes(), ElementsAre(1, 1, 4, 1));
}

TEST_F(DesignStoreTest, TileSetIsTakenOnceAndWithinBounds) {
    tiles_.resize(kChrDataSize + 1, 0x55);
    ASSERT_TRUE(Load());
    tiles_.assign(100, 0x99);
    ASSERT_TRUE(Load());
    EXPECT_THAT(design_.ChrData, ElementsAreArray(Counting(kChrDataSize)));
    design_ = {};
    ASSERT_TRUE(Load());
    EXPECT_EQ(design_.ChrData[99], 0x99);
    EXPECT_EQ(design_.ChrData[100], 0) << "the rest stays empty";

    // Without one the later steps don't run.
    design_ = {};
    StoreTiles("BkgTileList", {{1, 2}}, 3);
    Store("BigSprite", {1});
    tiles_.clear();
    EXPECT_FALSE(Load());
    EXPECT_EQ(design_.BkgTileList.size(), 1u) << "read before";
    EXPECT_EQ(design_.BigSprite + design_.ArrowTile.Y, 0);
    EXPECT_THAT(design_.CharMapData, Each(0));
}

TEST_F(DesignStoreTest, AddressesStoredAsBinaryAreRefused) {
    for (const char* name : {"CaptionPpuAddr", "PageNumberPpuAddr", "ItemPpuAddr"})
        Store(name, {0x00, 0x21, 0, 0});
    LoadDesignTables(design_, *settings_);
    EXPECT_THAT(
        (std::vector{design_.CaptionPpuAddr, design_.PageNumberPpuAddr, design_.ItemPpuAddr}),
        ElementsAre(0x204C, 0x236D, 0x20A9));
    settings_->RegWriteDword(kDesignKey, "ItemPpuAddr", 0x2100);
    LoadDesignTables(design_, *settings_);
    EXPECT_EQ(design_.ItemPpuAddr, 0x2100u);
}

TEST(TextRecords, OtherTypesArePassedOverAndReadingEndsAtDamage) {
    const auto text = [](int32_t x, int32_t y, const std::u16string& words) {
        Bytes bytes;
        AppendText(bytes, {.x = x, .y = y, .text = words});
        return bytes;
    };
    const std::u16string longest(260, u'A'), tooLong(261, u'A');
    Bytes other;
    AppendText(other, {.type = 12, .text = u"not a text"});
    const Bytes good =
        text(-2, 29, u"A\u9B42") + other + Chunk(99, {}) + text(3, 0, u"") + text(0, 0, longest);
    const TextRecord damages[] = {
        {.text = u"bad", .size = 1000},    {.text = u"bad", .size = 0xFFFFFFFF},
        {.text = u"bad", .size = 11},  // no room for the place
        {.text = u"bad", .textBytes = 16}, {.text = u"bad", .textBytes = 0xFFFFFFFF},
        {.text = u"bad", .textBytes = 5},  {.text = tooLong}};
    for (const TextRecord& record : damages) {
        Bytes bytes = good;
        AppendText(bytes, record);
        EXPECT_THAT(ReadTextItems(bytes + good),
                    ElementsAre(TextItem{.Index = 0, .X = -2, .Y = 29, .Text = u"A\u9B42"},
                                TextItem{.Index = 1, .X = 3, .Y = 0, .Text = u""},
                                TextItem{.Index = 2, .Text = longest}))
            << record.size << " " << record.textBytes;
    }
}

}  // namespace
}  // namespace bw
