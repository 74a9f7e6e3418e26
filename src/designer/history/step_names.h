// What the steps of the undo history did, in words, worked out from the states on both sides.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "designer/history/edit_session.h"
#include "language/language.h"

namespace bw {

// "Sprite 3 moved", "Tiles placed (14), Background tiles changed (2)": what differs of two work
// states, the most telling first. Sprites count from 0.
std::u16string NameOfStep(std::span<const uint8_t> before, std::span<const uint8_t> after,
                          Language language);

// The names of a history's steps. It keeps the state that it was asked for last, so names of
// neighbours cost microseconds; a jump over thousands of steps costs a millisecond.
class StepNames {
  public:
    // `history` must outlive it.
    explicit StepNames(const UndoHistory& history) : history_(history) {}

    // How a state, below Count, came from the one in front of it; "Start" for the first.
    std::u16string Of(size_t state, Language language);

  private:
    void GoTo(size_t state);

    const UndoHistory& history_;
    std::optional<uint64_t> revision_;  // of the history when state_ was taken
    WorkState state_;
    size_t at_ = 0;  // its number
};

// For the buttons: what a press would take back or bring back, and the key.
std::u16string UndoTip(const EditSession& session, Language language);
std::u16string RedoTip(const EditSession& session, Language language);

}  // namespace bw
