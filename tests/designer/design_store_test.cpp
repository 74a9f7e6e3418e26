#include "designer/model/design_store.h"

#include <limits>

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
    EXPECT_THAT(design_.DefaultChrData, ElementsAreArray(tiles_));
    EXPECT_EQ(design_.ArrowTile, CursorTile(0xFFFFFFFF, 31));
    EXPECT_THAT(design_.ArrowTileList, ElementsAre(CursorTile(0, 2), CursorTile(1, 3),
                                                   CursorTile(2, 18), CursorTile(3, 19)));
    for (size_t code = 0; code < kCharMapSize; ++code)
        EXPECT_EQ(design_.CharMapData[code], code >= 33 && code <= 127 ? code : 0) << code;
    const std::pair<size_t, int> attributes[] = {{0, 0x00},  {7, 0x00},  {8, 0x55},  {47, 0x55},
                                                 {48, 0xA5}, {55, 0xA5}, {56, 0xAA}, {63, 0xAA}};
    for (const auto& [place, value] : attributes)
        EXPECT_EQ(design_.Attributes[place], value);
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
        EXPECT_EQ(design_.ArrowTile.Palette, fits ? 0x11 : 0);
        EXPECT_EQ(design_.ChrData[5], fits ? 0x11 : 6);
        EXPECT_EQ(design_.CharMapData['A'], fits ? 0x11 : 'A');
        EXPECT_EQ(design_.BigSprite, fits ? 0x11 : 0);
        EXPECT_EQ(design_.Attributes[8], fits ? 0x11 : 0x55);
        EXPECT_EQ(design_.BkgPalette[1], fits ? 0x11 : 0x24);
        EXPECT_EQ(design_.SpritePalette[1], fits ? 0x11 : 0x20);
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
    EXPECT_THAT(design_.ArrowTileList,
                ElementsAre(CursorTile(0, 2, 142, 92), CursorTile(1, 3, 142, 92),
                            CursorTile(2, 18, 142, 92), CursorTile(3, 19, 142, 92)));
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
    Store("CustomText", texts);
    const auto sizes = [&] {
        return std::vector<size_t>{design_.BkgTileList.size(), design_.SpriteTileList.size(),
                                   design_.ArrowTileList.size()};
    };
    ASSERT_TRUE(Load());
    EXPECT_THAT(sizes(), Each(5)) << "more than four stay";
    EXPECT_EQ(design_.CustomText.at(0).Text, u"stored");
    design_.BkgTileList.resize(1);
    design_.SpriteTileList.resize(1);
    design_.ArrowTileList.resize(4);
    design_.CustomText[0].Text = u"edited";
    ASSERT_TRUE(Load());
    EXPECT_THAT(sizes(), ElementsAre(1, 1, 4));
    EXPECT_EQ(design_.CustomText.at(0).Text, u"edited");
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
    EXPECT_EQ(design_.CaptionPpuAddr, 0x204Cu);
    EXPECT_EQ(design_.PageNumberPpuAddr, 0x236Du);
    EXPECT_EQ(design_.ItemPpuAddr, 0x20A9u);
    settings_->RegWriteDword(kDesignKey, "ItemPpuAddr", 0x2100);
    LoadDesignTables(design_, *settings_);
    EXPECT_EQ(design_.ItemPpuAddr, 0x2100u);
}

}  // namespace
}  // namespace bw
