#include "builder/design_check/design_check.h"

#include <functional>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/design_check/finding_place.h"
#include "builder/resources.h"
#include "designer/model/tiles.h"
#include "designer/tools/text_tools.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
constexpr FindingSeverity kError = FindingSeverity::kError;
constexpr FindingSeverity kWarning = FindingSeverity::kWarning;
constexpr FindingSeverity kNote = FindingSeverity::kNote;
constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

// Twelve games on pages of 10 at column 9, row 5, the cursors beside them.
WorkingCopy CleanDesign() {
    WorkingCopy copy;
    LoadDesignData(copy.Store(), *MakeMemoryStore(), DefaultTileSet());
    SetItems(copy, std::vector<std::u16string>(12, u"A GAME"), 10, false);
    copy.Store().CaptionText = u"12 IN 1";
    copy.Store().ArrowTileList.clear();
    ResetSmallCursor(copy.document);
    RebuildShortLargeCursor(copy.document);
    return copy;
}

void AddText(WorkingCopy& copy, Pos place, const std::u16string& text) {
    copy.Store().CustomText.push_back({.X = place.X, .Y = place.Y, .Text = text});
}
// Of the letter "A", with a colour for each palette.
void AddSprite(WorkingCopy& copy, Pos place, uint8_t palette = 0, uint8_t tile = 'A') {
    copy.Store().SpriteTileList.push_back(
        {.X = place.X, .Y = place.Y, .Tile = tile, .Palette = palette});
}
void AddRowOfSprites(WorkingCopy& copy, int32_t count, int32_t y) {
    for (int32_t i = 0; i < count; ++i)
        AddSprite(copy, {80 + i * 16, y});
}
void FillTable(WorkingCopy& copy, PatternTable table) {
    for (int tile = 0; tile < kTileCount; ++tile)
        TileAt(copy.Store(), table, tile)[0] |= 1;
    // Cells without a tile would show it.
    copy.Store().SpriteTileList.clear();
}

struct Case {
    const char* name;
    std::function<void(WorkingCopy&)> change;
    FindingSeverity severity;
    TextId kind;
    DesignPlace place;
    const char* words;  // of the finding
};

