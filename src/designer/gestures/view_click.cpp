#include "designer/gestures/view_click.h"

#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

void ClickAttribute(GestureContext& context, Point at) {
    if (const auto hit = context.layout.CellAt(Control::kAttribute, at)) {
        context.Refresh(SetCurrentQuadrant(context.copy, hit->cell));
    }
    context.Refresh(ActivatePalette(context.copy, PatternTable::kBackground));
}

void ClickBkgPalette(GestureContext& context, Point at) {
    const auto hit = context.layout.CellAt(Control::kBkgPalette, at);
    if (hit && context.memory.lastBkgEntry != hit->cell.X) {
        context.memory.lastBkgEntry = hit->cell.X;
        context.Refresh(PickBkgEntry(context.copy, hit->cell.X));
    }
    context.Refresh(ActivatePalette(context.copy, PatternTable::kBackground));
}

void ClickSpritePalette(GestureContext& context, Point at) {
    const auto hit = context.layout.CellAt(Control::kSpritePalette, at);
    if (hit && context.memory.lastSpriteEntry != hit->cell.X) {
        context.memory.lastSpriteEntry = hit->cell.X;
        context.Refresh(PickSpriteEntry(context.copy, hit->cell.X));
    }
    context.Refresh(ActivatePalette(context.copy, PatternTable::kSprites));
}

// A colour redraws a whole pattern table, so not every movement counts.
void ClickSystemPalette(GestureContext& context, const PointerEvent& event) {
    constexpr std::chrono::milliseconds kPause{20};
    const auto hit = context.layout.CellAt(Control::kSystemPalette, event.at);
    if (!hit) return;
    auto& last = context.memory.lastColourTime;
    if (last && event.time >= *last && event.time - *last < kPause) return;
    last = event.time;
    context.Refresh(PickColour(context.copy, hit->cell));
}

}  // namespace

std::optional<ViewClick> ViewClick::TryPress(GestureContext& context, const PointerEvent& event) {
    for (const Control view : {Control::kAttribute, Control::kBkgPalette, Control::kSpritePalette,
                               Control::kSystemPalette}) {
        if (context.layout.IsOn(view, event.at)) return ViewClick(view);
    }
    return std::nullopt;
}

MouseMode ViewClick::Mode() const {
    switch (view_) {
        case Control::kBkgPalette:
            return MouseMode::kBkgPalette;
        case Control::kSpritePalette:
            return MouseMode::kSpritePalette;
        case Control::kSystemPalette:
            return MouseMode::kSystemPalette;
        default:
            return MouseMode::kAttribute;
    }
}

void ViewClick::Move(GestureContext& context, const PointerEvent& event) {
    switch (view_) {
        case Control::kBkgPalette:
            return ClickBkgPalette(context, event.at);
        case Control::kSpritePalette:
            return ClickSpritePalette(context, event.at);
        case Control::kSystemPalette:
            return ClickSystemPalette(context, event);
        default:
            return ClickAttribute(context, event.at);
    }
}

}  // namespace bw
