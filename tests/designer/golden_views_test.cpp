// The designer's views of designs, all on one sheet as its window lays them out, against pictures
// that a person has looked at: golden/*.png. With BANKWEAVER_NEW_GOLDEN=FOLDER the sheets are left
// there, to be looked at and to become the new ones.
#include <array>
#include <cstdlib>

#include "design_items.h"
#include "designer/files/design_folder.h"
#include "designer/files/png_file.h"
#include "designer/files/surface_png.h"
#include "designer/gestures/designer_layout.h"
#include "designer/gestures/ghost.h"
#include "designer/pictures/designer_views.h"
#include "designer/tools/text_tools.h"
#include "support/files.h"

namespace bw {
namespace {

constexpr uint8_t kV = TileItem::kFlipVertically, kH = TileItem::kFlipHorizontally;
constexpr uint8_t kBehind = TileItem::kBehindBackground;

// Everything that can be marked is.
WorkingCopy MarkedDesign() {
    WorkingCopy copy;
    std::vector<uint8_t> bytes;
    const auto folder = std::filesystem::path(BANKWEAVER_DESIGNS) / "loom";
    EXPECT_EQ(PackDesign(folder, bytes, Language::kEnglish), std::nullopt);
    EXPECT_EQ(ReadDesign(bytes, copy.document, Language::kEnglish), std::nullopt);
    DesignStore& store = copy.Store();
    store.DefaultChrData = store.ChrData;  // the tile set stands in for the font
    store.CaptionText = u"9 IN 1";
    SetItems(copy, std::vector<std::u16string>(9, u"A name of the list"), 5, true);
    copy.ShowPageNumber = copy.DrawLine = copy.MarkCursor = true;
    copy.BkgTilePos = {3, 11};
    copy.SpTilePos = {1, 0};
    copy.BkgPalettePos = {6, 0};
    copy.SpPalettePos = {9, 0};
    copy.BkgPixelPos = {2, 5};
    copy.SpPixelPos = {7, 0};
    copy.AttrBytePos = {2, 3};
    copy.AttrCellPos = {5, 6};
    copy.NameCellPos = {11, 13};
    copy.CurrentAttribute = 0x1B;
    copy.SystemPalettePos = {8, 3};
    copy.MapSourcePos = copy.MapTargetPos = {33, 0};
    store.BkgTileSelected[17] = store.SpriteTileSelected[40] = 1;
    store.SpriteTileList.at(0).Selected = store.BkgTileList.at(200).Selected = 1;
    return copy;
}

// Tiles whose corners and index 0 tell how they lie: 1 has an L, 2 is full but for a corner, 3 a
// bar at the top.
void DrawTestTiles(DesignStore& store) {
    for (const PatternTable table : {kBkg, kSp}) {
        for (const int tile : {0, 1, 2, 3})
            FillTile(store, table, tile, tile == 2 ? 0xFF : 0);
        const auto row = [&](int tile, size_t at, uint8_t bits) {
            TileAt(store, table, tile)[at] = bits;
        };
        for (size_t y = 0; y < 7; ++y)
            row(1, y, 0x80);
        row(1, 7, 0xFE);
        row(2, 0, 0x3F);
        row(3, 8, 0xFF);
    }
    store.CharMapData['A'] = 1;
    store.CharMapData['B'] = 2;
}

// What stands over another thing, at an edge of the screen or beyond it, and turned sprites.
void Crowd(WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    DrawTestTiles(store);
    store.Attributes.fill(0xE4);
    for (size_t i = 0; i < kPaletteSize; ++i) {
        store.BkgPalette[i] = static_cast<uint8_t>(i % 4 * 16 + i / 4 * 3 + 1);
        store.SpritePalette[i] = static_cast<uint8_t>(i % 4 * 16 + i / 4 * 3 + 2);
    }
    store.BkgPalette[0] = store.SpritePalette[0];            // the backdrop's colour
    store.BkgPalette[4] = 0x7F;                              // counts as 0x3F
    store.SpritePalette[8] = store.SpritePalette[9] = 0x0F;  // black on black that is no key
    copy.markPlaces = copy.DrawLine = false;
    // Index, X, Y, Selected, Tile, Palette, Flags
    store.BkgTileList = {{0, 0, 0, 0, 1, 3}, {0, 2, 0, 0, 1}, {0, 1, 2, 0, 1},  {0, 31, 3, 0, 2},
                         {0, 5, 5, 0, 2},    {0, 5, 5, 0, 1}, {0, 32, 0, 0, 2}, {0, -1, 0, 0, 2},
                         {0, 0, 30, 0, 2},   {0, 8, 8, 0, 1}, {0, 0, 9, 0, 2},  {0, 1, 9, 0, 2}};
    store.SpriteTileList = {{0, 0, 40, 0, 2},
                            {0, 20, 0, 0, 2},
                            {0, 20, 239, 0, 2},
                            {0, 40, 230, 0, 1},
                            {0, 250, 20, 0, 3},
                            {0, 256, 9, 0, 2},
                            {0, 60, 10, 0, 1, 2, kH},
                            {0, 80, 10, 0, 3, 1, kV},
                            {0, 64, 63, 0, 2, 0, kBehind},
                            {0, 90, 63, 1, 1, 0, kH | kV},
                            {0, 110, 63, 0, 2, 1}};
    store.CustomText = {
        {0, -2, 9, u"BBA A"}, {0, 30, 9, u"BBBB"}, {0, 3, 30, u"B"}, {0, 3, 10, u"\u4E00B"}};
    copy.PlacedText = TextItem{.Index = 0, .X = 9, .Y = 10, .Text = u"AB"};
    store.ArrowTile = {.X = 10, .Y = 90, .Selected = 1, .Tile = 1};
    store.ArrowTileList = {{0, 100, 90, 0, 2},
                           {0, 108, 90, 0, 1},
                           {0, 100, 98, 1, 1},
                           {0, 108, 98, 0, 3},
                           {0, 200, 200, 0, 2}};
    copy.SpritePaletteActive = true;
}

void MakeTall(WorkingCopy& copy) {
    Crowd(copy);
    copy.document.BigCursor = copy.Store().BigSprite = 1;
    copy.FillColor = copy.DrawLine = true;
    copy.Show_Caption = copy.Show_List = copy.Show_Custom_Text = false;
    copy.SpTilePos = {3, 0};
    for (TileItem& part : copy.Store().ArrowTileList)
        part.Tile |= 1;
}

void Put(Surface& sheet, Point at, const Surface& picture) {
    Copy(sheet, at, {picture, {0, 0}, picture.Width(), picture.Height()});
}

// Below the views the ghosts of the first sprites.
Surface Sheet(const DesignerViews& views, const DesignStore& store) {
    Surface sheet(1088, 864, 0xC0C0C0);
    const DesignerLayout layout;
    constexpr std::array kViews = {
        // in the order of Control
        View::kBkgTileList, View::kBkgTileEditor, View::kSpriteTileList, View::kSpriteTileEditor,
        View::kTargetStrip, View::kSourceStrip,   View::kNameTable,      View::kAttribute,
        View::kBkgPalette,  View::kSpritePalette, View::kSystemPalette};
    for (size_t i = 0; i < kViews.size(); ++i)
        Put(sheet, layout.Origin(static_cast<Control>(i)), views.Of(kViews[i]));
    TileImage tiles;
    tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, {}, {});
    Point at{16, 650};
    for (const TileItem& sprite : store.SpriteTileList) {
        if (at.x > 400) break;
        Put(sheet, at, DrawGhost(SpriteGhost(sprite, store.BigSprite != 0), tiles));
        at.x += 24;
    }
    return sheet;
}

TEST(TileImage, OneSubPaletteLeavesTheOthersAsTheyWere) {
    DesignStore store;
    TileImage tiles;
    const auto redraw = [&](uint8_t colour, SubPalettes bkg, SubPalettes sprites) {
        store.BkgPalette.fill(colour);
        store.SpritePalette.fill(colour);
        tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, bkg, sprites);
    };
    redraw(0x20, {}, {});
    redraw(0x16, {2, 1}, {0, 0});
    for (int x = 0; x < tiles.Picture().Width(); ++x) {
        EXPECT_EQ(tiles.Picture().At({x, 0}) == 0xFFFFFF, x / 128 != 2) << x;
        EXPECT_EQ(tiles.Picture().At({x, 128}), 0xFFFFFFu) << x;
    }
}

