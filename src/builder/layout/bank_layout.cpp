#include "builder/layout/bank_layout.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

#include "builder/layout/layout_shapes.h"

namespace bw {
namespace {

constexpr uint32_t kHoleEndUnits = 32;  // COOLBOY's menu ends at 512 KB, in 16 KB units

uint32_t ClampTo32(uint64_t value) {
    return static_cast<uint32_t>(std::min<uint64_t>(value, std::numeric_limits<uint32_t>::max()));
}

// Equal sums get equal numbers, from 0 in the order of the items.
class DataNumbers {
  public:
    uint32_t Of(uint32_t crc) {
        return numbers_.try_emplace(crc, static_cast<uint32_t>(numbers_.size())).first->second;
    }

  private:
    std::unordered_map<uint32_t, uint32_t> numbers_;
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

void FinishLayout(LayoutResult& result, uint64_t end) {
    result.prgTotal = SumOfDistinct(result.items, &MulticartItem::prgCrc, &MulticartItem::prgSpan);
    result.chrTotal = SumOfDistinct(result.items, &MulticartItem::chrCrc, &MulticartItem::chrSpan);
    result.total = ClampTo32(uint64_t{result.prgTotal} + result.chrTotal);
    result.romSize = ClampTo32((end + kPrgUnit - 1) / kPrgUnit * kPrgUnit);
    std::stable_sort(
        result.items.begin(), result.items.end(),
        [](const MulticartItem& a, const MulticartItem& b) { return a.index < b.index; });
}

LayoutResult Allocate(MulticartItem menu, std::vector<MulticartItem> games, BoardType board) {
    LayoutResult result;
    if (menu.prgUnits == 0) return result;
    std::vector<GameShape> shapes;
    shapes.reserve(games.size());
    DataNumbers prg;
    DataNumbers chr;
    for (const MulticartItem& game : games)
        shapes.push_back({game.prgSpan, game.chrSpan, prg.Of(game.prgCrc), chr.Of(game.chrCrc)});
    const ShapeLayout layout = LayOutShapes(menu.prgUnits, board, shapes);

    menu.isMenu = 1;
    menu.prgOffset = MenuOffset(menu.prgUnits, board);
    menu.prgPlaced = menu.chrPlaced = true;
    result.items.reserve(layout.order.size());
    for (const uint32_t at : layout.order) {
        MulticartItem& item =
            result.items.emplace_back(std::move(at == shapes.size() ? menu : games[at]));
        if (item.isMenu != 0) continue;
        item.prgOffset = ClampTo32(layout.prgOffsets[shapes[at].prgData]);
        item.chrOffset = ClampTo32(layout.chrOffsets[shapes[at].chrData]);
        item.prgPlaced = item.chrPlaced = true;
    }
    FinishLayout(result, layout.romSize);
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
