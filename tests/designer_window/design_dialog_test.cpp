// The designer's window: its tables, its commands, its mouse and keys, its opening and closing.
// What they do to a design is tested with the document half; here it is compared with that.
#include <QAbstractButton>
#include <QClipboard>
#include <QLineEdit>
#include <functional>

#include <gmock/gmock.h>

#include "designer/tools/attribute_tools.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/selection_tools.h"
#include "designer/tools/tile_tools.h"
#include "designer/window/design_ids.h"
#include "designer/window/design_menu_rows.h"
#include "designer/window/file_rows.h"
#include "designer_bench.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSp = PatternTable::kSprites;

QRect RectOf(const Rect& place) {
    return {place.at.x, place.at.y, place.width, place.height};
}

TEST(DesignDialog, EveryIdHasAHandlerATextAndAPlace) {
    DesignerBench bench;
    const auto handled = [&](int id) {
        EXPECT_EQ(bench.dialog->CountHandlers(kMessageCommand, id), 1u) << id;
    };
    QRegion taken;
    const DesignerLayout layout;
    for (const ViewRow& row : ViewRows()) {
        const QRect place(QPoint(layout.Origin(row.control).x, layout.Origin(row.control).y),
                          bench.frame->Of(row.control).size());
        EXPECT_FALSE(taken.intersects(place)) << static_cast<int>(row.control);
        taken += place;
        EXPECT_FALSE(bench.frame->Of(row.control).accessibleName().isEmpty());
        EXPECT_FALSE(bench.frame->Of(row.control).accessibleDescription().isEmpty());
    }
    for (const ControlRow& row : ControlRows()) {
        const QRect place = RectOf(row.place);
        EXPECT_TRUE(QRect(0, 0, kFrameWidth, kFrameHeight).contains(place)) << row.id;
        for (const ControlRow& group : ControlRows()) {
            EXPECT_TRUE(group.id != row.group || RectOf(group.place).contains(place)) << row.id;
        }
        if (row.kind == ControlKind::kGroup) continue;
        EXPECT_FALSE(taken.intersects(place)) << row.id;
        taken += place;
        for (const Language language : {Language::kEnglish, Language::kChinese}) {
            EXPECT_EQ(LoadText(row.text, language).empty(), row.kind == ControlKind::kEdit);
            EXPECT_EQ(LoadText(row.tip, language).empty(), row.kind == ControlKind::kLabel);
        }
        EXPECT_FALSE(bench.frame->ControlOf(row.id).accessibleName().isEmpty()) << row.id;
        if (row.kind == ControlKind::kPush || row.kind == ControlKind::kCheck) handled(row.id);
    }
    for (const MenuRow& row : DesignMenuRows()) {
        if (row.kind == MenuRowKind::kEnd || row.kind == MenuRowKind::kSeparator) continue;
        EXPECT_FALSE(LoadText(row.text, Language::kChinese).empty());
        if (row.kind != MenuRowKind::kPopup) handled(row.id);
    }
    for (const FileRow& row : FileRows()) {
        for (const auto& [id, types] :
             {std::pair{row.load, row.loadTypes}, std::pair{row.save, row.saveTypes}}) {
            if (id == 0) continue;
            handled(id);
            EXPECT_FALSE(types.empty()) << id;
        }
    }
}

using Function = std::function<Views(WorkingCopy&)>;
struct Command {
    int id;
    Function does;
    bool tall = false;  // with sprites of 8 by 16
};

Function Tool(TileTool tool) {
    return [tool](WorkingCopy& copy) { return ApplyTileTool(copy, tool); };
}
template <auto kOf, auto... kArguments>
Views Of(WorkingCopy& copy) {
    return kOf(copy, kArguments...);
}
template <bool WorkingCopy::*kField>
Views Turn(WorkingCopy& copy) {
    copy.*kField = !(copy.*kField);
    return {};
}

