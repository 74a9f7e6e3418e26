#include "builder/layout/bank_layout.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace bw {
namespace {

constexpr uint32_t kHoleEndUnits = 32;  // COOLBOY's menu ends at 512 KB, in 16 KB units

// PRG and CHR are placed by the same steps over different fields.
struct PrgSide {
    static constexpr bool kKeepsGaps = true;  // an alignment gap can still take CHR data
    static constexpr uint64_t kStep = kPrgUnit;
    static bool& Placed(MulticartItem& item) { return item.prgPlaced; }
    static uint32_t& Offset(MulticartItem& item) { return item.prgOffset; }
    static uint32_t Span(const MulticartItem& item) { return item.prgSpan; }
    static uint32_t Units(const MulticartItem& item) { return item.prgUnits; }
    static uint32_t Crc(const MulticartItem& item) { return item.prgCrc; }
};

struct ChrSide {
    static constexpr bool kKeepsGaps = false;
    static constexpr uint64_t kStep = kChrUnit;
    static bool& Placed(MulticartItem& item) { return item.chrPlaced; }
    static uint32_t& Offset(MulticartItem& item) { return item.chrOffset; }
    static uint32_t Span(const MulticartItem& item) { return item.chrSpan; }
    static uint32_t Units(const MulticartItem& item) { return item.chrUnits; }
    static uint32_t Crc(const MulticartItem& item) { return item.chrCrc; }
};

uint32_t ClampTo32(uint64_t value) {
    return static_cast<uint32_t>(std::min<uint64_t>(value, std::numeric_limits<uint32_t>::max()));
}

// The working list. Records stay where they are; the steps exchange positions in `order`.
class Allocator {
  public:
    explicit Allocator(std::vector<MulticartItem> items) : items_(std::move(items)) {
        order_.resize(items_.size());
        std::iota(order_.begin(), order_.end(), size_t{0});
        for (size_t i = 0; i < items_.size(); ++i) {
            byPrgCrc_[items_[i].prgCrc].push_back(i);
            byChrCrc_[items_[i].chrCrc].push_back(i);
        }
    }

    template <typename Side>
    void SortByUnits() {
        std::stable_sort(order_.begin(), order_.end(), [this](size_t a, size_t b) {
            return Side::Units(items_[a]) > Side::Units(items_[b]);
        });
    }

    // One walk for each region, in the list's order: what fits is taken, nothing is reconsidered.
    template <typename Side>
    void FillRegions() {
        for (FreeRegion& region : regions_) {
            for (size_t at = 0; region.length != 0 && at < order_.size(); ++at) {
                MulticartItem& item = items_[order_[at]];
                if (Side::Placed(item)) continue;
                const uint32_t span = Side::Span(item);
                if (span == 0) {
                    Side::Placed(item) = true;
                } else if (span <= region.length && region.offset % span == 0) {
                    Place<Side>(item, region.offset);
                    region.offset += span;
                    region.length -= span;
                }
            }
        }
    }

    // Places what is left behind `cursor`. Gives the cursor behind the last byte.
    template <typename Side>
    uint64_t FillBehind(uint64_t cursor) {
        for (size_t at = 0; at < order_.size(); ++at) {
            if (Settled<Side>(Item(at))) continue;
            if (cursor % Side::Span(Item(at)) != 0 && !FindFitting<Side>(at, cursor)) {
                cursor = Align<Side>(at, cursor);
            }
            MulticartItem& item = Item(at);
            if (!Side::Placed(item)) {
                Place<Side>(item, cursor);
                cursor += Side::Span(item);
            }
        }
        return cursor;
    }

    void AddRegion(uint64_t offset, uint64_t length) {
        if (length != 0) regions_.push_back({offset, length});
    }
    void ForgetRegions() { regions_.clear(); }

    std::vector<MulticartItem> TakeItems() {
        std::vector<MulticartItem> result;
        result.reserve(order_.size());
        for (const size_t at : order_)
            result.push_back(std::move(items_[at]));
        return result;
    }

  private:
    MulticartItem& Item(size_t at) { return items_[order_[at]]; }

    // Placed already, or without data and so placed by definition.
    template <typename Side>
    static bool Settled(MulticartItem& item) {
        if (Side::Span(item) == 0) Side::Placed(item) = true;
        return Side::Placed(item);
    }

    // Brings the next item that the cursor is aligned for to position `at`, exchanging one record
    // after the other with it. A failed search therefore leaves the last record there.
    template <typename Side>
    bool FindFitting(size_t at, uint64_t cursor) {
        for (size_t other = at + 1; other < order_.size(); ++other) {
            std::swap(order_[at], order_[other]);
            MulticartItem& item = Item(at);
            if (!Settled<Side>(item) && cursor % Side::Span(item) == 0) return true;
        }
        return false;
    }

    // Raises the cursor for the record that stands at `at`, even if that is placed already.
    template <typename Side>
    uint64_t Align(size_t at, uint64_t cursor) {
        const uint64_t span = Side::Span(Item(at));
        if (span == 0) return cursor;
        const uint64_t start = cursor;
        while (cursor % span != 0)
            cursor += Side::kStep;
        if (Side::kKeepsGaps) AddRegion(start, cursor - start);
        return cursor;
    }

    // All items with the same data get the place. The menu keeps its own: the board starts it at a
    // fixed address, so it must not follow a game that happens to hold the same bytes.
    template <typename Side>
    void Place(MulticartItem& placed, uint64_t offset) {
        auto& byCrc = [this]() -> auto& {
            if constexpr (std::is_same_v<Side, PrgSide>) {
                return byPrgCrc_;
            } else {
                return byChrCrc_;
            }
        }
        ();
        for (const size_t at : byCrc[Side::Crc(placed)]) {
            if (items_[at].isMenu == 0) {
                Side::Offset(items_[at]) = ClampTo32(offset);
                Side::Placed(items_[at]) = true;
            }
        }
    }

