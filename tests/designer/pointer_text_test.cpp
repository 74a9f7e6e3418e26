#include "designer/gestures/pointer_text.h"

#include "gesture_bench.h"
#include "support/text.h"

namespace bw {
namespace {

using enum Control;

class PointerWords : public testing::Test, protected GestureBench {
  protected:
    PointerWords() {
        for (size_t i = 0; i < kChrDataSize; ++i)
            store.ChrData[i] = static_cast<uint8_t>(i / kTileBytes);
        SetDefaultCharMap(store);
        store.Attributes.fill(0xE4);
        store.BkgPalette = store.SpritePalette = {};
        for (size_t i = 0; i < kPaletteSize; ++i) {
            store.BkgPalette[i] = static_cast<uint8_t>(0x10 + i);
            store.SpritePalette[i] = static_cast<uint8_t>(0x20 + i);
        }
        store.CaptionText = u"A GAME";
        copy.document.CaptionPos = {10, 2};
        copy.ItemTextList = {u"ONE", u"", u"TWO"};
        copy.document.ItemPos = {10, 10};
        store.CustomText = {{.X = 9, .Y = 20, .Text = u"TEXT"}};
        store.BkgTileList = {{.X = 3, .Y = 5, .Tile = 1}, {.X = 3, .Y = 5, .Tile = 0xFF}};
        store.SpriteTileList = {{.X = 200, .Y = 99, .Tile = 0xFF, .Palette = 2},
                                {.X = 204, .Y = 99, .Tile = 0}};
        store.ArrowTile = {.X = 60, .Y = 80, .Tile = 31};
        copy.DragText = true;
        copy.BkgTilePos = {4, 5};
    }