const std::vector<Command>& Commands() {
    using enum Direction;
    using W = WorkingCopy;
    static const std::vector<Command> commands = {
        {40153, Tool(TileTool::kColoursLeft)},
        {40154, Tool(TileTool::kColoursRight)},
        {40149, Tool(TileTool::kColoursLeftButEmpty)},
        {40150, Tool(TileTool::kColoursRightButEmpty)},
        {40136, Tool(TileTool::kRemove1)},
        {40137, Tool(TileTool::kRemove2)},
        {40138, Tool(TileTool::kRemove3)},
        {40142, Tool(TileTool::kPixelsLeft)},
        {40143, Tool(TileTool::kPixelsRight)},
        {40140, Tool(TileTool::kPixelsUp)},
        {40141, Tool(TileTool::kPixelsDown)},
        {40147, Tool(TileTool::kSwap1And2)},
        {40146, Tool(TileTool::kSwap1And3)},
        {40148, Tool(TileTool::kSwap2And3)},
        {40201, Of<CopySelectedTiles, kBkg>},
        {40202, Of<CopySelectedTiles, kSp>},
        {40192, Of<CopyFont, kBkg>},
        {40194, Of<CopyFont, kSp>},
        {40196, Of<MapAllCharacters>},
        {40125, Of<MapUsedCharacters>},
        {40124, Of<ClearUnusedBkgTiles>},
        {40123, Of<ClearUnusedSpriteTiles>},
        {40170, Of<OrganiseBkgTiles>},
        {40171, Of<OrganiseSpriteTiles>},
        {40204, Of<SplitTallSprites>},
        {40206, Of<SwapAllSpriteTables>, true},
        {40214, Of<MakeSpritesOfTiles>},
        {1126, Of<SwapPatternTables>},
        {1131, Of<SwapSpriteTables>, true},
        {1075, Of<ResetPatternTable, kBkg>},
        {1085, Of<ResetPatternTable, kSp>},
        {1089, Of<ResetPalette, kBkg>},
        {1092, Of<ResetPalette, kSp>},
        {1105, Of<ResetAttributes>},
        {1120, Of<ClearTexts>},
        {1086, Of<ResetTexts>},
        {1147, Of<ResetCharMap>},
        {1067, Of<ResetDesign>},
        {1108, Of<ClearItems, kBkg>},
        {1095, Of<ClearItems, kSp>},
        {1106, Of<SelectAllItems, kBkg>},
        {1103, Of<SelectAllItems, kSp>},
        {1107, Of<InvertItemSelection, kBkg>},
        {1104, Of<InvertItemSelection, kSp>},
        {1111, Of<MoveItems, kBkg, 0, -1>},
        {1112, Of<MoveItems, kBkg, 0, 1>},
        {1113, Of<MoveItems, kBkg, -1, 0>},
        {1114, Of<MoveItems, kBkg, 1, 0>},
        {1099, Of<MoveItems, kSp, 0, -1>},
        {1100, Of<MoveItems, kSp, 0, 1>},
        {1101, Of<MoveItems, kSp, -1, 0>},
        {1102, Of<MoveItems, kSp, 1, 0>},
        {1077, Of<SetSpriteFlag, uint8_t{1}, true>},
        {1078, Of<SetSpriteFlag, uint8_t{2}, true>},
        {1079, Of<SetSpriteFlag, uint8_t{4}, true>},
        {1119, Of<SetBigCursor, true>},
        {1130, Of<SetBigSprite, true>},
        {1138, Of<ShiftAttributes, kUp>},
        {1143, Of<ShiftAttributes, kLeft>},
        {1144, Of<ShiftAttributes, kRight>},
        {1145, Of<ShiftAttributes, kDown>},
        {1074, [](W& copy) { return AddText(copy, u"MORE"); }},
        {1081, Of<TurnPage, PageTurn::kNext>},
        {1076, Of<TurnPage, PageTurn::kPrevious>},
        {1084, Of<TurnPage, PageTurn::kLast>},
        {1083, Of<TurnPage, PageTurn::kFirst>},
        {1056, Turn<&W::FillColor>},
        {1057, Turn<&W::DrawLine>},
        {1060, Turn<&W::DragText>},
        {1133, Turn<&W::QuickReplaceFromBkg>},
        {1134, Turn<&W::QuickReplaceToBkg>},
        {1135, Turn<&W::QuickReplaceToSprites>},
        {1136, Turn<&W::QuickAction>},
        {1140, Turn<&W::MarkCursor>},
        {40174, Turn<&W::Show_Bg_Tile>},
        {40175, Turn<&W::Show_Sp_Tile>},
        {40198, Turn<&W::Show_List>},
        {40210, Turn<&W::Show_Custom_Text>},
        {40212, Turn<&W::Show_Caption>},
        {40218, Turn<&W::Show_Cursor>},
        {kDesignDelete, Of<DeleteSelection>},
    };
    return commands;
}

// What a command may change beside the work state.
auto Looks(const WorkingCopy& copy) {
    return std::tuple(copy.FillColor, copy.DrawLine, copy.DragText, copy.QuickReplaceFromBkg,
                      copy.QuickReplaceToBkg, copy.QuickReplaceToSprites, copy.QuickAction,
                      copy.MarkCursor, copy.Show_Bg_Tile, copy.Show_Sp_Tile, copy.Show_List,
                      copy.Show_Custom_Text, copy.Show_Caption, copy.Show_Cursor,
                      copy.PageNumberText, copy.ItemTextList);
}

