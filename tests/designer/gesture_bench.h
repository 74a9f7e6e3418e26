// A designer without a window: a design, its history and the mouse, driven by scripted events.
#pragma once

#include "designer/gestures/gesture_machine.h"
#include "designer/history/work_state.h"

namespace bw {

struct Keys {
    bool ctrl = false;
    bool shift = false;
};
inline constexpr Keys kCtrl{true, false};
inline constexpr Keys kShift{false, true};

// Nothing is there, in the window: off every control.
inline constexpr Point kNowhere{1080, 850};

struct GestureBench {
    // To furnish and to switch at any time.
    WorkingCopy& Copy() {
        return *session.RunWithoutStep([](WorkingCopy& copy) { return &copy; });
    }
    DesignStore& Store() { return Copy().Store(); }

    // A pixel of a cell of a control.
    Point In(Control control, int column, int row = 0, Point rest = {3, 5}) const {
        const Point origin = layout.Origin(control);
        const Grid cells = CellsOf(control);
        const Point size = control == Control::kNameTable ? Point{512, 480}
                           : control == Control::kAttribute
                               ? Point{128, 128}
                               : Point{16 * cells.columns, 16 * cells.rows};
        return {origin.x + column * (size.x / cells.columns) + rest.x,
                origin.y + row * (size.y / cells.rows) + rest.y};
    }
    // A pixel of the picture of the screen, which it may lie beside.
    Point Screen(int x, int y) const {
        const Point origin = layout.Origin(Control::kNameTable);
        return {origin.x + x, origin.y + y};
    }

    PointerEvent Event(Point at, Keys keys) const { return {at, keys.ctrl, keys.shift, time}; }
    Views Press(Point at, Keys keys = {}) { return mouse.Press(Event(at, keys)); }
    Views Move(Point at, Keys keys = {}) { return mouse.Move(Event(at, keys)); }
    Views Release(Point at, Keys keys = {}) { return mouse.Release(Event(at, keys)); }
    void Click(Point at, Keys keys = {}) {
        Press(at, keys);
        Release(at, keys);
    }
    void DoubleClick(Point at) {
        mouse.DoubleClick(Event(at, {}));
        Release(at);
    }
    void Drag(Point from, Point to, Keys keys = {}) {
        Press(from, keys);
        Move(to, keys);
        Release(to, keys);
    }

    WorkState State() { return BuildWorkState(Copy()); }

    EditSession session{WorkingCopy()};
    DesignerLayout layout;
    GestureMachine mouse{session, layout};
    std::chrono::milliseconds time{1000};
};

}  // namespace bw
