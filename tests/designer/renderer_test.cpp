#include <algorithm>
#include <limits>

#include <gtest/gtest.h>

#include "designer/model/system_palette.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/pictures/small_views.h"

namespace bw {
namespace {

constexpr uint8_t kWhiteEntry = 0x20, kRedEntry = 0x16, kBlackEntry = 0x0F, kBlueEntry = 0x02;

// Tile 1 of both tables: index 1 in its left half, 0 in its right; tile 2 all of index 3; tile 3
// has index 2 in its top row only. Tile 0 is empty.
WorkingCopy TestCopy() {
    WorkingCopy copy;
    for (const size_t table : {size_t{0}, size_t{4096}}) {
        std::fill_n(copy.Store().ChrData.begin() + static_cast<long>(table) + 16, 8, uint8_t{0xF0});
        std::fill_n(copy.Store().ChrData.begin() + static_cast<long>(table) + 32, 16,
                    uint8_t{0xFF});
        copy.Store().ChrData[table + 48 + 8] = 0xFF;
    }
    copy.Store().Attributes.fill(0xE4);  // top left 0, top right 1, bottom left 2, bottom right 3
    for (size_t i = 0; i < kPaletteSize; ++i) {
        copy.Store().BkgPalette[i] = static_cast<uint8_t>(0x21 + i % 12);
        copy.Store().SpritePalette[i] = static_cast<uint8_t>(0x11 + i % 12);
    }
    copy.Store().SpritePalette[0] = kBlueEntry;
    copy.Store().CharMapData['A'] = 1;
    copy.Store().CharMapData['B'] = 2;
    // Out of the way of what the tests look at.
    copy.AttrBytePos = {7, 7};
    copy.AttrCellPos = {15, 14};
    copy.NameCellPos = {31, 29};
    copy.Show_Cursor = false;
    return copy;
}

struct Picture {
    explicit Picture(const WorkingCopy& copy, const std::optional<RubberBand>& band = {}) {
        tiles.Redraw(copy.Store().ChrData, copy.Store().BkgPalette, copy.Store().SpritePalette, {},
                     {});
        table.Compose(copy, tiles, band);
    }
    Colour At(int x, int y) const { return table.Picture().At({x, y}); }

