// A designer without a window: a design, its history and the mouse, driven by scripted events.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "design_items.h"
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
    // A pixel of a cell of a control.
    Point In(Control control, int column, int row = 0, Point rest = {3, 5}) const {
        const Point corner = layout.Corner(control, {column, row});
        return {corner.x + rest.x, corner.y + rest.y};
    }
    // A pixel of the picture of the screen, which it may lie beside.
    Point Screen(int x, int y) const { return In(Control::kNameTable, 0, 0, {x, y}); }

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

    // An event by its letter (Press, Move, Release, Click, Double click) and which of the current
    // places it changes, as Changed() says it.
    struct Act {
        char event;
        Point at;
        std::string changed;
        Keys keys = {};
    };
    void Play(const std::vector<Act>& acts) {
        Changed();
        for (const Act& act : acts) {
            if (act.event == 'P' || act.event == 'C') Press(act.at, act.keys);
            if (act.event == 'D') mouse.DoubleClick(Event(act.at, act.keys));
            if (act.event == 'M') Move(act.at, act.keys);
            if (act.event != 'P' && act.event != 'M') Release(act.at, act.keys);
            EXPECT_EQ(Changed(), act.changed) << act.event << &act - acts.data();
        }
    }
    // The current places that have changed since the last call, with what they are now.
    std::string Changed() {
        const std::vector<std::pair<std::string, Pos>> now = {
            {"cell", copy.NameCellPos},        {"attr", copy.AttrCellPos},
            {"byte", copy.AttrBytePos},        {"quad", copy.AttrQuadrantPos},
            {"bkg", copy.BkgPalettePos},       {"sp", copy.SpPalettePos},
            {"colour", copy.SystemPalettePos}, {"tile", copy.BkgTilePos},
            {"sprite", copy.SpTilePos},        {"source", copy.MapSourcePos},
            {"target", copy.MapTargetPos},     {"side", {copy.SpritePaletteActive ? 1 : 0, 0}}};
        std::string text;
        for (size_t i = 0; i < now.size(); ++i) {
            const auto& [name, place] = now[i];
            if (i < places.size() && places[i].second == place) continue;
            text += (text.empty() ? "" : " ") + name + " " + std::to_string(place.X);
            if (place.Y != 0) (text += ',') += std::to_string(place.Y);
        }
        places = now;
        return text;
    }

    WorkState State() const { return BuildWorkState(copy); }
    size_t Steps() const { return session.Steps().Count(); }
    const Ghost& Dragged() const { return mouse.DraggedPicture(); }

    EditSession session;
    // To furnish and to switch at any time.
    WorkingCopy& copy = *session.RunWithoutStep([](WorkingCopy& edited) { return &edited; });
    DesignStore& store = copy.Store();
    DesignerLayout layout;
    GestureMachine mouse{session, layout};
    std::chrono::milliseconds time{1000};
    std::vector<std::pair<std::string, Pos>> places;  // of the last Changed()
};

}  // namespace bw
