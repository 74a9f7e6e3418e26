#include "list/list_order.h"

#include <algorithm>
#include <compare>
#include <span>
#include <string_view>

#include "support/text.h"

namespace bw {
namespace {

// A number, or some units of a text, so that comparing needn't go to the text itself.
struct SortKey {
    uint64_t head;
    uint32_t row;
};

constexpr size_t kHeadUnits = 3;
constexpr unsigned kUnitBits = 17;  // a rank, or 0 behind the text's end
constexpr size_t kDeepest = 1000;   // units; equal beginnings are seldom longer

uint64_t HeadOf(std::u16string_view text, size_t from) {
    uint64_t head = 0;
    for (size_t i = from; i < from + kHeadUnits; ++i)
        head = head << kUnitBits | (i < text.size() ? Utf8Rank(text[i]) + 1u : 0u);
    return head;
}

bool HasEnded(uint64_t head) {
    return (head & ((1u << kUnitBits) - 1)) == 0;
}

std::vector<SortKey> Unsorted(const GameList& games) {
    std::vector<SortKey> keys(games.size());
    for (uint32_t row = 0; row < keys.size(); ++row)
        keys[row].row = row;
    return keys;
}

template <typename Number>
std::vector<SortKey> ByNumber(const GameList& games, Number number) {
    std::vector<SortKey> keys = Unsorted(games);
    for (SortKey& key : keys)
        key.head = number(games[key.row].header);
    std::ranges::stable_sort(keys, {}, &SortKey::head);
    return keys;
}

using TextField = std::u16string GameEntry::*;

// Sorts keys whose texts are equal up to a place: by the next few units that differ, then each run
// of equal ones by those behind.
class TextSorter {
  public:
    TextSorter(const GameList& games, TextField field) : games_(games), field_(field) {}

    void Sort(std::span<SortKey> keys, size_t from) const {
        if (from >= kDeepest) {
            std::ranges::stable_sort(keys, [&](const SortKey& a, const SortKey& b) {
                return std::is_lt(CompareAsUtf8(TextOf(a), TextOf(b)));
            });
            return;
        }
        from = EndOfEqual(keys, from);
        for (SortKey& key : keys)
            key.head = HeadOf(TextOf(key), from);
        std::ranges::sort(keys, [](const SortKey& a, const SortKey& b) {
            return a.head != b.head ? a.head < b.head : a.row < b.row;
        });
        for (size_t begin = 0, end = 0; begin < keys.size(); begin = end) {
            while (end < keys.size() && keys[end].head == keys[begin].head)
                ++end;
            if (end - begin > 1 && !HasEnded(keys[begin].head)) {
                Sort(keys.subspan(begin, end - begin), from + kHeadUnits);
            }
        }
    }

  private:
    const std::u16string& TextOf(const SortKey& key) const { return games_[key.row].*field_; }

    size_t EndOfEqual(std::span<const SortKey> keys, size_t from) const {
        if (keys.empty()) return from;
        const std::u16string& first = TextOf(keys.front());
        size_t end = first.size();
        for (const SortKey& key : keys) {
            const std::u16string& text = TextOf(key);
            end = std::min(end, text.size());
            size_t equal = from;
            while (equal < end && first[equal] == text[equal])
                ++equal;
            end = equal;
        }
        return end;
    }

    const GameList& games_;
    TextField field_;
};

std::vector<SortKey> ByText(const GameList& games, TextField field) {
    std::vector<SortKey> keys = Unsorted(games);
    TextSorter(games, field).Sort(keys, 0);
    return keys;
}

std::optional<std::vector<SortKey>> SortedKeys(const GameList& games, ListColumn column) {
    switch (column) {
        case ListColumn::kName:
            return ByText(games, &GameEntry::name);
        case ListColumn::kPrg:
            return ByNumber(games, [](const InesHeader& header) { return header.PrgCount(); });
        case ListColumn::kChr:
            return ByNumber(games, [](const InesHeader& header) { return header.ChrCount(); });
        case ListColumn::kMapper:
            return ByNumber(games, [](const InesHeader& header) { return header.Mapper(); });
        case ListColumn::kMirroring:
            return ByNumber(games, [](const InesHeader& header) { return header.Vertical(); });
        case ListColumn::kBattery:
            return ByNumber(games, [](const InesHeader& header) { return header.Battery(); });
        case ListColumn::kTrainer:
            return ByNumber(games, [](const InesHeader& header) { return header.Trainer(); });
        case ListColumn::kCoolboy:  // users know it so
            return ByText(games, &GameEntry::remark);
        case ListColumn::kPath:
            return ByText(games, &GameEntry::path);
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<std::vector<uint32_t>> SortedRows(const GameList& games, ListColumn column,
                                                bool descending) {
    const std::optional<std::vector<SortKey>> keys = SortedKeys(games, column);
    if (!keys) return std::nullopt;
    std::vector<uint32_t> rows(keys->size());
    std::ranges::transform(*keys, rows.begin(), &SortKey::row);
    if (descending) std::ranges::reverse(rows);
    return rows;
}

}  // namespace bw
