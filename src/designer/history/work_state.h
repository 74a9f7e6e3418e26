// The working copy as bytes: what the history compares, keeps and gives back, and what carries the
// designer's state from one run of the program to the next.
#pragma once

#include <cstdint>
#include <span>

#include "designer/history/state_delta.h"
#include "designer/model/working_copy.h"

namespace bw {

// The types of the chunks that hold the marks on the tiles of both tables.
inline constexpr uint32_t kBkgTileMarks = 33;
inline constexpr uint32_t kSpriteTileMarks = 34;

// A container chunk of type 16 whose payload is one chunk for each table, list item and place in
// use. The Index of tiles and sprites goes in as 0, so that mere renumbering is no difference. What
// the user has switched on to look at isn't part of it.
WorkState BuildWorkState(const WorkingCopy& copy);

// Makes the working copy equal to the state; all views are out of date then. A state that doesn't
// begin like one empties the four lists and changes nothing else. A state with a chunk that leaves
// it or doesn't fit its field is refused, and the working copy stays as it was: false.
bool ApplyWorkState(std::span<const uint8_t> state, WorkingCopy& copy);

}  // namespace bw
