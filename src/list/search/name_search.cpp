#include "list/search/name_search.h"

#include <algorithm>

namespace bw {
namespace {

constexpr size_t kProgressStep = 256;  // rows between two steps of the progress

bool TakesPart(const SearchRow& row, bool onlyChecked) {
    return row.checked || !onlyChecked;
}

}  // namespace

std::vector<SearchRow> SearchRows(const GameList& games) {
    std::vector<SearchRow> rows;
    rows.reserve(games.size());
    for (const GameEntry& entry : games)
        rows.push_back({entry.name, entry.checked});
    return rows;
}

std::optional<size_t> FindNext(std::span<const SearchRow> rows, const NamePattern& pattern,
                               size_t start, bool onlyChecked, const StopFlag& stop) {
    const auto hit = [&](const SearchRow& row) {
        return TakesPart(row, onlyChecked) && pattern.Matches(row.name, stop);
    };
    start = std::min(start, rows.size());
    const auto from = rows.begin() + static_cast<std::ptrdiff_t>(start);
    auto found = std::find_if(from, rows.end(), hit);
    if (found == rows.end()) {
        found = std::find_if(rows.begin(), from, hit);
        if (found == from) return std::nullopt;
    }
    return static_cast<size_t>(found - rows.begin());
}

HitCount CountHits(std::span<const SearchRow> rows, const NamePattern& pattern, size_t row,
                   bool onlyChecked, const StopFlag& stop) {
    HitCount count;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (!TakesPart(rows[i], onlyChecked) || !pattern.Matches(rows[i].name, stop)) continue;
        ++count.all;
        if (i <= row) ++count.upToRow;
    }
    return count;
}

std::vector<RowName> ReplaceAll(std::span<const SearchRow> rows, const NamePattern& pattern,
                                bool onlyChecked, const StopFlag& stop, SearchProgress& progress) {
    std::vector<RowName> names;
    for (size_t row = 0; row < rows.size(); ++row) {
        if (row % kProgressStep == 0) progress.Row(row, rows.size());
        if (!TakesPart(rows[row], onlyChecked)) continue;
        std::optional<std::u16string> name = pattern.Replaced(rows[row].name, stop);
        if (name && *name != rows[row].name) names.push_back({row, *std::move(name)});
    }
    return names;
}

}  // namespace bw
