#include "designer/model/design_store.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include <gmock/gmock.h>

#include "designer/model/design_records.h"
#include "designer/record_bytes.h"

namespace bw {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Field;
using testing::IsEmpty;

class DesignStoreTest : public testing::Test {
  protected:
    void Store(const char* name, const Bytes& value) {
        EXPECT_TRUE(settings_->RegWriteBinary(kDesignKey, name, value));
    }
    bool Load() { return LoadDesignData(design_, *settings_, tiles_); }

    std::unique_ptr<SettingsStore> settings_ = MakeMemoryStore();
    Bytes tiles_ = [] {
        Bytes tiles(kChrDataSize);
        std::iota(tiles.begin(), tiles.end(), uint8_t{1});
        return tiles;
    }();
    DesignStore design_;
};

TileItem CursorTile(uint32_t index, uint8_t tile, int32_t x = 0, int32_t y = 1) {
    return {.Index = index, .X = x, .Y = y, .Tile = tile};
}

TEST_F(DesignStoreTest, FirstStart) {
    ASSERT_TRUE(Load());
    LoadDesignTables(design_, *settings_);
    EXPECT_THAT(design_.ChrData, ElementsAreArray(tiles_));
    EXPECT_THAT(design_.DefaultChrData, ElementsAreArray(tiles_));
    EXPECT_EQ(design_.ArrowTile, CursorTile(0xFFFFFFFF, 31));
    EXPECT_THAT(design_.ArrowTileList, ElementsAre(CursorTile(0, 2), CursorTile(1, 3),
                                                   CursorTile(2, 18), CursorTile(3, 19)));
    EXPECT_THAT(design_.BkgTileList, IsEmpty());
    EXPECT_THAT(design_.SpriteTileList, IsEmpty());
    EXPECT_THAT(design_.CustomText, IsEmpty());
    EXPECT_EQ(design_.BigSprite, 0);
    for (size_t code = 0; code < kCharMapSize; ++code) {
        EXPECT_EQ(design_.CharMapData[code], code >= 33 && code <= 127 ? code : 0) << code;
    }
    const std::pair<size_t, int> attributes[] = {{0, 0x00},  {7, 0x00},  {8, 0x55},  {47, 0x55},
                                                 {48, 0xA5}, {55, 0xA5}, {56, 0xAA}, {63, 0xAA}};
    for (const auto& [place, value] : attributes)
        EXPECT_EQ(design_.Attributes[place], value);
    EXPECT_THAT(design_.BkgPalette, ElementsAre(0x0F, 0x24, 0x23, 0x23, 0x0F, 0x21, 0x21, 0x21,
                                                0x0F, 0x27, 0x22, 0x22, 0x0F, 0x22, 0x22, 0x22));
    EXPECT_THAT(design_.SpritePalette, ElementsAre(0x0F, 0x20, 0x27, 0x22, 0x0F, 0x24, 0x24, 0x24,
                                                   0x0F, 0x21, 0x21, 0x21, 0x0F, 0x22, 0x22, 0x22));
}

TEST_F(DesignStoreTest, StoredValuesReplaceTheDefaults) {
    Bytes arrow;
    AppendTile(arrow, 100, 50, 33);
    Store("ArrowTile", arrow);
    Store("ChrData", Bytes(kChrDataSize, 0x11));
    Store("CharMapData", Bytes(kCharMapSize, 0x22));
    Store("BigSprite", {1});
    Store("Attributes", Bytes(kAttributeSize, 0x33));
    Store("BkgPalette", Bytes(kPaletteSize, 0x04));
    Store("SpritePalette", Bytes(kPaletteSize, 0x05));
    ASSERT_TRUE(Load());
    LoadDesignTables(design_, *settings_);
    EXPECT_EQ(design_.ArrowTile, ReadTileItems(arrow).at(0));
    EXPECT_THAT(design_.ChrData, Each(0x11));
    EXPECT_THAT(design_.DefaultChrData, ElementsAreArray(tiles_));
    EXPECT_THAT(design_.CharMapData, Each(0x22));
    EXPECT_EQ(design_.BigSprite, 1);
    EXPECT_THAT(design_.Attributes, Each(0x33));
    EXPECT_THAT(design_.BkgPalette, Each(0x04));
    EXPECT_THAT(design_.SpritePalette, Each(0x05));
}

TEST_F(DesignStoreTest, ValuesOfAnotherSizeOrFormLeaveTheDefaults) {
    for (const char* name : {"ArrowTile", "ChrData", "CharMapData", "BigSprite", "Attributes",
                             "BkgPalette", "SpritePalette"}) {
        Store(name, Bytes(15, 0x77));
    }
    settings_->RegWriteString(kDesignKey, "BkgTileList", u"0123456789");
    ASSERT_TRUE(Load());
    LoadDesignTables(design_, *settings_);
    EXPECT_EQ(design_.ArrowTile, CursorTile(0xFFFFFFFF, 31));
    EXPECT_THAT(design_.ChrData, ElementsAreArray(tiles_));
    EXPECT_EQ(design_.CharMapData['A'], 'A');
    EXPECT_EQ(design_.BigSprite, 0);
    EXPECT_EQ(design_.Attributes, kDefaultAttributes);
    EXPECT_EQ(design_.BkgPalette, kDefaultBkgPalette);
    EXPECT_EQ(design_.SpritePalette, kDefaultSpritePalette);
    EXPECT_THAT(design_.BkgTileList, IsEmpty());
}

TEST_F(DesignStoreTest, CursorsOutOfRangeAreBroughtBackEachInItsWay) {
    Bytes list, arrow;
    AppendTile(list, 300, 240, 1);
    AppendTile(list, -1, 0, 1);
    AppendTile(list, 255, 239, 1);
    AppendTile(list, 0, 1, 1);
    AppendTile(arrow, 300, 1000, 31);
    Store("ArrowTileList", list);
    Store("ArrowTile", arrow);
    ASSERT_TRUE(Load());
    const auto at = [](int32_t x, int32_t y) {
        return testing::AllOf(Field(&TileItem::X, x), Field(&TileItem::Y, y));
    };
    EXPECT_THAT(design_.ArrowTileList, ElementsAre(at(0, 1), at(0, 1), at(255, 239), at(0, 1)));
    EXPECT_THAT(design_.ArrowTile, at(255, 239));
}

TEST_F(DesignStoreTest, ShortLargeCursorIsReplacedByOneMadeFromTheSmallCursor) {
    Bytes list, arrow;
    for (int i = 0; i < 3; ++i)
        AppendTile(list, 10, 10, 99);
    AppendTile(arrow, 20, 12, 31);  // as pixels: 20 * 8 - 18, 12 * 8 - 4
    Store("ArrowTileList", list);
    Store("ArrowTile", arrow);
    ASSERT_TRUE(Load());
    EXPECT_THAT(design_.ArrowTileList,
                ElementsAre(CursorTile(0, 2, 142, 92), CursorTile(1, 3, 142, 92),
                            CursorTile(2, 18, 142, 92), CursorTile(3, 19, 142, 92)));
}

TEST_F(DesignStoreTest, AbsurdCursorPositionDoesNoHarm) {
    Bytes arrow;
    AppendTile(arrow, std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min(), 31);
    Store("ArrowTile", arrow);
    ASSERT_TRUE(Load());
    EXPECT_EQ(design_.ArrowTileList.at(0), CursorTile(0, 2));
    EXPECT_EQ(design_.ArrowTile.X, 255);
    EXPECT_EQ(design_.ArrowTile.Y, 1);
}

TEST_F(DesignStoreTest, ListsThatHoldItemsAreLeftAlone) {
    Bytes tiles, texts;
    for (int32_t i = 0; i < 5; ++i)
        AppendTile(tiles, i, 2, 3);
    AppendText(texts, {.text = u"stored"});
    for (const char* name : {"BkgTileList", "SpriteTileList", "ArrowTileList"})
        Store(name, tiles);
    Store("CustomText", texts);
    ASSERT_TRUE(Load());
    EXPECT_EQ(design_.BkgTileList.size(), 5u);
    EXPECT_EQ(design_.SpriteTileList.size(), 5u);
    EXPECT_EQ(design_.ArrowTileList.size(), 5u) << "more than four stay";
    EXPECT_EQ(design_.CustomText.at(0).Text, u"stored");

    design_.BkgTileList.resize(1);
    design_.SpriteTileList.resize(1);
    design_.ArrowTileList.resize(4);
    design_.CustomText[0].Text = u"edited";
    ASSERT_TRUE(Load());
    EXPECT_EQ(design_.BkgTileList.size(), 1u);
    EXPECT_EQ(design_.SpriteTileList.size(), 1u);
    EXPECT_EQ(design_.ArrowTileList.size(), 4u);
    EXPECT_THAT(design_.CustomText, ElementsAre(Field(&TextItem::Text, u"edited")));
}

TEST_F(DesignStoreTest, TileSetIsTakenOnceAndWithinBounds) {
    tiles_.resize(kChrDataSize + 1, 0x55);
    ASSERT_TRUE(Load());
    const auto first = design_.ChrData;
    EXPECT_EQ(first.back(), tiles_[kChrDataSize - 1]);
    tiles_.assign(100, 0x99);
    ASSERT_TRUE(Load());
    EXPECT_EQ(design_.ChrData, first);

    DesignStore other;
    EXPECT_TRUE(LoadDesignData(other, *settings_, tiles_));
    EXPECT_EQ(other.ChrData[99], 0x99);
    EXPECT_EQ(other.ChrData[100], 0) << "the rest stays empty";
}

TEST_F(DesignStoreTest, WithoutATileSetTheLaterStepsDoNotRun) {
    Store("BkgTileList", [] {
        Bytes tiles;
        AppendTile(tiles, 1, 2, 3);
        return tiles;
    }());
    Store("BigSprite", {1});
    tiles_.clear();
    EXPECT_FALSE(Load());
    EXPECT_EQ(design_.BkgTileList.size(), 1u) << "read before";
    EXPECT_EQ(design_.BigSprite, 0);
    EXPECT_EQ(design_.ArrowTile.Y, 0);
    EXPECT_THAT(design_.CharMapData, Each(0));
}

TEST_F(DesignStoreTest, AddressesStoredAsBinaryAreRefused) {
    for (const char* name : {"CaptionPpuAddr", "PageNumberPpuAddr", "ItemPpuAddr"}) {
        Store(name, {0x00, 0x21, 0, 0});
    }
    LoadDesignTables(design_, *settings_);
    EXPECT_EQ(design_.CaptionPpuAddr, 0x204Cu);
    EXPECT_EQ(design_.PageNumberPpuAddr, 0x236Du);
    EXPECT_EQ(design_.ItemPpuAddr, 0x20A9u);
    settings_->RegWriteDword(kDesignKey, "ItemPpuAddr", 0x2100);
    LoadDesignTables(design_, *settings_);
    EXPECT_EQ(design_.ItemPpuAddr, 0x2100u);
}

}  // namespace
}  // namespace bw