    std::vector<MulticartItem> items_;
    std::vector<size_t> order_;
    std::vector<FreeRegion> regions_;
    std::unordered_map<uint32_t, std::vector<size_t>> byPrgCrc_;
    std::unordered_map<uint32_t, std::vector<size_t>> byChrCrc_;
};

uint32_t SumOfDistinct(const std::vector<MulticartItem>& items, uint32_t MulticartItem::*crc,
                       uint32_t MulticartItem::*span) {
    std::unordered_map<uint32_t, uint32_t> spans;
    for (const MulticartItem& item : items)
        spans.emplace(item.*crc, item.*span);
    uint64_t sum = 0;
    for (const auto& [unused, bytes] : spans)
        sum += bytes;
    return ClampTo32(sum);
}

uint32_t RomSize(const std::vector<MulticartItem>& items) {
    uint64_t size = 0;
    for (const MulticartItem& item : items) {
        if (item.prgOffset >= size) size = uint64_t{item.prgOffset} + item.prgSpan;
        if (item.chrOffset >= size) size = uint64_t{item.chrOffset} + item.chrSpan;
    }
    while (size % kPrgUnit != 0)
        size += kChrUnit;
    return ClampTo32(size);
}

// Bytes of the ROM that an item's data takes.
struct Extent {
    uint32_t begin;
    uint64_t end;
    uint32_t crc;
    const MulticartItem* item;
};

}  // namespace

uint32_t MenuOffset(uint32_t prgUnits, BoardType board) {
    const uint32_t top = board == BoardType::kCoolgirl ? prgUnits : kHoleEndUnits;
    return (std::max(top, prgUnits) - prgUnits) * kPrgUnit;
}

void RoundChrUnits(std::span<MulticartItem> items) {
    for (MulticartItem& item : items) {
        for (const uint32_t size : {0u, 1u, 2u, 4u, 8u, 16u, 32u}) {
            if (size >= item.chrCount) {
                item.SetChrUnits(size);
                break;
            }
        }
    }
}

void ApplyPrgMinimum(std::span<MulticartItem> items) {
    for (MulticartItem& item : items) {
        if (item.mapper != 0 && item.prgCount >= 1 && item.prgCount <= 7) item.SetPrgUnits(8);
    }
}

LayoutResult Allocate(MulticartItem menu, std::vector<MulticartItem> games, BoardType board) {
    LayoutResult result;
    if (menu.prgUnits == 0) return result;
    menu.isMenu = 1;
    menu.prgOffset = MenuOffset(menu.prgUnits, board);
    menu.prgPlaced = true;
    const uint64_t menuEnd = uint64_t{menu.prgOffset} + menu.prgSpan;
    const uint32_t holeLength = menu.prgUnits < kHoleEndUnits ? menu.prgOffset : 0;

    std::stable_sort(
        games.begin(), games.end(),
        [](const MulticartItem& a, const MulticartItem& b) { return a.prgUnits > b.prgUnits; });
    games.push_back(std::move(menu));
    Allocator allocator(std::move(games));

    allocator.AddRegion(0, holeLength);
    allocator.FillRegions<PrgSide>();
    allocator.FillRegions<ChrSide>();
    allocator.ForgetRegions();  // what is left of the hole stays unused

    allocator.SortByUnits<PrgSide>();
    const uint64_t prgEnd = allocator.FillBehind<PrgSide>(menuEnd);

    allocator.SortByUnits<ChrSide>();
    allocator.FillRegions<ChrSide>();
    allocator.FillBehind<ChrSide>(prgEnd);

    result.items = allocator.TakeItems();
    result.prgTotal = SumOfDistinct(result.items, &MulticartItem::prgCrc, &MulticartItem::prgSpan);
    result.chrTotal = SumOfDistinct(result.items, &MulticartItem::chrCrc, &MulticartItem::chrSpan);
    result.total = ClampTo32(uint64_t{result.prgTotal} + result.chrTotal);
    result.romSize = RomSize(result.items);
    std::stable_sort(
        result.items.begin(), result.items.end(),
        [](const MulticartItem& a, const MulticartItem& b) { return a.index < b.index; });
    return result;
}

std::optional<LayoutConflict> FindLayoutConflict(const LayoutResult& layout) {
    std::vector<Extent> extents;
    for (const MulticartItem& item : layout.items) {
        const auto add = [&](uint32_t offset, uint32_t span, uint32_t crc) -> bool {
            if (span == 0) return true;
            extents.push_back({offset, uint64_t{offset} + span, crc, &item});
            return offset % span == 0 && extents.back().end <= layout.romSize;
        };
        // The menu's place is fixed by the board, not by its length.
        const bool fits = add(item.prgOffset, item.prgSpan, item.prgCrc) || item.isMenu != 0;
        if (!add(item.chrOffset, item.chrSpan, item.chrCrc) || !fits) {
            return LayoutConflict{&item, &item};
        }
    }
    std::sort(extents.begin(), extents.end(), [](const Extent& a, const Extent& b) {
        return a.begin != b.begin ? a.begin < b.begin : a.end > b.end;
    });
    const Extent* furthest = nullptr;
    for (const Extent& extent : extents) {
        if (furthest != nullptr && extent.begin < furthest->end &&
            (extent.begin != furthest->begin || extent.crc != furthest->crc)) {
            return LayoutConflict{furthest->item, extent.item};
        }
        if (furthest == nullptr || extent.end > furthest->end) furthest = &extent;
    }
    return std::nullopt;
}

}  // namespace bw
