#include "designer/gestures/pointer_text.h"

#include "gesture_bench.h"
#include "record_bytes.h"
#include "support/text.h"

namespace bw {
namespace {

using enum Control;
using testing::EndsWith;

// The ends of the words for places and for what the mouse would do there.
class PointerWords : public testing::Test, protected GestureBench {
  protected:
    PointerWords() {
        for (size_t i = 0; i < kChrDataSize; ++i)
            store.ChrData[i] = static_cast<uint8_t>(i / kTileBytes);
        SetDefaultCharMap(store);
        store.Attributes.fill(0xE4);
        std::ranges::copy(Counting(kPaletteSize, 0x10), store.BkgPalette.begin());
        std::ranges::copy(Counting(kPaletteSize, 0x20), store.SpritePalette.begin());
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

    std::string Say(Point at, Keys keys = {}, Language language = Language::kEnglish) const {
        return ToUtf8(PointerText(copy, layout, mouse, Event(at, keys), language));
    }
    std::string Where(Point at) const {
        const auto place = PlaceUnder(copy, layout, at);
        return place ? ToUtf8(PlaceText(*place, Language::kEnglish)) : "";
    }
};

TEST_F(PointerWords, TellThePlaceInTheConsolesMemory) {
    const std::pair<Point, const char*> cases[] = {
        {In(kNameTable, 31, 29),
         "Screen, column 31, row 29, address $23BF, attributes $23FF, sub-palette 1, colour $20"},
        {In(kNameTable, 3, 5),
         "tile $FF, address $20A3, attributes $23C8, sub-palette 1, colour $17"},
        {In(kNameTable, 12, 2),
         "tile $47, address $204C, attributes $23C3, sub-palette 2, \"G\" of the caption, colour "
         "$1B"},
        {In(kNameTable, 12, 12), "sub-palette 0, \"O\" of the list, colour $13"},
        {In(kNameTable, 9, 20), "sub-palette 0, \"T\" of a text, colour $13"},
        {Screen(409, 201), "sprite 1, colour $2B"},  // which is clear here: the lower one's
        {Screen(121, 161), "the cursor, colour $20"},
        {In(kBkgTileList, 10, 4), "Background tiles, tile $4A, address $04A0, sub-palette 0"},
        {In(kSpriteTileList, 10, 4), "Sprite tiles, tile $4A, address $14A0, sub-palette 0"},
        {In(kBkgTileEditor, 1, 2),
         "tile $54, address $0542, sub-palette 0, colour index 3, colour $13"},
        {In(kTargetStrip, 33), "Characters of the font, character \"A\", tile $41"},
        {In(kSourceStrip, 33), "character \"A\", tile $41, address $0410"},
        {In(kAttribute, 1, 0), "column 1, row 0, attributes $23C0, sub-palette 0"},
        {In(kSpritePalette, 15), "entry 15, address $3F1F, sub-palette 3, colour $2F"},
        {In(kSystemPalette, 12, 3), "Colours of the console, colour $3C"}};
    for (const auto& [at, text] : cases)
        EXPECT_THAT(Where(at), EndsWith(text));
    copy.Show_Caption = copy.Show_List = copy.Show_Bg_Tile = copy.Show_Sp_Tile = false;
    for (const Point at : {In(kNameTable, 12, 2), In(kNameTable, 3, 5), Screen(409, 201)})
        EXPECT_THAT(Where(at), EndsWith(", colour $20")) << "not shown";
    EXPECT_EQ(Where(kNowhere) + Say(kNowhere), "");
    EXPECT_EQ(Say(In(kSystemPalette, 1, 0), {}, Language::kChinese),
              "游戏机颜色，颜色 $01。 按下：将此颜色用于当前项。");
}

TEST_F(PointerWords, TellWhatAPressWouldDo) {
    const struct {
        Point at;
        std::string words;
        Keys keys = {};
    } cases[] = {{In(kNameTable, 12, 2), "Drag: moves the caption."},
                 {In(kNameTable, 9, 20), "Drag: moves this text; with Ctrl a copy of it."},
                 {In(kNameTable, 3, 5), "Drag: moves this tile; with Ctrl a copy of it."},
                 {Screen(401, 201), "Drag: moves this sprite; with Ctrl a copy of it."},
                 {Screen(121, 161), "Drag: moves the cursor."},
                 {In(kNameTable, 0, 0), "Press: makes this the current place."},
                 {In(kNameTable, 0, 0), "gives this square the current sub-palette.", kCtrl},
                 {In(kBkgTileList, 1, 1), "Drag: places this tile."},
                 {In(kSpriteTileList, 1, 1), "Drag: places this tile as a sprite."}};
    const WorkState before = State();
    for (const auto& c : cases)
        EXPECT_THAT(Say(c.at, c.keys), EndsWith(c.words + " With Shift: a rubber band."));
    EXPECT_THAT(Say(In(kBkgTileEditor, 1, 2)),
                EndsWith("Drag: paints in colour 1. Right button: takes colour 3."));
    copy.QuickReplaceFromBkg = copy.QuickReplaceToBkg = true;
    EXPECT_THAT(Say(In(kTargetStrip, 1)), EndsWith("copies this character to the current tile."));
    EXPECT_TRUE(copy.QuickReplaceFromBkg) << "the mode goes on";
    mouse.ShiftKeyDown();
    EXPECT_THAT(Say(In(kNameTable, 12, 2)), EndsWith(". Drag: selects with a rubber band."));
    EXPECT_EQ(State(), before);
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
        {In(kSpriteTileList, 1, 1), In(kNameTable, 1, 2), "Release: puts tile $11 here."}};
    for (const auto& c : cases) {
        Press(c.from);
        Move(c.to);
        EXPECT_THAT(Say(c.to), EndsWith(c.words));
        Release(c.to);
        session.Undo();
    }
    store.SpriteTileList.resize(255);
    Press(In(kSpriteTileList, 1, 1));
    EXPECT_THAT(Say(In(kNameTable, 1, 2)), EndsWith("changes nothing.")) << "there are too many";
}

}  // namespace
}  // namespace bw