const Case kCases[] = {
    // What a build refuses.
    {"caption below",
     [](auto& copy) {
         copy.document.CaptionPos = {3, 30};
     },
     kError, TextId::kFindingAsItStands, ScreenObject::kCaption, "$23C3"},
    {"list above",
     [](auto& copy) {
         copy.document.ItemPos = {3, -1};
     },
     kError, TextId::kFindingAsItStands, ScreenObject::kList, "list of games"},
    {"page number at the end",
     [](auto& copy) {
         copy.ShowPageNumber = true;
         copy.document.PageNumberPos = {31, 29};
     },
     kError, TextId::kFindingAsItStands, ScreenObject::kPageNumber, "page number"},
    {"page too long", [](auto& copy) { copy.document.ItemPos.Y = 21; }, kError,
     TextId::kFindingPageSize, ScreenObject::kList, "room for 9 names, and it is to have 10"},
    {"page too long later",
     [](auto& copy) {
         SetItems(copy, {u"A"}, 15, true);
         copy.document.ItemPos.Y = 2;
     },
     kWarning, TextId::kFindingPageSize, ScreenObject::kList, "room for 14 names"},
    {"past the bank",
     [](auto& copy) {
         for (int32_t i = 0; i < 705; ++i)
             AddSprite(copy, {i % 250, 1 + i % 220});
     },
     kError, TextId::kFindingSpritesPastBank, PlacedSprite{63}, "705 sprites"},
    // Characters.
    {"tile 0", [](auto& copy) { copy.Store().CharMapData['G'] = 0; }, kWarning,
     TextId::kFindingUnmapped, StripCharacter{'G'}, "(name 1)"},
    {"blank tile", [](auto& copy) { copy.Store().CharMapData['1'] = 0x80; }, kWarning,
     TextId::kFindingBlankCharacter, StripCharacter{'1'}, "(caption): its tile 80 is"},
    {"digit of the page number",
     [](auto& copy) {
         copy.ShowPageNumber = true;
         copy.Store().CaptionText = u"A";
         copy.Store().CharMapData['2'] = 0;
     },
     kWarning, TextId::kFindingUnmapped, StripCharacter{'2'}, "(page number)"},
    {"small letter",
     [](auto& copy) {
         AddText(copy, {1, 3}, u"\u00E9");
     },
     kWarning, TextId::kFindingNoCharacter, PlacedText{0}, "(code 233) isn't seen (text 1)"},
    {"foreign character", [](auto& copy) { copy.Store().CaptionText = u"\u4F60"; }, kWarning,
     TextId::kFindingForeignCharacter, ScreenObject::kCaption, "\xE4\xBD\xA0"},
    // Texts and what the menu writes.
    {"caption elsewhere",
     [](auto& copy) {
         copy.document.CaptionPos = {-2, 3};
     },
     kWarning, TextId::kFindingElsewhere, ScreenObject::kCaption, "column 30, row 2"},
    {"caption cut", [](auto& copy) { copy.document.CaptionPos.X = 27; }, kWarning,
     TextId::kFindingCaptionCut, ScreenObject::kCaption, "the last 2 characters"},
    {"names cut", [](auto& copy) { copy.AllItemTextList[3].assign(24, u'A'); }, kWarning,
     TextId::kFindingNamesCut, ScreenObject::kList, "1 name(s) are too long for the 23 columns"},
    {"page number wraps",
     [](auto& copy) {
         copy.ShowPageNumber = true;
         copy.document.PageNumberPos.X = 30;
     },
     kWarning, TextId::kFindingPageNumberCut, ScreenObject::kPageNumber, "next row"},
    {"text outside",
     [](auto& copy) {
         AddText(copy, {-4, 3}, u"TEXT  ");
     },
     kWarning, TextId::kFindingTextOutside, PlacedText{0}, "text 1 (\"TEXT  \")"},
    {"text cut",
     [](auto& copy) {
         AddText(copy, {-1, 3}, u"TEXT");
     },
     kWarning, TextId::kFindingTextCut, PlacedText{0}, "cuts text 1"},
    {"text in a hidden row",
     [](auto& copy) {
         AddText(copy, {1, 29}, u"TEXT");
     },
     kNote, TextId::kFindingHiddenRow, PlacedText{0}, "Row 29"},
    {"last name in a hidden row",
     [](auto& copy) {
         copy.document.ItemPos.Y = 20;
         ResetSmallCursor(copy.document);
         copy.Store().ArrowTile.Y -= 8;
     },
     kNote, TextId::kFindingHiddenRow, ScreenObject::kList, "Row 29"},
    {"text over the list",
     [](auto& copy) {
         AddText(copy, {10, 7}, u" X Y");
     },
     kWarning, TextId::kFindingOverlap, PlacedText{0},
     "Column 11, row 7: text 1 (\" X Y\") and list of"},
    {"caption over the page number",
     [](auto& copy) {
         copy.ShowPageNumber = true;
         copy.document.PageNumberPos = copy.document.CaptionPos;
     },
     kWarning, TextId::kFindingOverlap, ScreenObject::kPageNumber, "page number and caption"},
    // The cursor.
    {"cursor outside", [](auto& copy) { copy.Store().ArrowTile.X = 256; }, kWarning,
     TextId::kFindingCursorOutside, ScreenObject::kCursor, "outside the screen"},
    {"cursor leaves at the last name", [](auto& copy) { copy.Store().ArrowTile.Y = 162; }, kWarning,
     TextId::kFindingCursorLeaves, ScreenObject::kCursor, "At name 10"},
    {"cursor hidden", [](auto& copy) { copy.Store().ArrowTile.Y = 155; }, kNote,
     TextId::kFindingCursorHidden, ScreenObject::kCursor, "At name 10"},
    {"cursor over a text",
     [](auto& copy) {
         AddText(copy, {copy.Store().ArrowTile.X / 8, 7}, u"XX");
     },
     kWarning, TextId::kFindingCursorCovers, ScreenObject::kCursor,
     "At name 3 of a page the cursor covers t"},
    {"cursor blank", [](auto& copy) { copy.Store().ArrowTile.Tile = 0; }, kWarning,
     TextId::kFindingCursorBlank, ScreenObject::kCursor, "shows nothing"},
    {"part of the cursor hidden",
     [](auto& copy) {
         copy.document.BigCursor = 1;
         copy.Store().ArrowTileList[1].Tile = 0;
     },
     kWarning, TextId::kFindingCursorPartHidden, ScreenObject::kCursor, "part 4"},
    {"parts of the cursor cross",
     [](auto& copy) {
         copy.document.BigCursor = 1;
         copy.Store().ArrowTileList[1].X -= 4;
     },
     kWarning, TextId::kFindingCursorPartsCross, ScreenObject::kCursor, "Parts 1 and 2"},
    {"cursor on a crowded line", [](auto& copy) { AddRowOfSprites(copy, 8, 70); }, kWarning,
     TextId::kFindingCursorOnLine, ScreenObject::kCursor,
     "At name 4 of a page the cursor brings 9"},
    {"cursor over a sprite",
     [](auto& copy) {
         AddSprite(copy, {copy.Store().ArrowTile.X, 100}, 1);
     },
     kWarning, TextId::kFindingCursorCrosses, PlacedSprite{0}, "crosses sprite 1"},
    // Sprites.
    {"too many sprites",
     [](auto& copy) {
         for (int32_t i = 0; i < 64; ++i)
             AddSprite(copy, {i % 7 * 20, 130 + i / 7 * 9});
     },
     kWarning, TextId::kFindingSpritesLeftOut, PlacedSprite{63}, "64 sprites"},
    {"sprites on a line", [](auto& copy) { AddRowOfSprites(copy, 9, 180); }, kWarning,
     TextId::kFindingSpritesOnLine, PlacedSprite{8}, "9 sprites stand on line(s) 181-188"},
    {"tall sprites on a line",
     [](auto& copy) {
         AddRowOfSprites(copy, 8, 180);
         AddSprite(copy, {8, 165});
         copy.Store().BigSprite = 1;
     },
     kWarning, TextId::kFindingSpritesOnLine, PlacedSprite{8}, "line(s) 181."},
    {"sprite outside",
     [](auto& copy) {
         AddSprite(copy, {8, 239});
     },
     kWarning, TextId::kFindingSpriteOutside, PlacedSprite{0}, "Sprite 1"},
    {"sprite blank",
     [](auto& copy) {
         AddSprite(copy, {8, 180}, 0, 0x80);
     },
     kWarning, TextId::kFindingSpriteBlank, PlacedSprite{0}, "its tile 80"},
    {"sprites cross",
     [](auto& copy) {
         AddSprite(copy, {20, 180});
         AddSprite(copy, {22, 181}, 1);
     },
     kWarning, TextId::kFindingSpritesCross, PlacedSprite{1}, "Sprite 2 crosses sprite 1"},
    // Tables.
    {"backdrop", [](auto& copy) { copy.Store().BkgPalette[8] = 0x11; }, kWarning,
     TextId::kFindingBkgBackdrop, PaletteEntry{kBkg, 8}, "palette 2 is 11"},
    {"backdrop of sprites", [](auto& copy) { copy.Store().SpritePalette[4] = 0x11; }, kWarning,
     TextId::kFindingSpriteBackdrop, PaletteEntry{kSprites, 4}, "palette 1 is 11"},
    {"empty cells",
     [](auto& copy) {
         TileAt(copy.Store(), kBkg, 0)[0] = 1;
         copy.Store().BkgTileList = {{.X = 0, .Y = 0, .Tile = 1}};
     },
     kWarning, TextId::kFindingEmptyCells, ScreenCell{1, 0}, "959 cells"},
    {"unused tiles", [](auto& copy) { FillTable(copy, kSprites); }, kNote,
     TextId::kFindingUnusedSpriteTiles, TableTile{kSprites, 1}, "Clear unused sprite tiles"},
};

