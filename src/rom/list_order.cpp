#include "rom/list_order.h"

#include <algorithm>
#include <string_view>

#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kHeadUnits = 4;

// The whole key of a number; the first units of a text, so that most comparisons needn't go to the
// text itself.
struct SortKey {
    uint64_t head;
    uint32_t row;
};

uint64_t HeadOf(std::u16string_view text) {
    uint64_t head = 0;
    for (size_t i = 0; i < kHeadUnits; ++i) {
        head = head << 16 | (i < text.size() ? Utf8Rank(text[i]) : 0u);
    }
    return head;
}

template <typename Head>
std::vector<SortKey> Keys(const GameList& games, Head head) {
    std::vector<SortKey> keys;
    keys.reserve(games.size());
    for (const GameEntry& entry : games) {
        keys.push_back({head(entry), static_cast<uint32_t>(keys.size())});
    }
    return keys;
}

template <typename Number>
std::vector<SortKey> ByNumber(const GameList& games, Number number) {
    std::vector<SortKey> keys =
        Keys(games, [&](const GameEntry& entry) { return uint64_t{number(entry.header)}; });
    std::ranges::stable_sort(keys, {}, &SortKey::head);
    return keys;
}

std::vector<SortKey> ByText(const GameList& games, std::u16string GameEntry::*text) {
    std::vector<SortKey> keys =
        Keys(games, [&](const GameEntry& entry) { return HeadOf(entry.*text); });
    std::ranges::stable_sort(keys, [&](const SortKey& a, const SortKey& b) {
        if (a.head != b.head) return a.head < b.head;
        return CompareAsUtf8(games[a.row].*text, games[b.row].*text) < 0;
    });
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
