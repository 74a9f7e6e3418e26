// The designer's views of a sample design, all on one sheet as its window lays them out, against a
// picture that a person has looked at: golden/designer.png. With BANKWEAVER_NEW_GOLDEN=FOLDER the
// sheet is left there, to be looked at and to become the new one.
#include <cstdlib>

#include <gtest/gtest.h>

#include "designer/files/design_folder.h"
#include "designer/files/png_file.h"
#include "designer/files/surface_png.h"
#include "designer/gestures/designer_layout.h"
#include "designer/pictures/designer_views.h"
#include "designer/tools/text_tools.h"
#include "support/files.h"

namespace bw {
namespace {

// Everything that can be marked is.
WorkingCopy MarkedDesign() {
    WorkingCopy copy;
    std::vector<uint8_t> bytes;
    EXPECT_EQ(PackDesign(std::filesystem::path(BANKWEAVER_DESIGNS) / "loom", bytes), std::nullopt);
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

Surface Sheet(const DesignerViews& views) {
    Surface sheet(1088, 864, 0xC0C0C0);
    const DesignerLayout layout;
    const std::pair<Control, View> places[] = {
        {Control::kNameTable, View::kNameTable},
        {Control::kBkgTileList, View::kBkgTileList},
        {Control::kSpriteTileList, View::kSpriteTileList},
        {Control::kBkgTileEditor, View::kBkgTileEditor},
        {Control::kSpriteTileEditor, View::kSpriteTileEditor},
        {Control::kAttribute, View::kAttribute},
        {Control::kBkgPalette, View::kBkgPalette},
        {Control::kSpritePalette, View::kSpritePalette},
        {Control::kSystemPalette, View::kSystemPalette},
        {Control::kTargetStrip, View::kTargetStrip},
        {Control::kSourceStrip, View::kSourceStrip}};
    for (const auto& [control, view] : places) {
        const Surface& picture = views.Of(view);
        Copy(sheet, layout.Origin(control), {picture, {0, 0}, picture.Width(), picture.Height()});
    }
    return sheet;
}

TEST(GoldenViews, LookAsTheyDid) {
    const WorkingCopy copy = MarkedDesign();
    DesignerViews views;
    views.Update(copy, Views::All(),
                 RubberBands{{{40, 330}, {200, 420}}, {{100, 100}, {150, 130}}, {{5, 5}, {9, 9}}});
    const Surface sheet = Sheet(views);
    if (const char* folder = std::getenv("BANKWEAVER_NEW_GOLDEN")) {
        WriteFile(std::filesystem::path(folder) / "designer.png", SurfacePng(sheet));
    }
    const auto png = ReadFile(std::filesystem::path(BANKWEAVER_GOLDEN) / "designer.png");
    ASSERT_TRUE(png);
    Picture golden;
    ASSERT_EQ(DecodePng(*png, 1088, 864, golden), std::nullopt);
    size_t differing = 0;
    for (size_t i = 0; i < golden.pixels.size(); ++i)
        differing += golden.pixels[i] != sheet.Pixels()[i] ? 1 : 0;
    EXPECT_EQ(differing, 0u) << "pixels";
}

}  // namespace
}  // namespace bw
