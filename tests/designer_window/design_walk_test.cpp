// A random walk of events through the designer's window, beside a second session that does the same
// with the document half alone.
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "common/temporary_folder.h"
#include "designer/files/design_parts.h"
#include "designer/pictures/designer_views.h"
#include "designer/window/design_ids.h"
#include "designer/window/design_menu_rows.h"
#include "designer/window/file_rows.h"
#include "designer_bench.h"
#include "support/files.h"

namespace bw {
namespace {

class Walk : public testing::Test {
  protected:
    int Random(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
    bool Chance(int percent) { return Random(100) < percent; }

    // Most of them on a view, the rest anywhere.
    Point Place() {
        const auto control = static_cast<Control>(Random(static_cast<int>(kControlCount)));
        const Grid cells = CellsOf(Chance(50) ? Control::kNameTable : control);
        const Point corner = layout_.Corner(Chance(50) ? Control::kNameTable : control,
                                            {Random(cells.columns), Random(cells.rows)});
        if (Chance(10)) return {Random(kFrameWidth), Random(kFrameHeight)};
        // The few things that are small.
        const WorkingCopy& copy = bench_.Copy();
        const std::vector<TextItem>& texts = copy.Store().CustomText;
        if (Chance(2)) return At(copy.document.PageNumberPos);
        if (Chance(2)) return At(copy.document.CaptionPos);
        if (Chance(2)) return Of(copy.Store().ArrowTile);
        if (Chance(2)) return Of(copy.Store().ArrowTileList.front());
        if (Chance(2) && !texts.empty()) return At({texts.back().X, texts.back().Y});
        return {std::clamp(corner.x + Random(16), 0, kFrameWidth - 1),
                std::clamp(corner.y + Random(16), 0, kFrameHeight - 1)};
    }

    Point Of(const TileItem& cursor) {
        const Point corner = layout_.Origin(Control::kNameTable);
        return {corner.x + 2 * std::clamp(cursor.X, 0, 250) + 3,
                corner.y + 2 * std::clamp(cursor.Y, 0, 230) + 3};
    }
    Point At(Pos cell) {
        const Point corner = layout_.Corner(Control::kNameTable, {cell.X % 32, cell.Y % 30});
        return {std::max(corner.x, 0) + 3, std::max(corner.y, 0) + 3};
    }

    // An event of the pointer, to both.
    void Pointer(QEvent::Type type, Point at, Views (GestureMachine::*act)(PointerEvent),
                 bool middle = false) {
        // A control that isn't a view keeps its presses.
        QWidget* under = bench_.frame->childAt(at.x, at.y);
        const bool taken = under != nullptr && dynamic_cast<CWindowDraw*>(under) == nullptr;
        if (bench_.pressed == nullptr && taken) return;
        time_ += static_cast<uint64_t>(Random(30));
        const bool down = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
        const auto button = type == QEvent::MouseMove ? Qt::NoButton
                            : middle                  ? Qt::MiddleButton
                                                      : Qt::LeftButton;
        const Qt::MouseButtons held = middle                              ? Qt::MiddleButton
                                      : down || type == QEvent::MouseMove ? Qt::LeftButton
                                                                          : Qt::NoButton;
        Qt::KeyboardModifiers keys;
        if (ctrl_) keys |= Qt::ControlModifier;
        if (shift_) keys |= Qt::ShiftModifier;
        bench_.Mouse(type, at, button, held, keys, time_);
        if (middle) {
            bench_.pressed = nullptr;
            machine_.MiddlePress();
        } else {
            (machine_.*act)({at, ctrl_, shift_, std::chrono::milliseconds(time_)});
        }
        modes_.insert(machine_.Mode());
    }

    void Gesture() {
        ctrl_ = Chance(15);
        const Point from = Place();
        if (Chance(8)) {
            Pointer(QEvent::MouseButtonDblClick, from, &GestureMachine::DoubleClick);
        } else {
            Pointer(QEvent::MouseButtonPress, from, &GestureMachine::Press);
        }
        if (bench_.pressed == nullptr) return;
        for (int moves = Random(4); moves > 0; --moves)
            Pointer(QEvent::MouseMove, Place(), &GestureMachine::Move);
        Pointer(QEvent::MouseButtonRelease, Place(), &GestureMachine::Release);
    }

    void ShiftKey() {
        bench_.frame->Of(Control::kNameTable).setFocus();
        bench_.Key(shift_ ? QEvent::KeyRelease : QEvent::KeyPress, Qt::Key_Shift);
        shift_ ? machine_.ShiftKeyUp() : machine_.ShiftKeyDown();
        shift_ = !shift_;
    }

    // A command of the window alone; the other session takes over what it has come to.
    void Command() {
        const int id = commands_[static_cast<size_t>(Random(static_cast<int>(commands_.size())))];
        if (id == kDesignUndo && bench_.session.Steps().Index() < 3) return;
        auto& news = ChildOf<QLabel>(*bench_.dialog, "design_news");
        const size_t told = bench_.dialogs.told.size();
        bool asked = false;
        const FileRow* load = RowOfLoad(id);
        const FileRow* save = RowOfSave(id);
        if (load != nullptr || save != nullptr) {
            const auto& types = load != nullptr ? load->loadTypes : save->saveTypes;
            const auto type = static_cast<size_t>(Random(static_cast<int>(types.size())));
            const auto file = folder_ / (std::to_string(load != nullptr ? load->save : id) + "." +
                                         std::string(types[type].extension));
            asked = Chance(80);
            news.clear();
            if (asked) {
                bench_.dialogs.files.push_back(FileChoice{file, type});
            } else {
                bench_.dialogs.files.push_back(std::nullopt);
            }
        }
        bench_.Press(id);
        // A file is read or written beside the window.
        const auto ended = [&] {
            return !asked || !news.text().isEmpty() || bench_.dialogs.told.size() > told;
        };
        EXPECT_TRUE(QTest::qWaitFor(ended)) << id;
        TakeOver();
    }
    void TakeOver() {
        model_.RunWithoutStep([&](WorkingCopy& copy) { copy = bench_.Copy(); });
    }

    void ExpectShown() {
        DesignerViews fresh;
        fresh.Update(bench_.Copy(), Views::All(), machine_.Bands());
        for (const ViewRow& row : ViewRows()) {
            const Surface& surface = fresh.Of(row.view);
            const QImage shown = bench_.frame->Of(row.control)
                                     .grab()
                                     .toImage()
                                     .convertToFormat(QImage::Format_RGB32);
            int wrong = 0;
            for (int y = 0; y < surface.Height(); ++y) {
                const auto* line = reinterpret_cast<const QRgb*>(shown.constScanLine(y));
                for (int x = 0; x < surface.Width(); ++x)
                    wrong += (line[x] & 0xFFFFFF) != surface.At({x, y}) ? 1 : 0;
            }
            EXPECT_EQ(wrong, 0) << static_cast<int>(row.control);
        }
    }

    std::mt19937 random_{20261122};
    const TemporaryFolder folder_;
    DesignerBench bench_;
    const DesignerLayout layout_;
    EditSession model_{bench_.Copy()};
    GestureMachine machine_{model_, layout_};
    std::set<MouseMode> modes_;
    std::vector<int> commands_;
    uint64_t time_ = 1000;
    bool ctrl_ = false;
    bool shift_ = false;
};

TEST_F(Walk, EndsWhereItBeganAndShowsWhatTheDocumentSays) {
    for (const ControlRow& row : ControlRows()) {
        const bool button = row.kind == ControlKind::kPush || row.kind == ControlKind::kCheck;
        const bool always = row.id == kDesignDesignReset || row.id == kDesignDragText;
        if (button && !always) commands_.push_back(row.id);
    }
    for (const MenuRow& row : DesignMenuRows()) {
        const std::set<int> left{
            kDesignExit,    kDesignOpenSample, kDesignImportPicture, kDesignZoomIn,
            kDesignZoomOut, kDesignZoomReset,  kDesignPaste,         0};
        if (!left.contains(row.id)) commands_.push_back(row.id);
    }
    const auto first = [&] {
        bench_.session.Run([](WorkingCopy& copy) {
            copy.Store().Attributes[0] ^= 1;
            return Views::All();
        });
        TakeOver();
    };
    bench_.session.RunWithoutStep(Furnish);
    const WorkState start = Returned(bench_.State(), bench_.Copy());
    first();
    bench_.Press(kDesignDragText);
    bench_.frame->EditOf(kDesignText).setText(QStringLiteral("WORDS"));
    TakeOver();
    for (int event = 0; event < 20000;) {
        const int kind = Random(100);
        if (kind < 72) {
            Gesture();
            event += 4;
        } else if (kind < 78) {
            ShiftKey();
            ++event;
        } else if (kind < 81) {
            Pointer(QEvent::MouseButtonPress, Place(), nullptr, true);
            ++event;
        } else if (kind < 84) {
            if (bench_.session.Steps().CanRedo()) bench_.Press(kDesignRedo);
            TakeOver();
            ++event;
        } else {
            Command();
            ++event;
        }
        if (event % 50 < 4) {
            ASSERT_TRUE(bench_.State() == BuildWorkState(model_.Copy())) << event;
        }
        if (event % 2000 < 4) ExpectShown();
    }
    if (shift_) ShiftKey();
    for (int mode = 0; mode <= 18; ++mode)
        EXPECT_TRUE(modes_.contains(static_cast<MouseMode>(mode))) << mode;
    ExpectShown();
    while (bench_.session.Steps().CanUndo())
        bench_.Press(kDesignUndo);
    EXPECT_EQ(bench_.State(), start);
    ExpectShown();
}

}  // namespace
}  // namespace bw
