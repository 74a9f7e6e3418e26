#include "designer/gestures/quick_action.h"

#include "designer/gestures/gesture_places.h"
#include "designer/gestures/screen_click.h"
#include "designer/tools/pointer_edits.h"

namespace bw {

std::optional<QuickAction> QuickAction::TryPress(GestureContext& context,
                                                 const PointerEvent& event) {
    if (!context.copy.QuickAction) return std::nullopt;
    QuickAction click;
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        const auto hit = context.layout.CellAt(TileListOf(table), event.at);
        if (!hit) continue;
        context.Refresh(SetCurrentTile(context.copy, table, hit->cell));
        context.Refresh(PlaceTile(context.copy, table));
        context.memory.ForgetEntries();
        return click;
    }
    if (!context.layout.IsOn(Control::kNameTable, event.at)) return std::nullopt;
    click.onScreen_ = true;
    click.Move(context, event);
    return click;
}

void QuickAction::Move(GestureContext& context, const PointerEvent& event) {
    if (!onScreen_ || !context.copy.QuickAction) return;
    const auto hit = context.layout.CellAt(Control::kNameTable, event.at);
    if (!hit) return;
    context.copy.NameCellPos = hit->cell;
    context.Refresh(View::kNameTable);
    ClickAttributeCell(context, event);
}

}  // namespace bw
