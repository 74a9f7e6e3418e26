#include "builder/layout/layout_shapes.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "builder/layout/bank_layout.h"

namespace bw {
namespace {

constexpr uint32_t kHoleUnits = 32;  // menus of fewer 16 KB units may have a hole below them
constexpr uint64_t kNowhere = ~uint64_t{0};

// PRG and CHR are placed by the same steps over different fields.
struct PrgSide {
    static constexpr bool kKeepsGaps = true;  // an alignment gap can still take CHR data
    static constexpr uint64_t kStep = kPrgUnit;
    static constexpr uint32_t GameShape::*kSpan = &GameShape::prgSpan;
    static constexpr uint32_t GameShape::*kData = &GameShape::prgData;
    static constexpr std::vector<uint64_t> ShapeLayout::*kOffsets = &ShapeLayout::prgOffsets;
};

struct ChrSide {
    static constexpr bool kKeepsGaps = false;
    static constexpr uint64_t kStep = kChrUnit;
    static constexpr uint32_t GameShape::*kSpan = &GameShape::chrSpan;
    static constexpr uint32_t GameShape::*kData = &GameShape::chrData;
    static constexpr std::vector<uint64_t> ShapeLayout::*kOffsets = &ShapeLayout::chrOffsets;
};

// The working list: the steps exchange positions in the layout's order.
class Placer {
  public:
    Placer(std::span<const GameShape> games, ShapeLayout& layout) : games_(games), layout_(layout) {
        layout_.order.resize(games.size());
        std::iota(layout_.order.begin(), layout_.order.end(), uint32_t{0});
        MakeRoom<PrgSide>();
        MakeRoom<ChrSide>();
    }

    // The first `count` records, the longest first.
    template <typename Side>
    void SortBySpan(size_t count) {
        const auto end = layout_.order.begin() + static_cast<std::ptrdiff_t>(count);
        std::stable_sort(layout_.order.begin(), end, [this](uint32_t a, uint32_t b) {
            return games_[a].*Side::kSpan > games_[b].*Side::kSpan;
        });
    }

    // One walk for each region, in the list's order: what fits is taken, nothing is reconsidered.
    template <typename Side>
    void FillRegions() {
        for (FreeRegion& region : regions_) {
            for (size_t at = 0; region.length != 0 && at < layout_.order.size(); ++at) {
                if (Settled<Side>(at)) continue;
                const uint32_t span = Span<Side>(at);
                if (span <= region.length && region.offset % span == 0) {
                    Offset<Side>(at) = region.offset;
                    region.offset += span;
                    region.length -= span;
                }
            }
        }
    }

    // Places what is left behind `cursor`. Gives the cursor behind the last byte.
    template <typename Side>
    uint64_t FillBehind(uint64_t cursor) {
        for (size_t at = 0; at < layout_.order.size(); ++at) {
            if (Settled<Side>(at)) continue;
            if (cursor % Span<Side>(at) != 0 && !FindFitting<Side>(at, cursor)) {
                cursor = Align<Side>(at, cursor);
            }
            if (!Settled<Side>(at)) {
                Offset<Side>(at) = cursor;
                cursor += Span<Side>(at);
            }
        }
        return cursor;
    }

    void AddRegion(uint64_t offset, uint64_t length) {
        if (length != 0) regions_.push_back({offset, length});
    }
    void ForgetRegions() { regions_.clear(); }

  private:
    template <typename Side>
    void MakeRoom() {
        uint32_t count = 0;
        for (const GameShape& game : games_)
            count = std::max(count, game.*Side::kData + 1);
        (layout_.*Side::kOffsets).assign(count, kNowhere);
    }

    template <typename Side>
    uint32_t Span(size_t at) const {
        return games_[layout_.order[at]].*Side::kSpan;
    }
    // All games with the same data have one.
    template <typename Side>
    uint64_t& Offset(size_t at) {
        return (layout_.*Side::kOffsets)[games_[layout_.order[at]].*Side::kData];
    }
    // Placed already, or without data and so placed by definition.
    template <typename Side>
    bool Settled(size_t at) {
        return Span<Side>(at) == 0 || Offset<Side>(at) != kNowhere;
    }