TEST(DesignDialog, EveryCommandDoesWhatItsFunctionDoes) {
    DesignerBench bench;
    bench.session.Run(Furnish);
    bench.frame->EditOf(kDesignText).setText(QStringLiteral("MORE"));
    bench.Press(1140);
    bench.Press(1140);  // brings the boxes of the flags up to date
    for (const auto& [id, does, tall] : Commands()) {
        if (tall)
            bench.session.RunWithoutStep([](WorkingCopy& c) { return SetBigSprite(c, true); });
        WorkingCopy expected = bench.Copy();
        does(expected);
        const auto before = bench.session.Steps().Index();
        const bool changes = BuildWorkState(expected) != bench.State();
        EXPECT_TRUE(changes || Looks(expected) != Looks(bench.Copy())) << id << " does nothing";
        bench.Press(id);
        EXPECT_EQ(bench.State(), BuildWorkState(expected)) << id;
        EXPECT_TRUE(Looks(bench.Copy()) == Looks(expected)) << id;
        EXPECT_EQ(bench.session.Steps().Index() > before, changes) << id;
        EXPECT_EQ(bench.Button(1124).isEnabled(), bench.session.Steps().CanUndo());
        if (changes) {
            bench.Press(1124);
            bench.Press(1125);
            EXPECT_EQ(bench.State(), Returned(BuildWorkState(expected), expected)) << id;
            bench.Press(1124);
        } else if (id < 2000 &&
                   !bench.dialog->findChild<QAbstractButton*>(QStringLiteral("control_%1").arg(id))
                        ->isCheckable()) {
            continue;  // a page stays turned for the next one
        } else {
            bench.Press(id);
        }
        bench.session.RunWithoutStep([](WorkingCopy& c) { return SetBigSprite(c, false); });
    }
}

TEST(DesignDialog, OpensAndClosesWithAllThatItHas) {
    DesignerBench bench;
    for (const int id : {40174, 40175, 40198, 40210, 40212, 40218}) {
        EXPECT_TRUE(bench.Entry(id).isChecked()) << id;
    }
    EXPECT_FALSE(bench.Button(1124).isEnabled());
    bench.session.Run(Furnish);
    bench.Press(40212);
    bench.Press(1056);
    bench.Press(1119);  // stored at once
    std::array<uint8_t, 1> big{};
    size_t size = 1;
    ASSERT_TRUE(bench.store->RegReadBinary(kDesignKey, "BigCursor", big.data(), size));
    EXPECT_EQ(big[0], 1);
    bench.dialog->Send(kMessageLanguage, static_cast<MessageParam>(Language::kChinese));
    EXPECT_EQ(bench.Button(1124).text(), QStringLiteral("撤销"));
    bench.frame->EditOf(kDesignCaption).setText(QStringLiteral("MINE"));
    const WorkState state = Returned(bench.State(), bench.Copy());
    const auto steps = bench.session.Steps().Count();
    bench.frame->EditOf(kDesignCaption).setFocus();
    bench.Key(QEvent::KeyPress, Qt::Key_Escape);
    RunEvents();
    EXPECT_FALSE(bench.dialog->IsOpen());
    EXPECT_EQ(bench.dialog->result(), kEndCancel);

    // Another run of the program: a session of its own, with what is stored.
    DesignerBench next(std::vector<std::u16string>{});
    next.dialog->Send(kMessageClose);
    next.store = std::move(bench.store);
    next.Open();
    EXPECT_EQ(next.State(), state);
    EXPECT_EQ(next.session.Steps().Count(), steps);
    EXPECT_FALSE(next.Entry(40212).isChecked());
    EXPECT_TRUE(next.Button(1056).isChecked());
    EXPECT_EQ(next.frame->EditOf(kDesignCaption).text(), QStringLiteral("MINE"));
    next.Press(1124);
    EXPECT_EQ(next.Copy().document.BigCursor, 0);
    next.dialog->Send(kMessageClose);
    DesignerBench full(std::vector<std::u16string>(1024, u"一个没有字形的很长的名字"));
    EXPECT_EQ(full.Copy().PageNumberText, u"001/205");
}