    TileImage tiles;
    NameTablePicture table;
};

Colour Bkg(const WorkingCopy& copy, size_t entry) {
    return SystemColour(copy.Store().BkgPalette[entry]);
}
Colour Sprite(const WorkingCopy& copy, size_t entry) {
    return SystemColour(copy.Store().SpritePalette[entry]);
}
const Colour kBackdrop = SystemColour(kBlueEntry);

TEST(TileImage, HoldsEveryTileInEverySubPalette) {
    WorkingCopy copy = TestCopy();
    copy.Store().BkgPalette[4] = 0x7F;  // counts as 0x3F
    copy.Store().SpritePalette[9] = kBlackEntry;
    copy.Store().SpritePalette[8] = kBlackEntry;
    const Picture picture(copy);
    const Surface& image = picture.tiles.Picture();
    for (int palette = 0; palette < 4; ++palette) {
        const auto entry = static_cast<size_t>(palette) * 4;
        EXPECT_EQ(image.At({palette * 128 + 8, 0}), Bkg(copy, entry + 1));
        EXPECT_EQ(image.At({palette * 128 + 15, 7}), Bkg(copy, entry)) << "not the backdrop";
        EXPECT_EQ(image.At({palette * 128 + 16, 0}), Bkg(copy, entry + 3));
        EXPECT_EQ(image.At({palette * 128 + 24, 0}), Bkg(copy, entry + 2));
        EXPECT_EQ(image.At({palette * 128 + 24, 1}), Bkg(copy, entry));
    }
    EXPECT_EQ(image.At({2 * 128 + 8, 128}), 1u) << "opaque black is no key";
    EXPECT_EQ(image.At({2 * 128 + 12, 128}), 0u);

    // One sub-palette alone leaves the others as they were.
    Picture again(copy);
    copy.Store().BkgPalette.fill(kWhiteEntry);
    copy.Store().SpritePalette.fill(kRedEntry);
    again.tiles.Redraw(copy.Store().ChrData, copy.Store().BkgPalette, copy.Store().SpritePalette,
                       {2, 1}, {0, 0});
    const Surface& changed = again.tiles.Picture();
    for (int x = 0; x < changed.Width(); ++x) {
        EXPECT_EQ(changed.At({x, 0}) == 0xFFFFFF, x / 128 == 2) << x;
        EXPECT_EQ(changed.At({x, 128}), image.At({x, 128})) << x;
    }
}

TEST(NameTablePicture, BackgroundTakesAttributesAndLetsTheBackdropThrough) {
    WorkingCopy copy = TestCopy();
    copy.Store().BkgTileList = {{.X = 0, .Y = 0, .Tile = 1, .Palette = 3},
                                {.X = 2, .Y = 0, .Tile = 1},
                                {.X = 1, .Y = 2, .Tile = 1},
                                {.X = 31, .Y = 3, .Tile = 2},
                                {.X = 5, .Y = 5, .Tile = 2},
                                {.X = 5, .Y = 5, .Tile = 1},
                                {.X = 32, .Y = 0, .Tile = 2},
                                {.X = -1, .Y = 0, .Tile = 2},
                                {.X = 0, .Y = 30, .Tile = 2}};
    copy.Store().BkgPalette[0] = kBlueEntry;  // index 0 of sub-palette 0 is the backdrop's colour
    const Picture picture(copy);
    EXPECT_EQ(picture.At(0, 0), Bkg(copy, 1)) << "the record's own palette plays no part";
    EXPECT_EQ(picture.At(8, 0), kBackdrop);
    EXPECT_EQ(picture.At(32, 15), Bkg(copy, 5));
    EXPECT_EQ(picture.At(40, 15), Bkg(copy, 4)) << "index 0 of another sub-palette is opaque";
    EXPECT_EQ(picture.At(16, 32), Bkg(copy, 9));
    EXPECT_EQ(picture.At(511, 48), Bkg(copy, 15));
    EXPECT_EQ(picture.At(88, 80), kBackdrop) << "a later tile takes the earlier one away";

    copy.FillColor = true;
    const Picture filled(copy);
    EXPECT_EQ(filled.At(100, 0), Bkg(copy, 5)) << "an empty cell shows its attribute";
    EXPECT_EQ(filled.At(8, 0), kBackdrop) << "index 0 covers it";
    copy.Show_Bg_Tile = false;
    EXPECT_EQ(Picture(copy).At(8, 0), Bkg(copy, 1));
}

TEST(NameTablePicture, TextsAreOpaqueButForSpaces) {
    WorkingCopy copy = TestCopy();
    copy.Store().BkgTileList = {{.X = 0, .Y = 8, .Tile = 2}, {.X = 1, .Y = 8, .Tile = 2}};
    copy.Store().CustomText = {{.X = -2, .Y = 8, .Text = u"BBA A"},
                               {.X = 30, .Y = 8, .Text = u"BBBB"},
                               {.X = 3, .Y = 30, .Text = u"B"},
                               {.X = 3, .Y = 9, .Text = u"\u4E00B"}};
    copy.Store().CaptionText = u"B";
    copy.document.CaptionPos = {4, 8};
    copy.PageNumberText = u"B";
    copy.document.PageNumberPos = {6, 8};
    copy.ItemTextList = {u"B", u"", u"B"};
    copy.document.ItemPos = {8, 8};
    const Picture picture(copy);
    EXPECT_EQ(picture.At(0, 128), Bkg(copy, 1));
    EXPECT_EQ(picture.At(12, 128), Bkg(copy, 0)) << "index 0 of a character covers the tile";
    EXPECT_EQ(picture.At(16, 128), Bkg(copy, 3)) << "a space doesn't";
    EXPECT_EQ(picture.At(32, 128), Bkg(copy, 5));
    EXPECT_EQ(picture.At(511, 128), Bkg(copy, 7)) << "cut at the edge";
    EXPECT_EQ(picture.At(48, 144), kBackdrop) << "no entry in the map";
    EXPECT_EQ(picture.At(64, 144), Bkg(copy, 3));
    EXPECT_EQ(picture.At(64, 128), Bkg(copy, 3)) << "caption";
    EXPECT_EQ(picture.At(96, 128), kBackdrop) << "no page number asked for";
    EXPECT_EQ(picture.At(128, 128), Bkg(copy, 3)) << "list";
    EXPECT_EQ(picture.At(128, 144), kBackdrop);
    EXPECT_EQ(picture.At(128, 160), Bkg(copy, 11));

    copy.ShowPageNumber = true;
    copy.Show_Caption = copy.Show_List = copy.Show_Custom_Text = false;
    const Picture other(copy);
    EXPECT_EQ(other.At(96, 128), Bkg(copy, 7));
    EXPECT_EQ(other.At(64, 128), kBackdrop);
    EXPECT_EQ(other.At(128, 128), kBackdrop);
    EXPECT_EQ(other.At(12, 128), Bkg(copy, 3));
}

TEST(NameTablePicture, SpritesStandALineLateAndKnowTheirSideOfTheBackground) {
    WorkingCopy copy = TestCopy();
    constexpr uint8_t kH = TileItem::kFlipHorizontally, kV = TileItem::kFlipVertically;
    copy.Store().SpriteTileList = {
        {.X = 0, .Y = 1, .Tile = 2},
        {.X = 20, .Y = 0, .Tile = 2},
        {.X = 20, .Y = 239, .Tile = 2},
        {.X = 40, .Y = 240, .Tile = 2},
        {.X = 256, .Y = 9, .Tile = 2},
        {.X = 60, .Y = 10, .Tile = 1, .Palette = 2, .Flags = kH},
        {.X = 80, .Y = 10, .Tile = 3, .Palette = 1, .Flags = kV},
        {.X = 64, .Y = 63, .Tile = 2, .Flags = TileItem::kBehindBackground}};
    copy.Store().BkgTileList = {{.X = 8, .Y = 8, .Tile = 1}};
    copy.Store().BkgPalette[0] = kBlueEntry;
    const Picture picture(copy);
    EXPECT_EQ(picture.At(0, 3), kBackdrop);
    EXPECT_EQ(picture.At(0, 4), Sprite(copy, 3));
    EXPECT_EQ(picture.At(0, 19), Sprite(copy, 3));
    EXPECT_EQ(picture.At(0, 20), kBackdrop);
    EXPECT_EQ(picture.At(40, 5), kBackdrop) << "Y 0 isn't shown";
    EXPECT_EQ(picture.At(40, 479), kBackdrop) << "239 lies just below the picture";
    EXPECT_EQ(picture.At(120, 22), kBackdrop);
    EXPECT_EQ(picture.At(128, 22), Sprite(copy, 9)) << "mirrored";
    EXPECT_EQ(picture.At(160, 22), kBackdrop);
    EXPECT_EQ(picture.At(160, 37), Sprite(copy, 6)) << "upside down";
    EXPECT_EQ(picture.At(128, 128), Bkg(copy, 1)) << "in front of a sprite behind";
    EXPECT_EQ(picture.At(140, 128), Sprite(copy, 3)) << "where the background is empty";
    copy.Show_Sp_Tile = false;
    EXPECT_EQ(Picture(copy).At(0, 4), kBackdrop);
}

TEST(NameTablePicture, TallSpritesTakeTheirTableFromTheLowBit) {
    WorkingCopy copy = TestCopy();
    copy.Store().BigSprite = true;
    copy.Store().SpriteTileList = {
        {.X = 0, .Y = 9, .Tile = 3, .Palette = 1},   // tiles 2 and 3, sprites
        {.X = 20, .Y = 9, .Tile = 2, .Palette = 1},  // the background's
        {.X = 40, .Y = 9, .Tile = 3, .Flags = TileItem::kFlipVertically}};
    const Picture picture(copy);
    EXPECT_EQ(picture.At(0, 20), Sprite(copy, 7));
    EXPECT_EQ(picture.At(0, 36), Sprite(copy, 6)) << "the lower tile";
    EXPECT_EQ(picture.At(0, 38), kBackdrop);
    EXPECT_EQ(picture.At(40, 20), Bkg(copy, 7)) << "the background's colours";
    EXPECT_EQ(picture.At(80, 20), kBackdrop);
    EXPECT_EQ(picture.At(80, 35), Sprite(copy, 2)) << "tiles change places";
    EXPECT_EQ(picture.At(80, 36), Sprite(copy, 3));
}

TEST(NameTablePicture, CursorsAndTheirMarks) {
    WorkingCopy copy = TestCopy();
    copy.Show_Cursor = copy.MarkCursor = true;
    copy.Store().ArrowTile = {.X = 10, .Y = 20, .Tile = 2};
    copy.Store().ArrowTileList = {{.X = 100, .Y = 50, .Tile = 2},
                                  {.X = 108, .Y = 50, .Tile = 1},
                                  {.X = 100, .Y = 58, .Tile = 1},
                                  {.X = 108, .Y = 58, .Tile = 2},
                                  {.X = 200, .Y = 200, .Tile = 2}};
    copy.Store().BkgTileList = {{.X = 14, .Y = 6, .Tile = 2}};
    const Picture small(copy);
    EXPECT_EQ(small.At(21, 42), Sprite(copy, 3));
    EXPECT_EQ(small.At(20, 40), 0xFF8080u);
    EXPECT_EQ(small.At(36, 56), 0xFF8080u);
    EXPECT_EQ(small.At(202, 104), kBackdrop);
    copy.document.BigCursor = true;
    const Picture large(copy);
    EXPECT_EQ(large.At(21, 42), kBackdrop);
    EXPECT_EQ(large.At(202, 104), Sprite(copy, 3));
    EXPECT_EQ(large.At(226, 105), Bkg(copy, 15)) << "the key is the backdrop's colour";
    EXPECT_EQ(large.At(231, 133), Sprite(copy, 3)) << "the frame ends at 232, 132";
    EXPECT_EQ(large.At(232, 132), 0xFF8080u);
    EXPECT_EQ(large.At(402, 404), kBackdrop) << "the first four";
    // Tall cursors stand a line higher than tall sprites.
    copy.Store().BigSprite = true;
    copy.MarkCursor = false;
    for (TileItem& part : copy.Store().ArrowTileList)
        part.Tile = 3;
    const Picture tall(copy);
    EXPECT_EQ(tall.At(202, 100), Sprite(copy, 3));
    EXPECT_EQ(tall.At(202, 99), kBackdrop);
}

TEST(NameTablePicture, MarksLieOverEverything) {
    WorkingCopy copy = TestCopy();
    copy.DrawLine = true;
    copy.Store().SpriteTileList = {{.X = 20, .Y = 100, .Selected = 1, .Tile = 0}};
    copy.Store().BkgTileList = {{.X = 6, .Y = 6, .Selected = 1, .Tile = 0}};
    copy.Store().ArrowTile = {.X = 200, .Y = 100, .Selected = 1};
    const Picture picture(copy, RubberBand{{300, 300}, {9999, -50}});
    EXPECT_EQ(picture.At(1, 0), 0x808080u);
    EXPECT_EQ(picture.At(2, 0), kBackdrop);
    EXPECT_EQ(picture.At(1, 16), 0xFFFFFFu);
    EXPECT_EQ(picture.At(256, 300), 0x00FF00u);
    EXPECT_EQ(picture.At(3, 240), 0x00FF00u);
    EXPECT_EQ(picture.At(448, 448), 0xFF0000u);
    EXPECT_EQ(picture.At(511, 479), 0xFF0000u) << "closed at the edge";
    EXPECT_EQ(picture.At(40, 201), 0x00FFFFu);
    EXPECT_EQ(picture.At(56, 218), 0x00FFFFu);
    EXPECT_EQ(picture.At(96, 112), 0xFFFF00u);
    EXPECT_EQ(picture.At(399, 199), 0x80FF00u);
    EXPECT_EQ(picture.At(416, 215), 0x80FF00u);
    EXPECT_EQ(picture.At(511, 100), 0xFF00FFu);
    EXPECT_EQ(picture.At(300, 100), 0xFF00FFu);
    EXPECT_EQ(picture.At(350, 0), 0xFF00FFu);
}

TEST(NameTablePicture, AbsurdPositionsDoNoHarm) {
    constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
    constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
    for (const int32_t far : {kMin, kMin / 2, -600, 600, kMax / 2, kMax}) {
        WorkingCopy copy = TestCopy();
        const TileItem item{.X = far, .Y = far, .Selected = 1, .Tile = 255, .Palette = 255};
        copy.Store().BkgTileList =
            copy.Store().SpriteTileList = {item, {.X = 3, .Y = 3, .Palette = 255}};
        copy.Store().ArrowTileList = {4, item};
        copy.Store().ArrowTile = item;
        copy.Store().CustomText = {{.X = far, .Y = far, .Text = u"AB"},
                                   {.X = far, .Y = 3, .Text = u"AB"}};
        copy.ItemTextList.assign(40, u"AB");
        copy.Store().CaptionText = u"AB";
        copy.document.CaptionPos = copy.document.PageNumberPos = copy.document.ItemPos = {far, far};
        copy.Show_Cursor = copy.MarkCursor = copy.ShowPageNumber = true;
        for (const bool big : {false, true}) {
            copy.document.BigCursor = copy.Store().BigSprite = big;
            EXPECT_EQ(Picture(copy).At(300, 300), kBackdrop);
        }
    }
}

TEST(SmallViews, ShowTheCurrentPlaces) {
    WorkingCopy copy = TestCopy();
    copy.BkgPalettePos = {9, 0};
    copy.SpPalettePos = {4, 0};
    copy.BkgTilePos = {2, 0};
    copy.SpTilePos = {3, 1};
    copy.Store().BigSprite = true;
    copy.BkgPixelPos = {7, 7};
    copy.Store().BkgTileSelected[255] = 1;
    copy.CurrentAttribute = 0xE4;
    copy.SystemPalettePos = {15, 3};
    copy.SpritePaletteActive = true;
    copy.MapSourcePos = copy.MapTargetPos = {63, 0};
    const Picture picture(copy);

    Surface patterns = MakePatternView();
    DrawPatternView(patterns, PatternTable::kBackground, copy, picture.tiles, {});
    EXPECT_EQ(patterns.At({18, 2}), Bkg(copy, 9)) << "sub-palette 2";
    EXPECT_EQ(patterns.At({31, 0}), 0xFF0000u) << "a pixel outside the tile's frame";
    EXPECT_EQ(patterns.At({32, 5}), 0xFF0000u);
    EXPECT_EQ(patterns.At({240, 250}), 0xFFFF00u);
    EXPECT_EQ(patterns.At({101, 64}), 0xFFFFFFu);
    DrawPatternView(patterns, PatternTable::kSprites, copy, picture.tiles, {});
    EXPECT_EQ(patterns.At({32, 20}), 0xFF0000u) << "both tiles of a tall sprite";
    EXPECT_EQ(patterns.At({64, 20}), 0xFF0000u);
    EXPECT_EQ(patterns.At({48, 20}), Sprite(copy, 4));

    Surface editor = MakeTileEditor();
    DrawTileEditor(editor, PatternTable::kBackground, copy, picture.tiles);
    EXPECT_EQ(editor.At({5, 5}), Bkg(copy, 11));
    EXPECT_EQ(editor.At({112, 120}), 0xFF0000u);

    Surface attribute = MakeAttributeView();
    DrawAttributeView(attribute, copy);
    EXPECT_EQ(attribute.At({10, 10}), Bkg(copy, 1));
    EXPECT_EQ(attribute.At({70, 10}), Bkg(copy, 5));
    EXPECT_EQ(attribute.At({10, 70}), Bkg(copy, 9));
    EXPECT_EQ(attribute.At({70, 70}), Bkg(copy, 13));
    EXPECT_EQ(attribute.At({64, 30}), 0xFF0000u);

    Surface palette = MakePaletteView();
    DrawPaletteView(palette, PatternTable::kSprites, copy);
    EXPECT_EQ(palette.At({0, 0}), 0xFF0000u) << "the active side";
    EXPECT_EQ(palette.At({64, 8}), 0xFFFF00u);
    EXPECT_EQ(palette.At({72, 8}), Sprite(copy, 4));
    DrawPaletteView(palette, PatternTable::kBackground, copy);
    EXPECT_EQ(palette.At({0, 0}), Bkg(copy, 0));

    Surface system = MakeSystemPalette();
    DrawSystemPalette(system, copy);
    EXPECT_EQ(system.At({8, 24}), 0xBEBEBEu);
    EXPECT_EQ(system.At({240, 48}), 0xFFFF00u);

    Surface strip = MakeStrip();
    DrawSourceStrip(strip, copy, picture.tiles);
    EXPECT_EQ(strip.At({('A' - 32) * 16 + 2, 2}), Bkg(copy, 9));
    EXPECT_EQ(strip.At({1008, 5}), 0xFF0000u);
    EXPECT_EQ(strip.At({32, 5}), 0x808080u);
    copy.Store().ChrData['A' * 16 + 1] = 0xFF;
    DrawTargetStrip(strip, copy, MakeFontImage(copy.Store().ChrData));
    EXPECT_EQ(strip.At({('A' - 32) * 16 + 2, 2}), 0xFFFFFFu);
    EXPECT_EQ(strip.At({('A' - 32) * 16 + 2, 4}), 0u);
}

}  // namespace
}  // namespace bw
