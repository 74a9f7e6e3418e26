// Somebody who draws: what he does in the designer's window by mouse and keys is done through the
// document half as well, and each time the window has to come to the same.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "builder/design_check/design_finding.h"
#include "designer/gestures/gesture_machine.h"
#include "language/text_id.h"
#include "program.h"

namespace bw::test {

class Artist {
  public:
    // The window has opened; `session` is as it begins.
    Artist(Desktop& hand, Program& screen, EditSession& session);

    // The middle of a cell of a view. Pixels of the frame, as all places here.
    Point In(bw::Control view, Pos cell) const;
    // A cell's grip: inside of it by so many pixels.
    Point OnScreen(Pos cell, Point inside = {6, 6}) const;

    // One gesture, with a key held if it is named: "ctrl" or "shift".
    void Drag(const std::vector<Point>& path, const std::string& key = "");
    void Click(Point at, const std::string& key = "") { Drag({at}, key); }
    // A button or check box, an entry of the menu that the keys open, a key; `command` is what the
    // document does for it. A step of the history, or not.
    using Command = std::function<Views(WorkingCopy&)>;
    void Press(int control, const Command& command, bool step = false);
    void Menu(const std::string& keys, TextId entry, const Command& command);
    void Key(const std::string& keys, const Command& command);
    // What the window has just done by other ways, as a step.
    void Follow(const Command& command);
    // In place of what an edit box holds.
    void Write(int control, const std::string& text, const Command& command);
    // The same in a dialog above the window.
    void WriteInto(int control, const std::string& text);

    void UndoAll();
    void RedoAll();

    // As the list of problems has them.
    std::vector<std::string> Problems();
    const WorkingCopy& Copy() const { return session_.Copy(); }

  private:
    Place OnDisplay(Point at) const { return {frame_.x + at.x, frame_.y + at.y}; }
    // As it was before.
    Seen ClickControl(int control);
    void AwaitWords(const PointerEvent& event);
    void AwaitSame();

    Desktop& hand_;
    Program& screen_;
    EditSession& session_;
    DesignerLayout layout_;
    GestureMachine mouse_{session_, layout_};
    Seen frame_;
    std::chrono::milliseconds time_{0};  // of the document's events
};

}  // namespace bw::test
