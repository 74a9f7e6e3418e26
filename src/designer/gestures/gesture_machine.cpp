#include "designer/gestures/gesture_machine.h"

#include "designer/gestures/double_click.h"
#include "designer/gestures/gesture_places.h"
#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

PointerEvent Cut(PointerEvent event) {
    event.at = {static_cast<int16_t>(event.at.x), static_cast<int16_t>(event.at.y)};
    return event;
}

template <typename G>
bool Takes(Gesture& gesture, GestureContext& context, const PointerEvent& event) {
    std::optional<G> taken = G::TryPress(context, event);
    if (!taken) return false;
    gesture = *std::move(taken);
    return true;
}

template <typename... G>
void OfferPress(std::variant<G...>& gesture, GestureContext& context, const PointerEvent& event) {
    static_cast<void>((Takes<G>(gesture, context, event) || ...));
}

void BeginPress(Gesture& gesture, GestureContext& context, const PointerEvent& event) {
    EndQuickReplace(context, event.at);
    OfferPress(gesture, context, event);
}

void DropGesture(Gesture& gesture, GestureContext& context, const PointerEvent& event) {
    std::visit([&](auto& dropped) { dropped.Drop(context, event); }, gesture);
    gesture = NoGesture();
}

void SelectCursors(DesignStore& store) {
    for (TileItem& arrow : store.ArrowTileList)
        arrow.Selected |= TileItem::kSelected;
    store.ArrowTile.Selected |= TileItem::kSelected;
}

}  // namespace

Views GestureMachine::Capture(const PointerEvent& event) {
    // A second press without a release: the pointer was let go where nobody saw it.
    const Views before = step_ ? Release(event) : Views();
    step_.emplace(session_);
    return before;
}

GestureContext GestureMachine::Context() {
    return {step_->Copy(), layout_, memory_, shiftDown_, {}};
}

Views GestureMachine::Press(PointerEvent event) {
    event = Cut(event);
    const Views before = Capture(event);
    GestureContext context = Context();
    BeginPress(gesture_, context, event);
    return before | context.stale;
}

Views GestureMachine::DoubleClick(PointerEvent event) {
    if (session_.Copy().QuickReplaceFromBkg) return {};
    event = Cut(event);
    const Views before = Capture(event);
    GestureContext context = Context();
    if (context.copy.QuickAction && !shiftDown_) {
        Takes<QuickAction>(gesture_, context, event);
    } else {
        SelectByDoubleClick(context, event);
    }
    return before | context.stale;
}

Views GestureMachine::Move(PointerEvent event) {
    if (!step_) return {};
    event = Cut(event);
    GestureContext context = Context();
    std::visit([&](auto& gesture) { gesture.Move(context, event); }, gesture_);
    return context.stale;
}

Views GestureMachine::Release(PointerEvent event) {
    // With Shift there may have been a rubber band.
    const Views shown = shiftDown_ ? kBandViews | View::kCheckBoxes : View::kCheckBoxes;
    // A release alone, behind a double click that was ignored or after a lost press, ends nothing.
    if (!step_) return shown;
    event = Cut(event);
    GestureContext context = Context();
    DropGesture(gesture_, context, event);
    step_->Commit();
    step_.reset();
    return context.stale | shown;
}

// During a gesture it is a part of that gesture's step.
Views GestureMachine::MiddlePress() {
    if (step_) {
        SelectCursors(step_->Copy().Store());
    } else {
        EditStep step(session_);
        SelectCursors(step.Copy().Store());
        step.Commit();
    }
    return View::kNameTable | View::kCheckBoxes;
}

Views GestureMachine::RightPress(PointerEvent event) {
    if (step_) return {};
    event = Cut(event);
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        const auto pixel = layout_.CellAt(EditorOf(table), event.at);
        if (!pixel) continue;
        // The palettes' cells, even the one that was handled last, count again.
        memory_.ForgetEntries();
        return session_.Run(
            [&](WorkingCopy& copy) { return PickTileColour(copy, table, pixel->cell); });
    }
    return {};
}

GestureTrial GestureMachine::TryPress(PointerEvent event) const {
    GestureTrial trial{session_.Copy(), {}};
    GestureMemory memory = memory_;
    GestureContext context{trial.copy, layout_, memory, shiftDown_, {}};
    BeginPress(trial.gesture, context, Cut(event));
    return trial;
}

GestureTrial GestureMachine::TryRelease(PointerEvent event) const {
    GestureTrial trial{session_.Copy(), gesture_};
    GestureMemory memory = memory_;
    GestureContext context{trial.copy, layout_, memory, shiftDown_, {}};
    DropGesture(trial.gesture, context, Cut(event));
    return trial;
}

// During a gesture Shift means another thing: sprites snap to cells.
Views GestureMachine::ShiftKeyDown() {
    if (Mode() == MouseMode::kIdle) shiftDown_ = true;
    return {};
}

// Ends a rubber band at once; what it has selected stays selected.
Views GestureMachine::ShiftKeyUp() {
    shiftDown_ = false;
    if (!RubberBandActive()) return {};
    gesture_ = NoGesture();
    return kBandViews;
}

MouseMode GestureMachine::Mode() const {
    return std::visit([](const auto& gesture) { return gesture.Mode(); }, gesture_);
}

std::optional<RubberBands> GestureMachine::Bands() const {
    const auto* band = std::get_if<RubberBandDrag>(&gesture_);
    return band == nullptr ? std::nullopt : std::optional(band->Bands());
}

const Ghost& GestureMachine::DraggedPicture() const {
    static const Ghost kNone;
    return std::visit(
        [](const auto& gesture) -> const Ghost& {
            if constexpr (requires { gesture.DraggedPicture(); }) {
                return gesture.DraggedPicture();
            } else {
                return kNone;
            }
        },
        gesture_);
}

}  // namespace bw
