// The difference between two work states, good in both directions. It costs what changed and a few
// bytes, not a copy: a work state is a run of chunks, and a step touches few of them.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace bw {

using WorkState = std::vector<uint8_t>;

// The type of the chunk that a work state is, and of the header in front of each in the history.
inline constexpr uint32_t kStateContainer = 16;

class StateDelta {
  public:
    StateDelta(std::span<const uint8_t> before, std::span<const uint8_t> after);

    WorkState Forward(std::span<const uint8_t> before) const;
    WorkState Backward(std::span<const uint8_t> after) const;

  private:
    // Hunk for hunk: the number of equal bytes in front of it, the number of bytes it takes away
    // and of those it puts there (7 bits a byte, the lowest first), then the former and the latter.
    // What follows the last hunk is equal.
    std::vector<uint8_t> bytes_;
};

}  // namespace bw