TEST(GoldenViews, LookAsTheyDid) {
    const std::pair<const char*, void (*)(WorkingCopy&)> sheets[] = {
        {"designer.png", [](WorkingCopy&) {}}, {"crowded.png", Crowd}, {"tall.png", MakeTall}};
    for (const auto& [name, change] : sheets) {
        WorkingCopy copy = MarkedDesign();
        change(copy);
        DesignerViews views;
        views.Update(
            copy, Views::All(),
            RubberBands{{{40, 330}, {200, 420}}, {{100, 100}, {150, 130}}, {{5, 5}, {9, 9}}});
        const Surface sheet = Sheet(views, copy.Store());
        if (const char* folder = std::getenv("BANKWEAVER_NEW_GOLDEN")) {
            WriteFile(std::filesystem::path(folder) / name, SurfacePng(sheet));
        }
        const auto png = ReadFile(std::filesystem::path(BANKWEAVER_GOLDEN) / name);
        ASSERT_TRUE(png) << name;
        Picture golden;
        ASSERT_EQ(DecodePng(*png, 1088, 864, golden), std::nullopt);
        size_t differing = 0;
        for (size_t i = 0; i < golden.pixels.size(); ++i)
            differing += golden.pixels[i] != sheet.Pixels()[i] ? 1 : 0;
        EXPECT_EQ(differing, 0u) << "pixels of " << name;
    }
}

}  // namespace
}  // namespace bw