TEST(DesignCheck, NamesEachKindOfProblemAndItsPlace) {
    EXPECT_THAT(CheckDesign(CleanDesign(), Language::kEnglish), IsEmpty());
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        WorkingCopy copy = CleanDesign();
        c.change(copy);
        const auto findings = CheckDesign(copy, Language::kEnglish);
        const bool crowded = c.kind == TextId::kFindingSpritesPastBank;
        EXPECT_TRUE(findings.size() == 1 || crowded)
            << (findings.empty() ? "" : ToUtf8(findings.back().text));
        if (findings.empty()) continue;
        EXPECT_EQ(findings[0].severity, c.severity);
        EXPECT_EQ(findings[0].kind, c.kind);
        EXPECT_EQ(findings[0].place, c.place);
        EXPECT_THAT(ToUtf8(findings[0].text), HasSubstr(c.words));
        EXPECT_NE(CheckDesign(copy, Language::kChinese)[0].text, findings[0].text);
    }
}

// What looks like one of them and is none.
TEST(DesignCheck, PassesWhatIsAllRight) {
    const std::function<void(WorkingCopy&)> changes[] = {
        [](auto& copy) { copy.document.BigCursor = 1; },
        [](auto& copy) { copy.Store().CharMapData['Z'] = 0; },
        [](auto& copy) {
            AddText(copy, {-2, 3}, u"  TEXT");
        },
        [](auto& copy) {
            AddText(copy, {10, 7}, u" ");
        },
        [](auto& copy) {
            copy.document.PageNumberPos = {-1, -1};
        },
        [](auto& copy) { AddRowOfSprites(copy, 8, 180); },
        [](auto& copy) {  // the same colours: nobody sees which is in front
            AddSprite(copy, {20, 180});
            AddSprite(copy, {22, 181});
        },
        [](auto& copy) { copy.Store().BkgPalette[4] |= 0x40; },
        [](auto& copy) { SetItems(copy, {}, 10, false); },
    };
    size_t number = 0;
    for (const auto& change : changes) {
        WorkingCopy copy = CleanDesign();
        change(copy);
        ++number;
        const auto findings = CheckDesign(copy, Language::kEnglish);
        EXPECT_THAT(findings, IsEmpty()) << number << ToUtf8(findings[0].text);
    }
}

