#include "console/frame_agreement.h"

#include <algorithm>
#include <set>

namespace bw {
namespace {

// From this frame on every frame must match; of a short recording its second half.
constexpr size_t kSettled = 120;

size_t SettledIn(std::span<const FrameCode> recording) {
    return std::min(kSettled, recording.size() / 2);
}

// Sprites that a program has not sent yet are whatever was there before it.
bool SameSprites(const FrameCode& cart, uint32_t cartFirst, const FrameCode& alone,
                 uint32_t aloneFirst) {
    return cart.sprites == alone.sprites ||
           (cart.sprites == cartFirst && alone.sprites == aloneFirst);
}

}  // namespace

std::optional<int> AgreeingShift(std::span<const FrameCode> cart, std::span<const FrameCode> alone,
                                 ComparedParts parts) {
    if (cart.empty() || alone.empty()) return std::nullopt;
    const auto same = [&](const FrameCode& a, const FrameCode& b) {
        return a.screen == b.screen &&
               SameSprites(a, cart.front().sprites, b, alone.front().sprites) &&
               (parts == ComparedParts::kNotTiles || a.tiles == b.tiles);
    };
    const int largest = static_cast<int>(kLargestShift);
    // The nearest first: of a still picture every shift would do.
    for (int step = 0; step <= 2 * largest; ++step) {
        const int shift = step % 2 == 0 ? step / 2 : -(step + 1) / 2;
        bool agree = true;
        for (size_t i = SettledIn(cart); agree && i < cart.size(); ++i) {
            const int64_t other = static_cast<int64_t>(i) + shift;
            agree = other >= 0 && other < static_cast<int64_t>(alone.size()) &&
                    same(cart[i], alone[static_cast<size_t>(other)]);
        }
        if (agree) return shift;
    }
    return std::nullopt;
}

Likeness Compare(std::span<const FrameCode> cart, std::span<const FrameCode> alone) {
    if (AgreeingShift(cart, alone, ComparedParts::kAll)) return Likeness::kSame;
    std::set<std::pair<uint32_t, uint32_t>> screens;
    for (const FrameCode& frame : alone)
        screens.emplace(frame.screen, frame.tiles);
    const auto end = cart.last(cart.size() - cart.size() * 3 / 4);
    const auto known = static_cast<size_t>(std::ranges::count_if(end, [&](const FrameCode& frame) {
        return screens.contains({frame.screen, frame.tiles});
    }));
    return 2 * known >= end.size() ? Likeness::kAlike : Likeness::kDifferent;
}

bool ShareTiles(std::span<const FrameCode> cart, std::span<const FrameCode> alone) {
    std::set<uint32_t> tiles;
    for (const FrameCode& frame : alone)
        tiles.insert(frame.tiles);
    return std::ranges::any_of(cart.subspan(SettledIn(cart)),
                               [&](const FrameCode& frame) { return tiles.contains(frame.tiles); });
}

}  // namespace bw