TEST(DesignDialog, KeysWorkWhereverTheFocusIs) {
    DesignerBench bench;
    QLineEdit& caption = bench.frame->EditOf(kDesignCaption);
    caption.setFocus();
    caption.clear();
    QTest::keyClicks(&caption, QStringLiteral("0123456789012345678901234567890123456789"));
    EXPECT_EQ(caption.text().size(), 32);
    EXPECT_EQ(bench.Copy().Store().CaptionText, FromQt(caption.text()));
    QTest::keyClick(&caption, Qt::Key_Backspace);
    EXPECT_EQ(bench.Copy().Store().CaptionText.size(), 31u);
    QApplication::clipboard()->setText(QStringLiteral("PASTED TEXT"));
    QTest::keyClick(&caption, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(caption.text().size(), 32);
    EXPECT_EQ(bench.Copy().Store().CaptionText.size(), 32u);
    EXPECT_EQ(bench.session.Steps().Count(), 0u);
    QTest::keyClick(&caption, Qt::Key_Z, Qt::ControlModifier);  // with nothing to undo

    bench.session.Run(Furnish);
    WorkingCopy expected = bench.Copy();
    DeleteSelection(expected);
    QTest::keyClick(&caption, Qt::Key_Delete);
    EXPECT_EQ(bench.State(), BuildWorkState(expected));
    const auto length = caption.text().size();
    QTest::keyClick(&caption, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(bench.State(), BuildWorkState(expected));
    EXPECT_EQ(caption.text().size(), length);
    QTest::keyClick(&caption, Qt::Key_Y, Qt::ControlModifier);
    const WorkState redone = Returned(BuildWorkState(expected), expected);
    EXPECT_EQ(bench.State(), redone);
    QTest::keyClick(&caption, Qt::Key_Left);  // the box's
    EXPECT_EQ(bench.State(), redone);
    bench.Press(1103);
    QWidget& screen = bench.frame->Of(Control::kNameTable);
    screen.setFocus();
    expected = bench.Copy();
    MoveSelection(expected, {1, 0}, ArrowStep::kPixel);
    QTest::keyClick(&screen, Qt::Key_Right);
    EXPECT_EQ(bench.State(), BuildWorkState(expected));
}

TEST(DesignDialog, WaitsForTheEndOfAGesture) {
    DesignerBench bench;
    bench.session.Run(Furnish);
    bench.Press(1060);
    const WorkState before = Returned(bench.State(), bench.Copy());
    const auto mouse = [&](QEvent::Type type, Point at) {
        const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        bench.Mouse(type, at, button, held, {}, 1);
    };
    // A sprite, taken out of its list while it is dragged.
    mouse(QEvent::MouseButtonPress, {16 + 2 * 90 + 4, 124 + 2 * 120 + 6});
    ASSERT_EQ(bench.Copy().Store().SpriteTileList.size(), 5u);
    bench.dialog->Send(kMessageLanguage, static_cast<MessageParam>(Language::kChinese));
    bench.Press(kDesignZoomIn);
    bench.Press(kDesignZoomReset);
    bench.Press(1124);
    bench.Press(1108);
    mouse(QEvent::MouseMove, {300, 300});
    EXPECT_EQ(bench.Copy().Store().SpriteTileList.size(), 5u);
    EXPECT_EQ(bench.Copy().Store().BkgTileList.size(), 6u);
    mouse(QEvent::MouseButtonRelease, {300, 300});
    // The drag, its undo, and then the reset.
    EXPECT_EQ(bench.Copy().Store().SpriteTileList.size(), 6u);
    EXPECT_TRUE(bench.Copy().Store().BkgTileList.empty());
    bench.Press(1124);
    EXPECT_EQ(bench.State(), before);
    // Closing in the middle of a drag keeps what is dragged.
    mouse(QEvent::MouseButtonPress, {16 + 2 * 90 + 4, 124 + 2 * 120 + 6});
    bench.dialog->Send(kMessageClose);
    EXPECT_FALSE(bench.dialog->IsOpen());
    EXPECT_EQ(bench.Copy().Store().SpriteTileList.size(), 6u);
}

TEST(DesignDialog, LaysItsFrameOutAtTheWholeZoomThatFits) {
    EXPECT_EQ(WholeScale(1, 1.0, {800, 600}), 1);
    EXPECT_EQ(WholeScale(2, 1.0, {800, 600}), 2);
    EXPECT_EQ(WholeScale(1, 1.5, {1280, 900}), 1);   // 725 by 576
    EXPECT_EQ(WholeScale(1, 1.5, {1500, 1200}), 2);  // 1451 by 1152
    EXPECT_EQ(WholeScale(1, 2.0, {800, 600}), 2);
    EXPECT_EQ(WholeScale(1, 1.25, {800, 600}), 1);
    EXPECT_EQ(FittingZoom(1.0, {1087, 2000}), 1);
    EXPECT_EQ(FittingZoom(1.0, {2200, 1800}), 2);
    DesignerBench bench;
    bench.Press(kDesignZoomIn);
    EXPECT_EQ(bench.frame->width(), 2 * kFrameWidth);
    EXPECT_EQ(bench.frame->Of(Control::kNameTable).width(), 1024);
    EXPECT_EQ(bench.frame->FramePoint({2 * 700.0, 2 * 600.0 + 1}).y, 600);
    bench.dialog->Send(kMessageClose);
    bench.Open();
    EXPECT_EQ(bench.frame->width(), 2 * kFrameWidth);
}

}  // namespace
}  // namespace bw