    // Brings the next item that the cursor is aligned for to position `at`, exchanging one record
    // after the other with it. A failed search therefore leaves the last record there.
    template <typename Side>
    bool FindFitting(size_t at, uint64_t cursor) {
        for (size_t other = at + 1; other < layout_.order.size(); ++other) {
            std::swap(layout_.order[at], layout_.order[other]);
            if (!Settled<Side>(at) && cursor % Span<Side>(at) == 0) return true;
        }
        return false;
    }

    // Raises the cursor for the record that stands at `at`, even if that is placed already.
    template <typename Side>
    uint64_t Align(size_t at, uint64_t cursor) {
        const uint64_t span = Span<Side>(at);
        if (span == 0) return cursor;
        const uint64_t start = cursor;
        while (cursor % span != 0)
            cursor += Side::kStep;
        if (Side::kKeepsGaps) AddRegion(start, cursor - start);
        return cursor;
    }

    std::span<const GameShape> games_;
    ShapeLayout& layout_;
    std::vector<FreeRegion> regions_;
};

// To the last byte in use, in the order of the list: where data of two lengths shares a place, what
// comes later doesn't count.
uint64_t RomSize(const ShapeLayout& layout, std::span<const GameShape> games) {
    uint64_t size = 0;
    for (const uint32_t at : layout.order) {
        const GameShape& game = games[at];
        const uint64_t prg = layout.prgOffsets[game.prgData];
        const uint64_t chr = layout.chrOffsets[game.chrData];
        if (prg >= size) size = prg + game.prgSpan;
        if (chr >= size) size = chr + game.chrSpan;
    }
    return (size + kPrgUnit - 1) / kPrgUnit * kPrgUnit;
}

}  // namespace

ShapeLayout LayOutShapes(uint32_t menuUnits, BoardType board, std::span<const GameShape> games) {
    // The menu takes part as one more game, with data that no other has: the board starts it at a
    // fixed address, so it must not follow a game that happens to hold the same bytes.
    std::vector<GameShape> all(games.begin(), games.end());
    GameShape menu{menuUnits * kPrgUnit, 0, 0, 0};
    for (const GameShape& game : games) {
        menu.prgData = std::max(menu.prgData, game.prgData + 1);
        menu.chrData = std::max(menu.chrData, game.chrData + 1);
    }
    const uint64_t menuOffset = MenuOffset(menuUnits, board);
    all.push_back(menu);

    ShapeLayout layout;
    Placer placer(all, layout);
    layout.prgOffsets[menu.prgData] = menuOffset;
    placer.SortBySpan<PrgSide>(games.size());
    placer.AddRegion(0, menuUnits < kHoleUnits ? menuOffset : 0);
    placer.FillRegions<PrgSide>();
    placer.FillRegions<ChrSide>();
    placer.ForgetRegions();  // what is left of the hole stays unused

    // Sorted but for the menu, which goes behind the games of its length.
    const auto place =
        std::upper_bound(layout.order.begin(), layout.order.end() - 1, menu.prgSpan,
                         [&](uint32_t span, uint32_t game) { return span > all[game].prgSpan; });
    std::rotate(place, layout.order.end() - 1, layout.order.end());
    const uint64_t prgEnd = placer.FillBehind<PrgSide>(menuOffset + menu.prgSpan);

    placer.SortBySpan<ChrSide>(all.size());
    placer.FillRegions<ChrSide>();
    placer.FillBehind<ChrSide>(prgEnd);

    for (std::vector<uint64_t>* offsets : {&layout.prgOffsets, &layout.chrOffsets})
        std::replace(offsets->begin(), offsets->end(), kNowhere, uint64_t{0});
    layout.romSize = RomSize(layout, all);
    return layout;
}

}  // namespace bw
