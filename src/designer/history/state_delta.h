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

// Neighbouring chunks of one type with their headers: a list, or a single chunk.
struct StateSection {
    uint32_t type;
    size_t begin;  // bytes from the state's start
    size_t end;
};
// The header of a state and what follows it; bytes that are no work state come out as one section.
std::vector<StateSection> SectionsOf(std::span<const uint8_t> state);

class StateDelta {
  public:
    StateDelta(std::span<const uint8_t> before, std::span<const uint8_t> after);
    // What Stored has given. Other bytes make a difference that fits no state, or only by chance.
    explicit StateDelta(std::span<const uint8_t> stored) : bytes_(stored.begin(), stored.end()) {}

    // Turn the state on one side into that on the other. False if it is another state, one that
    // isn't what it should be where the difference lies; it is spoilt then.
    bool Forward(WorkState& before) const;
    bool Backward(WorkState& after) const;

    std::span<const uint8_t> Stored() const { return bytes_; }

  private:
    // Hunk for hunk: the number of equal bytes in front of it, the number of bytes it takes away
    // and of those it puts there (7 bits a byte, the lowest first), then the former and the latter.
    // What follows the last hunk is equal.
    std::vector<uint8_t> bytes_;
};

}  // namespace bw
