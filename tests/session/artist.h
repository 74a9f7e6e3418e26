// Somebody who draws: what he does in the designer's window by mouse and keys is done through the
// document half as well, and each time the window has to come to the same.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "builder/design_check/design_check.h"
#include "designer/gestures/pointer_text.h"
#include "designer/history/edit_session.h"
#include "designer/window/control_rows.h"
#include "designer/window/design_ids.h"
#include "program.h"
#include "support/text.h"

namespace bw::test {

// All places are pixels of the frame.
class Artist {
  public:
    // The window has opened; `session` is as it begins.
    Artist(Desktop& hand, Program& screen, EditSession& session)
        : hand_(hand), screen_(screen), session_(session) {
        // A window that has just opened may still be on its way to its place.
        for (Place before{-1, -1}; before != OnDisplay({});) {
            before = OnDisplay({});
            frame_ = screen_.Await("the frame", ById("design_frame"));
            hand_.MoveTo(OnDisplay({kFrameWidth - 4, kFrameHeight - 4}));
        }
        if (frame_.width != kFrameWidth || frame_.height != kFrameHeight)
            throw SessionLost("a drawn pixel isn't one of the screen's");
        AwaitSame();
    }

    const WorkingCopy& Copy() const { return session_.Copy(); }
    // The middle of a cell of a view.
    Point In(bw::Control view, Pos cell) const {
        const Point from = layout_.Corner(view, cell);
        const Point to = layout_.Corner(view, {cell.X + 1, cell.Y + 1});
        return {(from.x + to.x) / 2, (from.y + to.y) / 2};
    }

    // One gesture, with a key held if it is named: "ctrl" or "shift".
    void Drag(const std::vector<Point>& path, const std::string& key = "") {
        PointerEvent event{.at = path.front(), .ctrl = key == "ctrl", .shift = key == "shift"};
        if (!key.empty()) hand_.HoldKey(key);
        if (event.shift) mouse_.ShiftKeyDown();
        const auto tell = [&](Views (GestureMachine::*act)(PointerEvent)) {
            event.time = time_ += kBetweenEvents;
            (mouse_.*act)(event);
            AwaitWords(event);
        };
        for (const Point& at : path) {
            event.at = at;
            hand_.MoveTo(OnDisplay(at));
            tell(&GestureMachine::Move);
            if (&at != &path.front()) continue;
            hand_.Press();
            tell(&GestureMachine::Press);
        }
        hand_.Release();
        tell(&GestureMachine::Release);
        if (!key.empty()) hand_.ReleaseKey(key);
        if (event.shift) mouse_.ShiftKeyUp();
        AwaitSame();
    }
    void Click(Point at) { Drag({at}); }

    // What the document does for a step that the window has taken by other ways.
    using Command = std::function<Views(WorkingCopy&)>;
    void Follow(const Command& command) {
        session_.Run(command);
        AwaitSame();
    }
    // An entry of the menu that these keys open: the main window has menus of the same names.
    void Menu(const std::string& keys, TextId entry) {
        hand_.Key(keys);
        screen_.Menu({ToUtf8(LoadText(entry, kLanguage))});
    }
    // A button or a check box, which hears of the mouse on its square and its words alone. As it
    // was before.
    Seen Press(int control) {
        const Seen found =
            screen_.Await("the control " + std::to_string(control), Control(control));
        hand_.Click({found.x + 9, found.Middle().y});
        return found;
    }
    void Turn(int checkBox, bool WorkingCopy::*field) {
        const bool before = Press(checkBox).Checked();
        session_.RunWithoutStep([&](WorkingCopy& copy) { copy.*field = !before; });
        AwaitControl(checkBox, [&](const Seen& seen) { return seen.Checked() != before; });
    }
    // In place of what an edit box holds.
    void Write(int control, const std::string& text) {
        screen_.Click("the box " + std::to_string(control), Control(control));
        AwaitControl(control, [](const Seen& seen) { return seen.Focused(); });
        screen_.Retype(text);
        AwaitControl(control, [&](const Seen& seen) { return seen.value == text; });
    }

    void UndoAll() { GoFar("ctrl+z", kDesignUndo, &UndoHistory::CanUndo, &EditSession::Undo); }
    void RedoAll() { GoFar("ctrl+y", kDesignRedo, &UndoHistory::CanRedo, &EditSession::Redo); }

    // Those in sight, as their list has them.
    std::vector<std::string> Problems() {
        std::vector<std::string> problems;
        const std::vector<Seen> all = screen_.Look();
        auto row = std::ranges::find_if(all, [](const Seen& seen) {
            return seen.type == "QListView" && seen.id == "problems";
        });
        if (row == all.end()) throw SessionLost("no list of problems");
        for (++row; row != all.end() && row->type == "cell"; ++row)
            problems.push_back(row->name);
        return problems;
    }

  private:
    static constexpr Language kLanguage = Language::kEnglish;
    // Longer than the pause that the designer makes between two colours.
    static constexpr std::chrono::milliseconds kBetweenEvents{100};
    static constexpr int kLooks = 500;

    Place OnDisplay(Point at) const { return {frame_.x + at.x, frame_.y + at.y}; }

    void AwaitControl(int control, const Wanted& wanted) {
        screen_.Await("a change of the control " + std::to_string(control),
                      [&](const Seen& seen) { return Control(control)(seen) && wanted(seen); });
    }
    void AwaitRows(const std::string& list, size_t rows) {
        screen_.Await(std::to_string(rows) + " rows of " + list, [&](const Seen& seen) {
            return seen.type == "QListView" && seen.id == list &&
                   seen.value == std::to_string(rows);
        });
    }
    // The line below the frame tells where the pointer is and what it would do: the window has got
    // this event, and thinks of it what the document does.
    void AwaitWords(const PointerEvent& event) {
        std::string words = ToUtf8(PointerText(Copy(), layout_, mouse_, event, kLanguage));
        std::ranges::replace(words, '\n', ' ');
        screen_.Await("the words \"" + words + '"', [&](const Seen& seen) {
            return seen.type == "QLabel" && seen.value == words;
        });
    }
    // As many steps, and the same problems.
    void AwaitSame() {
        AwaitRows("design_history", std::max<size_t>(1, session_.Steps().Count()));
        std::vector<std::string> expected;
        for (const DesignFinding& finding : CheckDesign(Copy(), kLanguage))
            expected.push_back(
                ToUtf8(SeverityText(finding.severity, kLanguage) + u": " + finding.text));
        AwaitRows("problems", expected.size());
        for (int looks = 0; looks < kLooks; ++looks) {
            const std::vector<std::string> shown = Problems();
            if (shown.size() <= expected.size() &&
                std::ranges::equal(shown, std::span(expected).first(shown.size())))
                return;
        }
        throw SessionLost("the window has other problems than " + expected.front());
    }
    void GoFar(const std::string& keys, int button, bool (UndoHistory::*can)() const,
               Views (EditSession::*go)()) {
        while ((session_.Steps().*can)()) {
            hand_.Key(keys);
            (session_.*go)();
        }
        AwaitControl(button, [](const Seen& seen) { return !seen.Enabled(); });
        AwaitSame();
    }

    Desktop& hand_;
    Program& screen_;
    EditSession& session_;
    DesignerLayout layout_;
    GestureMachine mouse_{session_, layout_};
    Seen frame_;
    std::chrono::milliseconds time_{0};  // of the document's events
};

}  // namespace bw::test
