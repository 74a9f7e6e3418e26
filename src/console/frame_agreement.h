// Compares what a game shows in two recordings that may begin some frames apart.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "console/emulator.h"

namespace bw {

// The recordings may be this many frames apart: the menu needs some to hand over, a program by
// itself waits for the picture unit to warm up.
inline constexpr uint32_t kLargestShift = 100;

enum class Likeness : uint8_t {
    kSame,   // every frame, once the start is over
    kAlike,  // most screens of its end show up in the other recording, too
    kDifferent,
};

enum class ComparedParts : uint8_t { kAll, kNotTiles };

// By how many frames `alone` is behind `cart` where they agree from the end of the start on;
// nothing if they don't.
std::optional<int> AgreeingShift(std::span<const FrameCode> cart, std::span<const FrameCode> alone,
                                 ComparedParts parts);

Likeness Compare(std::span<const FrameCode> cart, std::span<const FrameCode> alone);

// Whether some frame of the cart has tiles that some frame alone has.
bool ShareTiles(std::span<const FrameCode> cart, std::span<const FrameCode> alone);

}  // namespace bw