    std::string Say(Point at, Keys keys = {}) const {
        return ToUtf8(PointerText(copy, layout, mouse, Event(at, keys), Language::kEnglish));
    }
    // Where, without the words for the mouse.
    std::string Where(Point at) const {
        const auto place = PlaceUnder(copy, layout, at);
        return place ? ToUtf8(PlaceText(*place, Language::kEnglish)) : "";
    }
    // What the mouse would do.
    std::string Does(Point at, Keys keys = {}) const {
        const std::string where = Where(at);
        const std::string text = Say(at, keys);
        return where.empty() ? text : text.substr(std::min(text.size(), where.size() + 2));
    }
};

TEST_F(PointerWords, TellThePlaceInTheConsolesMemory) {
    const std::pair<Point, const char*> cases[] = {
        {In(kNameTable, 3, 5),
         "Screen, column 3, row 5, tile $FF, address $20A3, attributes $23C8, sub-palette 1, "
         "colour $17"},
        {In(kNameTable, 31, 29),
         "Screen, column 31, row 29, address $23BF, attributes $23FF, sub-palette 1, colour $20"},
        {In(kNameTable, 12, 2),
         "Screen, column 12, row 2, tile $47, address $204C, attributes $23C3, sub-palette 2, "
         "\"G\" of the caption, colour $1B"},
        {In(kNameTable, 12, 12),
         "Screen, column 12, row 12, tile $4F, address $218C, attributes $23DB, sub-palette 0, "
         "\"O\" of the list, colour $13"},
        {In(kNameTable, 9, 20),
         "Screen, column 9, row 20, tile $54, address $2289, attributes $23EA, sub-palette 0, "
         "\"T\" of a text, colour $13"},
        // The upper sprite is clear here.
        {Screen(409, 201),
         "Screen, column 25, row 12, address $2199, attributes $23DE, sub-palette 0, sprite 1, "
         "colour $2B"},
        {Screen(121, 161),
         "Screen, column 7, row 10, address $2147, attributes $23D1, sub-palette 3, the cursor, "
         "colour $20"},
        {In(kBkgTileList, 10, 4), "Background tiles, tile $4A, address $04A0, sub-palette 0"},
        {In(kSpriteTileList, 10, 4), "Sprite tiles, tile $4A, address $14A0, sub-palette 0"},
        {In(kBkgTileEditor, 1, 2),
         "Background tile, column 1, row 2, tile $54, address $0542, sub-palette 0, pixel 3, "
         "colour $13"},
        {In(kTargetStrip, 33), "Characters of the font, character \"A\", tile $41"},
        {In(kSourceStrip, 33),
         "Characters of the screen, character \"A\", tile $41, address $0410"},
        {In(kAttribute, 0, 1), "Attribute byte, column 0, row 1, attributes $23C0, sub-palette 0"},
        {In(kBkgPalette, 6),
         "Background palette, entry 6, address $3F06, sub-palette 1, "
         "colour $16"},
        {In(kSpritePalette, 15),
         "Sprite palette, entry 15, address $3F1F, sub-palette 3, "
         "colour $2F"},
        {In(kSystemPalette, 12, 3), "Colours of the console, colour $3C"},
        {kNowhere, ""}};
    for (const auto& [at, text] : cases)
        EXPECT_EQ(Where(at), text);
    copy.Show_Caption = copy.Show_List = copy.Show_Bg_Tile = copy.Show_Sp_Tile = false;
    for (const Point at : {In(kNameTable, 12, 2), In(kNameTable, 3, 5), Screen(401, 201)})
        EXPECT_EQ(Where(at).find("tile"), std::string::npos) << "not shown";
    EXPECT_EQ(ToUtf8(PointerText(copy, layout, mouse, Event(In(kSystemPalette, 1, 0), {}),
                                 Language::kChinese)),
              "游戏机颜色，颜色 $01。 按下：将此颜色用于当前项。");
}

TEST_F(PointerWords, TellWhatAPressWouldDo) {
    const struct {
        Point at;
        const char* words;
        Keys keys = {};
    } cases[] = {
        {In(kNameTable, 12, 2), "Drag: moves the caption. With Shift: a rubber band."},
        {In(kNameTable, 10, 10), "Drag: moves the list. With Shift: a rubber band."},
        {In(kNameTable, 9, 20),
         "Drag: moves this text; with Ctrl a copy of it. With Shift: a rubber band."},
        {In(kNameTable, 3, 5),
         "Drag: moves this tile; with Ctrl a copy of it. With Shift: a rubber band."},
        {Screen(401, 201),
         "Drag: moves this sprite; with Ctrl a copy of it. With Shift: a rubber band."},
        {Screen(121, 161), "Drag: moves the cursor. With Shift: a rubber band."},
        {In(kNameTable, 0, 0), "Press: makes this the current place. With Shift: a rubber band."},
        {In(kNameTable, 0, 0),
         "Press: gives this square the current sub-palette. With Shift: a rubber band.", kCtrl},
        {In(kBkgTileList, 1, 1), "Drag: places this tile. With Shift: a rubber band."},
        {In(kSpriteTileList, 1, 1),
         "Drag: places this tile as a sprite. With Shift: a rubber band."},
        {In(kBkgTileEditor, 1, 2), "Drag: paints in colour 1. Right button: takes colour 3."},
        {In(kSystemPalette, 1), "Press: gives the current entry this colour."},
        {kNowhere, ""}};
    const WorkState before = State();
    for (const auto& c : cases)
        EXPECT_EQ(Does(c.at, c.keys), c.words);
    copy.tileShape = TileShape::kFill;
    EXPECT_EQ(Does(In(kBkgTileEditor, 1, 2)),
              "Press: fills this area with colour 1. Right button: takes colour 3.");
    copy.QuickReplaceFromBkg = copy.QuickReplaceToBkg = true;
    EXPECT_EQ(Does(In(kBkgTileList, 1, 2)),
              "Press: shows the current character by this tile. With Shift: a rubber band.");
    EXPECT_EQ(Does(In(kTargetStrip, 1)), "Press: copies this character to the current tile.");
    EXPECT_TRUE(copy.QuickReplaceFromBkg) << "the mode goes on";
    mouse.ShiftKeyDown();
    EXPECT_EQ(Does(In(kNameTable, 12, 2)), "Drag: selects with a rubber band.");
    EXPECT_EQ(State(), before);
    EXPECT_EQ(Steps(), 0u);
}

TEST_F(PointerWords, TellWhatTheReleaseWouldDo) {
    const struct {
        Point from, to;
        const char* words;
    } cases[] = {
        {In(kNameTable, 12, 2), In(kNameTable, 5, 6), "Release: leaves it at column 3, row 6."},
        {In(kNameTable, 9, 20), In(kNameTable, 20, 3), "Release: leaves it at column 20, row 3."},
        {In(kNameTable, 9, 20), In(kNameTable, 0, -4), "Release: takes the text off the screen."},
        {Screen(121, 161), Screen(141, 181), "Release: leaves it at pixel 70, 90."},
        {In(kNameTable, 3, 5), In(kNameTable, 4, 4), "Release: puts tile $FF here."},
        {In(kNameTable, 3, 5), In(kSourceStrip, 33), "Release: shows \"A\" by tile $FF."},
        {In(kNameTable, 3, 5), In(kBkgTileList, 4, 4), "Release: copies tile $FF here."},
        {In(kNameTable, 3, 5), kNowhere, "Release: takes it off the screen."},
        {In(kBkgTileList, 1, 1), In(kBkgTileList, 1, 2), "Release: moves tile $11 here."},
        {In(kBkgTileList, 1, 1), In(kBkgTileList, 1, 1), "Release: changes nothing."},
        {In(kSpriteTileList, 1, 1), In(kBkgTileList, 1, 2), "Release: copies tile $11 here."},
        {In(kSpriteTileList, 1, 1), In(kNameTable, 1, 2), "Release: puts tile $11 here."},
        {In(kSpriteTileList, 1, 1), kNowhere, "Release: changes nothing."},
        {In(kBkgPalette, 1), In(kBkgPalette, 2), ""}};
    for (const auto& c : cases) {
        Press(c.from);
        Move(c.to);
        EXPECT_EQ(Does(c.to), c.words);
        Release(c.to);
        session.Undo();
    }
    store.SpriteTileList.resize(255);
    Press(In(kSpriteTileList, 1, 1));
    EXPECT_EQ(Does(In(kNameTable, 1, 2)), "Release: changes nothing.") << "there are too many";
}

}  // namespace
}  // namespace bw
