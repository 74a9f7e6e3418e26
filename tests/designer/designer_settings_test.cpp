#include "designer/history/designer_settings.h"

#include "design_items.h"
#include "designer/files/design_file.h"
#include "designer/files/design_parts.h"
#include "designer/history/work_state.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

class DesignerSettings : public testing::Test {
  protected:
    // As a program that has just started opens the designer.
    void Open(EditSession& session) {
        session.RunWithoutStep([&](WorkingCopy& copy) {
            LoadDesignData(copy.Store(), *settings_, std::vector<uint8_t>(kChrDataSize, 7));
            SetItems(copy, {u"ONE", u"TWO"}, 10, false);
            copy.Store().CaptionText = u"2 IN 1";
        });
        OpenDesigner(session, *settings_);
    }
    Views Paint(EditSession& session, int32_t column) {
        return session.Run([=](WorkingCopy& copy) { return PaintPixel(copy, kBkg, {column, 2}); });
    }

    std::unique_ptr<SettingsStore> settings_ = MakeMemoryStore();
};

TEST_F(DesignerSettings, AnotherRunGoesOnWhereTheLastEnded) {
    EditSession first;
    Open(first);
    EXPECT_EQ(first.Copy().Store().CaptionText, u"2 IN 1");
    EXPECT_EQ(first.Copy().Store().ArrowTileList.size(), 4u);
    first.RunWithoutStep([](WorkingCopy& copy) {
        copy.Show_List = false;
        copy.DrawLine = true;
        copy.document.CaptionPos = {3, 4};
        copy.SpPalettePos = {6, 0};
        copy.CustomTextEdit = u"not added yet";
        SetCaption(copy, u"MINE");
    });
    for (const int32_t column : {1, 2, 3})
        Paint(first, column);
    first.Undo();
    const WorkState left = BuildWorkState(first.Copy());
    ASSERT_TRUE(CloseDesigner(first, *settings_));

    EditSession second;
    Open(second);
    EXPECT_EQ(BuildWorkState(second.Copy()), left);
    EXPECT_TRUE(!second.Copy().Show_List && second.Copy().DrawLine);
    EXPECT_EQ(second.Copy().SpPalettePos, (Pos{6, 0}));
    EXPECT_EQ(second.Copy().CustomTextEdit, u"not added yet");
    EXPECT_TRUE(second.Steps().Count() == 4 && second.Steps().Index() == 2);
    EXPECT_FALSE(second.Redo().Empty());
    while (second.Steps().CanUndo())
        second.Undo();
    EXPECT_EQ(TileAt(second.Copy().Store(), kBkg, 0)[2], 7)
        << "back to before the first run's steps";

    // Without steps of its own a session leaves the stored history alone.
    EditSession third;
    ASSERT_TRUE(CloseDesigner(third, *settings_));
    EXPECT_FALSE(ReadWholeBinary(*settings_, kDesignKey, "HistoryDataList").empty());
}

TEST_F(DesignerSettings, DamagedValuesLeaveWhatIsThere) {
    EditSession first;
    Open(first);
    Paint(first, 1);
    CloseDesigner(first, *settings_);
    const std::vector<uint8_t> odd(5, 0x99);
    for (const char* name : {"Show_List", "FillColor", "BkgPalettePos", "CaptionPos", "BigCursor",
                             "HistoryDataIndex"}) {
        settings_->RegWriteBinary(kDesignKey, name, odd);
    }
    settings_->RegWriteBinary(kDesignKey, "SpPalettePos", std::vector<uint8_t>(8, 0x77));
    auto state = ReadWholeBinary(*settings_, kDesignKey, "LastWorkState");
    state.resize(state.size() / 2);
    settings_->RegWriteBinary(kDesignKey, "LastWorkState", state);
    const std::vector<uint8_t> twoSprites(2 * TileItem::kStoredSize);
    settings_->RegWriteBinary(kDesignKey, "SpriteTileList", twoSprites);
    EditSession second;
    Open(second);
    EXPECT_TRUE(second.Copy().Show_List && !second.Copy().FillColor);
    EXPECT_EQ(second.Copy().document.CaptionPos, (Pos{12, 2}));
    EXPECT_EQ(second.Copy().SpPalettePos, Pos());
    EXPECT_EQ(second.Copy().Store().ArrowTileList.size(), 4u);
    EXPECT_EQ(second.Copy().nextSpriteIndex, 2u);
    EXPECT_TRUE(second.Steps().Count() == 2 && second.Steps().Index() == 0);
    EXPECT_NE(TileAt(second.Copy().Store(), kBkg, 0)[2], 7)
        << "the design's own values are the state's fallback";
}

// The box keeps its text while texts alone are loaded: the settings hold the box's caption, the
// work state the document's, which undo and another run show in the box.
TEST_F(DesignerSettings, TheCaptionsBoxKeepsItsTextBesideThatOfLoadedTexts) {
    DesignDocument other;
    other.store.CaptionText = u"LOADED";
    const auto load = [&](DesignPart part) {
        return [&, part](WorkingCopy& copy) {
            const auto bytes = WriteDesign(
                other, part == DesignPart::kDesign ? DesignScope::kWhole : DesignScope::kTexts);
            return std::get<Views>(LoadPart(part, bytes, Shift::kUp, copy, Language::kEnglish));
        };
    };
    EditSession first;
    Open(first);
    EXPECT_FALSE(first.Run(load(DesignPart::kTexts)).Has(View::kCaptionBox));
    EXPECT_EQ(first.Copy().Store().CaptionText, u"LOADED");
    EXPECT_EQ(first.Copy().captionBox, u"2 IN 1");
    CloseDesigner(first, *settings_);
    std::u16string stored;
    settings_->RegReadString(kDesignKey, "CaptionText", stored);
    EXPECT_EQ(stored, u"2 IN 1");
    EditSession second;
    Open(second);
    EXPECT_EQ(second.Copy().captionBox, u"LOADED");
    other.store.CaptionText = u"WHOLE";
    EXPECT_TRUE(second.Run(load(DesignPart::kDesign)).Has(View::kCaptionBox));
    EXPECT_EQ(second.Copy().captionBox, u"WHOLE");
    second.Undo();
    EXPECT_EQ(second.Copy().captionBox, u"LOADED");
}

}  // namespace
}  // namespace bw