// Numbers of files are any; each finding must lead somewhere, however odd they are.
TEST(DesignCheck, TakesAnyNumbers) {
    const int32_t numbers[] = {std::numeric_limits<int32_t>::min(), -0x08000000, -1, 0, 0x08000000,
                               std::numeric_limits<int32_t>::max()};
    for (const int32_t x : numbers) {
        for (const int32_t y : numbers) {
            WorkingCopy copy = CleanDesign();
            copy.document.CaptionPos = copy.document.ItemPos = copy.document.PageNumberPos = {x, y};
            copy.ShowPageNumber = true;
            copy.PageItemCount = x;
            for (int i = 0; i < 30; ++i)
                AddText(copy, {x, y}, u"\xFFFF");
            AddSprite(copy, {x, y}, 0xFF);
            copy.Store().BkgTileList = {{.X = x, .Y = y}};
            copy.Store().ArrowTile.X = copy.Store().ArrowTileList[2].Y = x;
            copy.document.BigCursor = static_cast<uint8_t>(y);
            const auto findings = CheckDesign(copy, Language::kEnglish);
            EXPECT_THAT(findings, testing::Not(IsEmpty()));
            EXPECT_LT(findings.size(), 80u);
            for (const DesignFinding& finding : findings) {
                const Rect part = WhereShown(copy, finding.place).part;
                EXPECT_TRUE(part.at.x >= 0 && part.at.y >= 0 && part.at.x + part.width <= 1024 &&
                            part.at.y + part.height <= 480);
                GoToPlace(copy, finding.place);
                EXPECT_TRUE(copy.NameCellPos.X >= 0 && copy.NameCellPos.X < 32 &&
                            copy.NameCellPos.Y >= 0 && copy.NameCellPos.Y < 30);
            }
        }
    }
}

TEST(DesignCheck, LeadsToThePlace) {
    WorkingCopy copy = CleanDesign();
    AddSprite(copy, {20, 180});
    AddSprite(copy, {22, 181}, 1, 0x42);
    AddText(copy, {5, 27}, u"TEXT");
    copy.Show_Sp_Tile = false;
    EXPECT_TRUE(GoToPlace(copy, PlacedSprite{1}).Has(View::kCheckBoxes));
    EXPECT_TRUE(copy.Show_Sp_Tile && copy.Store().SpriteTileList[1].IsSelected());
    EXPECT_EQ(copy.SpTilePos, (Pos{2, 4}));
    GoToPlace(copy, PlacedText{0});
    EXPECT_EQ(copy.NameCellPos, (Pos{5, 27}));
    EXPECT_EQ(copy.AttrCellPos, (Pos{2, 13}));
    GoToPlace(copy, StripCharacter{'A'});
    EXPECT_EQ(copy.MapSourcePos.X, 33);
    GoToPlace(copy, PaletteEntry{kSprites, 4});
    EXPECT_EQ(copy.SpPalettePos.X, 4);
    EXPECT_TRUE(copy.SpritePaletteActive);
    GoToPlace(copy, TableTile{kBkg, 0x1F});
    EXPECT_EQ(copy.BkgTilePos, (Pos{15, 1}));
    const ViewPart part = WhereShown(copy, PlacedText{0});
    EXPECT_EQ(part.view, Control::kNameTable);
    EXPECT_EQ(part.part.at, (Point{80, 432}));
    EXPECT_EQ(part.part.width, 64);
}

}  // namespace
}  // namespace bw
