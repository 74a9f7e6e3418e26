#include "designer/gestures/quick_replace.h"

#include "designer/gestures/gesture_places.h"
#include "designer/tools/pointer_edits.h"

namespace bw {

void EndQuickReplace(GestureContext& context, Point at) {
    const bool onSource = context.layout.IsOn(Control::kSourceStrip, at);
    const bool onTarget = context.layout.IsOn(Control::kTargetStrip, at);
    const bool onBkg = context.layout.IsOn(Control::kBkgTileList, at);
    const bool onSprites = context.layout.IsOn(Control::kSpriteTileList, at);
    const auto keepIf = [&](bool& mode, bool applies) {
        if (!mode || applies) return;
        mode = false;
        context.Refresh(View::kCheckBoxes);
    };
    keepIf(context.copy.QuickReplaceFromBkg, onSource || onBkg);
    keepIf(context.copy.QuickReplaceToBkg, onTarget || onBkg);
    keepIf(context.copy.QuickReplaceToSprites, onTarget || onSprites);
}

std::optional<QuickReplace> QuickReplace::TryPress(GestureContext& context,
                                                   const PointerEvent& event) {
    const WorkingCopy& copy = context.copy;
    QuickReplace click;
    if (copy.QuickReplaceFromBkg) {
        click.MapCharacter(context, event);
    } else if (copy.QuickReplaceToBkg) {
        click.ReplaceTile(context, event, PatternTable::kBackground);
    } else if (copy.QuickReplaceToSprites) {
        click.ReplaceTile(context, event, PatternTable::kSprites);
    } else {
        return std::nullopt;
    }
    return click;
}

void QuickReplace::MapCharacter(GestureContext& context, const PointerEvent& event) {
    character_ = StripDrag::TryPress(context, event);
    if (character_) return;
    if (const auto hit = context.layout.CellAt(Control::kBkgTileList, event.at)) {
        context.Refresh(QuickMapCharacter(context.copy, hit->cell));
    }
}

void QuickReplace::ReplaceTile(GestureContext& context, const PointerEvent& event,
                               PatternTable table) {
    if (const auto hit = context.layout.CellAt(Control::kTargetStrip, event.at)) {
        character_ = StripDrag(Control::kTargetStrip);
        context.Refresh(SetTargetCharacter(context.copy, hit->cell.X));
        context.Refresh(QuickReplaceTile(context.copy, table));
    } else if (const auto tile = context.layout.CellAt(TileListOf(table), event.at)) {
        // The background's side for the sprite table too, as with the replacement itself.
        context.Refresh(SetCurrentTile(context.copy, table, tile->cell) |
                        ActivatePalette(context.copy, PatternTable::kBackground));
    }
}

}  // namespace bw
