// What the status line says of the place under the pointer.
#pragma once

#include <QTimer>
#include <functional>
#include <string>

#include "designer/gestures/gesture_context.h"
#include "shell/framework/elided_label.h"

namespace bw {

// It follows a moment behind: words take as long as the picture that they tell of, which comes
// first.
class PointerLabel : public ElidedLabel {
  public:
    using Words = std::function<std::u16string(const PointerEvent& event)>;

    explicit PointerLabel(Words words);

    void Follow(const PointerEvent& event);
    // The pointer has gone.
    void Clear();

  private:
    Words words_;
    PointerEvent last_;
    QTimer later_;
};

}  // namespace bw
