// A click on the attribute view or on a palette. It acts with each event behind the press.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class ViewClick {
  public:
    static std::optional<ViewClick> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const;
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext& context, const PointerEvent& event) { Move(context, event); }

  private:
    explicit ViewClick(Control view) : view_(view) {}

    Control view_;
};

}  // namespace bw
