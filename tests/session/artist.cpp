#include "artist.h"

#include <algorithm>

#include "builder/design_check/design_check.h"
#include "designer/gestures/pointer_text.h"
#include "designer/window/control_rows.h"
#include "designer/window/design_ids.h"
#include "support/text.h"

namespace bw::test {
namespace {

constexpr Language kLanguage = Language::kEnglish;
// Longer than the pause that the designer makes between two colours.
constexpr std::chrono::milliseconds kBetweenEvents{100};

bool IsProblems(const Seen& seen) {
    return seen.type == "QListView" && seen.id == "problems";
}

Wanted Count(const std::string& list, size_t rows) {
    return [=](const Seen& seen) {
        return seen.type == "QListView" && seen.id == list && seen.value == std::to_string(rows);
    };
}

}  // namespace

Artist::Artist(Desktop& hand, Program& screen, EditSession& session)
    : hand_(hand), screen_(screen), session_(session) {
    const Wanted drawn = ById("design_frame");
    Seen before = screen_.Await("the designer", drawn);
    // A window that has just opened may still be on its way to its place.
    for (frame_ = {}; frame_.x != before.x || frame_.y != before.y;) {
        before = std::exchange(frame_, screen_.Await("the designer", [&](const Seen& seen) {
            return drawn(seen) && seen.Enabled();
        }));
        hand_.MoveTo(OnDisplay({kFrameWidth - 4, kFrameHeight - 4}));
    }
    if (frame_.width != kFrameWidth || frame_.height != kFrameHeight)
        throw SessionLost("a drawn pixel is none of the screen's");
    AwaitSame();
}

Point Artist::In(bw::Control view, Pos cell) const {
    const Point from = layout_.Corner(view, cell);
    const Point to = layout_.Corner(view, {cell.X + 1, cell.Y + 1});
    return {(from.x + to.x) / 2, (from.y + to.y) / 2};
}

Point Artist::OnScreen(Pos cell, Point inside) const {
    const Point corner = layout_.Corner(Control::kNameTable, cell);
    return {corner.x + inside.x, corner.y + inside.y};
}

// Check boxes hear of the mouse on their square and their words alone.
Seen Artist::ClickControl(int control) {
    const Seen found = screen_.Await("the control " + std::to_string(control), Control(control));
    hand_.Click({found.x + 9, found.Middle().y});
    return found;
}

// The line below the frame tells where the pointer is and what it would do: the window has got this
// event, and thinks of it what the document does.
void Artist::AwaitWords(const PointerEvent& event) {
    std::string words = ToUtf8(PointerText(Copy(), layout_, mouse_, event, kLanguage));
    std::ranges::replace(words, '\n', ' ');
    if (words.empty()) return;
    screen_.Await("the words \"" + words + '"',
                  [&](const Seen& seen) { return seen.type == "QLabel" && seen.value == words; });
}

void Artist::AwaitSame() {
    screen_.Await("the same history",
                  Count("design_history", std::max<size_t>(1, session_.Steps().Count())));
    std::vector<std::string> expected;
    for (const DesignFinding& finding : CheckDesign(Copy(), kLanguage))
        expected.push_back(
            ToUtf8(SeverityText(finding.severity, kLanguage) + u": " + finding.text));
    screen_.Await("the same number of problems", Count("problems", expected.size()));
    // Those in sight.
    for (int tries = 0;; ++tries) {
        const std::vector<std::string> shown = Problems();
        if (shown.size() <= expected.size() &&
            std::ranges::equal(shown, std::span(expected).first(shown.size())))
            return;
        if (tries == 500) throw SessionLost("the window has other problems: " + shown.front());
    }
}

std::vector<std::string> Artist::Problems() {
    std::vector<std::string> problems;
    const std::vector<Seen> all = screen_.Look();
    auto row = std::ranges::find_if(all, IsProblems);
    if (row == all.end()) throw SessionLost("no list of problems");
    for (++row; row != all.end() && row->type == "cell"; ++row)
        problems.push_back(row->name);
    return problems;
}

void Artist::Drag(const std::vector<Point>& path, const std::string& key) {
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

void Artist::Press(int control, const Command& command, bool step) {
    const bool before = ClickControl(control).Checked();
    if (step) return Follow(command);
    session_.RunWithoutStep(command);
    screen_.Await("the turned switch", [&](const Seen& seen) {
        return Control(control)(seen) && seen.Checked() != before;
    });
    AwaitSame();
}

// The main window has menus of the same names.
void Artist::Menu(const std::string& keys, TextId entry, const Command& command) {
    hand_.Key(keys);
    screen_.Menu({ToUtf8(LoadText(entry, kLanguage))});
    Follow(command);
}

void Artist::Key(const std::string& keys, const Command& command) {
    hand_.Key(keys);
    Follow(command);
}

void Artist::Follow(const Command& command) {
    session_.Run(command);
    AwaitSame();
}

void Artist::Write(int control, const std::string& text, const Command& command) {
    WriteInto(control, text);
    session_.RunWithoutStep(command);
    AwaitSame();
}

void Artist::WriteInto(int control, const std::string& text) {
    const auto awaitBox = [&](const std::string& what, auto wanted) {
        screen_.Await(what,
                      [&](const Seen& seen) { return Control(control)(seen) && wanted(seen); });
    };
    ClickControl(control);
    awaitBox("the box with the keyboard", [](const Seen& seen) { return seen.Focused(); });
    screen_.Retype(text);
    awaitBox("the text " + text, [&](const Seen& seen) { return seen.value == text; });
}

void Artist::UndoAll() {
    while (session_.Steps().CanUndo()) {
        hand_.Key("ctrl+z");
        session_.Undo();
    }
    screen_.Await("nothing to undo",
                  [](const Seen& seen) { return Control(kDesignUndo)(seen) && !seen.Enabled(); });
    AwaitSame();
}

void Artist::RedoAll() {
    while (session_.Steps().CanRedo()) {
        hand_.Key("ctrl+y");
        session_.Redo();
    }
    screen_.Await("nothing to redo",
                  [](const Seen& seen) { return Control(kDesignRedo)(seen) && !seen.Enabled(); });
    AwaitSame();
}

}  // namespace bw::test
