// The frame of the designer's window: which controls stand where, with which texts.
#pragma once

#include <span>

#include "designer/gestures/designer_layout.h"
#include "designer/model/views.h"
#include "language/text_id.h"

namespace bw {

// Drawn pixels: the frame's size at the scale 1.
inline constexpr int kFrameWidth = 1088;
inline constexpr int kFrameHeight = 864;

enum class ControlKind { kGroup, kLabel, kEdit, kPush, kCheck };

// A standard control, in the order of the Tab key; groups come before what they hold.
struct ControlRow {
    ControlKind kind;
    int id;
    TextId text;  // none for edit boxes
    Rect place;   // drawn pixels from the frame's corner
    int group;    // the id of the group that its name belongs to; 0 for none
    TextId tip;
};
std::span<const ControlRow> ControlRows();

// A drawn view; DesignerLayout has its place.
struct ViewRow {
    Control control;
    View view;
    TextId name;
    TextId help;
};
std::span<const ViewRow> ViewRows();

}  // namespace bw
