#include "designer/gestures/screen_click.h"

#include "designer/gestures/gesture_items.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/selection_tools.h"

namespace bw {

void ClickAttributeCell(GestureContext& context, const PointerEvent& event) {
    const auto hit = context.layout.CellAt(Control::kNameTable, kAttributeCells, event.at);
    if (!hit) return;
    context.Refresh(SetAttributeCell(context.copy, hit->cell, event.ctrl));
    if (!event.ctrl) context.memory.ForgetEntries();
}

std::optional<ScreenClick> ScreenClick::TryPress(GestureContext& context,
                                                 const PointerEvent& event) {
    const auto hit = context.layout.CellAt(Control::kNameTable, event.at);
    if (!hit) return std::nullopt;
    context.copy.NameCellPos = hit->cell;
    DeselectItems(context.copy.Store());
    context.copy.Store().ArrowTile.Selected = 0;
    context.Refresh(View::kNameTable | View::kCheckBoxes);
    return ScreenClick();
}

void ScreenClick::Move(GestureContext& context, const PointerEvent& event) {
    if (const auto hit = context.layout.CellAt(Control::kNameTable, event.at)) {
        if (context.copy.NameCellPos != hit->cell) context.Refresh(View::kNameTable);
        context.copy.NameCellPos = hit->cell;
    }
    ClickAttributeCell(context, event);
}

void ScreenClick::Drop(GestureContext& context, const PointerEvent& event) {
    ClickAttributeCell(context, event);
    context.Refresh(ActivatePalette(context.copy, PatternTable::kBackground));
}

}  // namespace bw
