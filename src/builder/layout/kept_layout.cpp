#include "builder/layout/kept_layout.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

namespace bw {
namespace {

// One piece of data with all games that have it.
struct Piece {
    uint32_t crc = 0;
    uint32_t bytes = 0;             // in the image
    uint64_t span = 0;              // the longest that a game takes for it
    std::vector<uint32_t> spans{};  // that the place must be a multiple of
    std::vector<uint32_t*> offsets{};
    bool placed = false;
};

// The ROM while it is filled: what is taken, and which sectors differ from the earlier cart
// already.
class Ground {
  public:
    // True if it was free and is taken now.
    bool Take(uint64_t begin, uint64_t bytes) {
        const auto next = taken_.lower_bound(begin);
        if (next != taken_.end() && next->first < begin + bytes) return false;
        if (next != taken_.begin() && std::prev(next)->second > begin) return false;
        taken_.emplace(begin, begin + bytes);
        return true;
    }

    uint64_t End() const { return taken_.empty() ? 0 : taken_.rbegin()->second; }

    // Data in sectors that change anyway costs nothing, so those go first; else the first place
    // that is free.
    void TakeNew(Piece& piece) {
        uint64_t at = 0;
        if (const auto dirty = Find(piece, true)) {
            at = *dirty;
        } else {
            at = *Find(piece, false);
        }
        Take(at, piece.span);
        Place(piece, at);
        const uint64_t last = (at + piece.span - 1) / kSectorBytes;
        if (dirty_.size() <= last) dirty_.resize(last + 1);
        for (uint64_t sector = at / kSectorBytes; sector <= last; ++sector)
            dirty_[sector] = true;
    }

    static void Place(Piece& piece, uint64_t at) {
        for (uint32_t* offset : piece.offsets)
            *offset = static_cast<uint32_t>(std::min(at, kMost));
        piece.placed = true;
    }

    static bool Aligned(const Piece& piece, uint64_t at) {
        return std::ranges::all_of(piece.spans, [at](uint32_t span) { return at % span == 0; });
    }

  private:
    static constexpr uint64_t kSectorBytes = uint64_t{128} * 1024;  // of the boards' flash

    bool Dirty(uint64_t begin, uint64_t bytes) const {
        for (uint64_t sector = begin / kSectorBytes; sector * kSectorBytes < begin + bytes;
             ++sector) {
            if (sector >= dirty_.size() || !dirty_[sector]) return false;
        }
        return true;
    }

    // With `dirty` none may be; else there is always one behind all.
    std::optional<uint64_t> Find(const Piece& piece, bool dirty) const {
        const uint64_t step = piece.spans.front();
        const auto search = [&](uint64_t begin, uint64_t end) -> std::optional<uint64_t> {
            for (uint64_t at = (begin + step - 1) / step * step; at + piece.span <= end;
                 at += step) {
                if (Aligned(piece, at) && (!dirty || Dirty(at, piece.span))) return at;
            }
            return std::nullopt;
        };
        uint64_t begin = 0;
        for (const auto& [next, end] : taken_) {
            if (const auto at = search(begin, next)) return at;
            begin = std::max(begin, end);
        }
        const uint64_t dirtyEnd = dirty_.size() * kSectorBytes;
        return search(begin, dirty ? std::max(begin, dirtyEnd) : kFar);
    }

    static constexpr uint64_t kFar = uint64_t{1} << 40;  // no data ends behind it
    static constexpr uint64_t kMost = ~uint32_t{0};
    std::map<uint64_t, uint64_t> taken_;  // begin, end
    std::vector<bool> dirty_;
};

// PRG and CHR apart, as Allocate shares them.
std::vector<Piece> PiecesOf(std::vector<MulticartItem>& games) {
    std::vector<Piece> pieces;
    const auto collect = [&](uint32_t MulticartItem::*crc, uint32_t MulticartItem::*bytes,
                             uint32_t MulticartItem::*span, uint32_t MulticartItem::*offset) {
        std::unordered_map<uint32_t, size_t> numbers;
        for (MulticartItem& game : games) {
            if (game.*span == 0) continue;
            const auto [at, added] = numbers.try_emplace(game.*crc, pieces.size());
            if (added) pieces.push_back({.crc = game.*crc, .bytes = game.*bytes});
            Piece& piece = pieces[at->second];
            piece.span = std::max<uint64_t>(piece.span, game.*span);
            if (std::ranges::count(piece.spans, game.*span) == 0) piece.spans.push_back(game.*span);
            std::ranges::sort(piece.spans, std::greater{});
            piece.offsets.push_back(&(game.*offset));
        }
    };
    collect(&MulticartItem::prgCrc, &MulticartItem::prgBytes, &MulticartItem::prgSpan,
            &MulticartItem::prgOffset);
    collect(&MulticartItem::chrCrc, &MulticartItem::chrBytes, &MulticartItem::chrSpan,
            &MulticartItem::chrOffset);
    return pieces;
}

// Leaves each piece at the first of its places that it can have. Gives the bytes that have stayed.
uint64_t Keep(std::vector<Piece>& pieces, std::span<const KeptPlace> places, Ground& ground) {
    std::multimap<std::pair<uint32_t, uint32_t>, uint32_t> offsets;  // by sum and length
    for (const KeptPlace& place : places)
        offsets.emplace(std::pair(place.crc, place.bytes), place.offset);
    uint64_t kept = 0;
    for (Piece& piece : pieces) {
        const auto [begin, end] = offsets.equal_range({piece.crc, piece.bytes});
        for (auto at = begin; at != end && !piece.placed; ++at) {
            if (!Ground::Aligned(piece, at->second) || !ground.Take(at->second, piece.span)) {
                continue;
            }
            Ground::Place(piece, at->second);
            kept += piece.bytes;
        }
    }
    return kept;
}

}  // namespace

LayoutResult AllocateKeeping(MulticartItem menu, std::vector<MulticartItem> games, BoardType board,
                             std::span<const KeptPlace> places, uint64_t* keptBytes) {
    LayoutResult result;
    if (menu.prgUnits == 0) return result;
    menu.isMenu = 1;
    menu.prgOffset = MenuOffset(menu.prgUnits, board);
    Ground ground;
    ground.Take(menu.prgOffset, menu.prgSpan);

    std::vector<Piece> pieces = PiecesOf(games);
    const uint64_t kept = Keep(pieces, places, ground);
    if (keptBytes != nullptr) *keptBytes = kept;
    std::ranges::stable_sort(pieces, std::greater{}, &Piece::span);
    for (Piece& piece : pieces) {
        if (!piece.placed) ground.TakeNew(piece);
    }

    result.items = std::move(games);
    result.items.push_back(std::move(menu));
    for (MulticartItem& item : result.items)
        item.prgPlaced = item.chrPlaced = true;
    FinishLayout(result, ground.End());
    return result;
}

}  // namespace bw
