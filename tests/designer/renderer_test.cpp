// What no sheet of views shows: pictures drawn in part, and positions that no screen has.
#include <limits>

#include <gtest/gtest.h>

#include "designer/pictures/name_table_picture.h"

namespace bw {
namespace {

TEST(TileImage, OneSubPaletteLeavesTheOthersAsTheyWere) {
    DesignStore store;
    const auto redraw = [&](TileImage& tiles, SubPalettes bkg, SubPalettes sprites) {
        tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, bkg, sprites);
    };
    store.BkgPalette.fill(0x20);
    store.SpritePalette.fill(0x20);
    TileImage tiles;
    redraw(tiles, {}, {});
    store.BkgPalette.fill(0x16);
    store.SpritePalette.fill(0x16);
    redraw(tiles, {2, 1}, {0, 0});
    for (int x = 0; x < tiles.Picture().Width(); ++x) {
        EXPECT_EQ(tiles.Picture().At({x, 0}) == 0xFFFFFF, x / 128 != 2) << x;
        EXPECT_EQ(tiles.Picture().At({x, 128}), 0xFFFFFFu) << x;
    }
}

TEST(NameTablePicture, AbsurdPositionsDoNoHarm) {
    constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
    constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
    for (const int32_t far : {kMin, kMin / 2, -600, 600, kMax / 2, kMax}) {
        WorkingCopy copy;
        DesignStore& store = copy.Store();
        const TileItem item{.X = far, .Y = far, .Selected = 1, .Tile = 255, .Palette = 255};
        store.BkgTileList = store.SpriteTileList = {item, {.X = 3, .Y = 3, .Palette = 255}};
        store.ArrowTileList = {4, item};
        store.ArrowTile = item;
        store.CustomText = {{.X = far, .Y = far, .Text = u"AB"}, {.X = far, .Y = 3, .Text = u"AB"}};
        copy.ItemTextList.assign(40, u"AB");
        store.CaptionText = u"AB";
        copy.document.CaptionPos = copy.document.PageNumberPos = copy.document.ItemPos = {far, far};
        copy.Show_Cursor = copy.MarkCursor = copy.ShowPageNumber = true;
        for (const bool big : {false, true}) {
            copy.document.BigCursor = store.BigSprite = big;
            NameTablePicture table;
            TileImage tiles;
            table.Compose(copy, tiles, std::nullopt);
            EXPECT_EQ(table.Picture().At({300, 300}), 0u);
        }
    }
}

}  // namespace
}  // namespace bw
