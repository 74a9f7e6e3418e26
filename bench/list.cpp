// The commands of a full list, 20,000 rows, against bare loops over the same data: for a sort
// the bare one of full_list.h, for checks and searches one plain loop (searches without regard to
// letter case only in ASCII). Ours records each sort, so that it can be undone.
#include <algorithm>
#include <cstdlib>
#include <span>
#include <string>

#include "full_list.h"
#include "list/list_editor.h"
#include "list/remembered_list.h"
#include "list/search/list_filter.h"
#include "measure.h"
#include "support/text.h"

namespace {

using bw::GameEntry;
using bw::GameList;

constexpr int kRounds = 31;

std::string Number(size_t value) {
    return std::to_string(value);
}

// Each round sorts the same list by the column for the first time.
void Sort(const GameList& games, const bench::SortColumn& by) {
    GameList plain;
    std::optional<bw::ListEditor> list;
    const auto prepare = [&] {
        plain = games;
        list.emplace();
        list->Restore(games);
    };
    bench::Report(std::string("sort by ") + by.name,
                  bench::InTurn(
                      kRounds, [&] { list->Sort(by.column); },
                      [&] { bench::BareSort(plain, by.column); }, prepare));
    const auto same = [](const GameEntry& a, const GameEntry& b) { return a.path == b.path; };
    prepare();
    list->Sort(by.column);
    bench::BareSort(plain, by.column);
    if (!std::ranges::equal(list->Games(), plain, same)) std::abort();
}

template <typename Ours, typename Bare>
void Compare(std::string_view what, const Ours& ours, const Bare& bare) {
    if (ours() != bare()) std::abort();
    // Kept, so that the compiler can't leave out a search without effect.
    volatile size_t found = 0;
    const auto keep = [&](const auto& work) {
        return [&] { found = static_cast<size_t>(work()); };
    };
    bench::Report(what, bench::InTurn(kRounds, keep(ours), keep(bare), [] {}));
}

char16_t AsciiFold(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

bool BareHolds(std::u16string_view text, std::u16string_view part) {
    for (size_t at = 0; at + part.size() <= text.size(); ++at) {
        size_t i = 0;
        while (i < part.size() && AsciiFold(text[at + i]) == part[i])
            ++i;
        if (i == part.size()) return true;
    }
    return false;
}

size_t BareRowsWith(const GameList& games, std::u16string_view part) {
    return static_cast<size_t>(std::ranges::count_if(games, [&](const GameEntry& entry) {
        return BareHolds(entry.name, part) || BareHolds(entry.remark, part) ||
               BareHolds(entry.path, part);
    }));
}

size_t BarePrefix(const GameList& games, std::u16string_view prefix) {
    for (size_t row = 0; row < games.size(); ++row) {
        if (BareHolds(std::u16string_view(games[row].name).substr(0, prefix.size()), prefix)) {
            return row;
        }
    }
    return games.size();
}

void ChecksAndSearches(const GameList& games) {
    auto told = bw::ListChange::kNothing;
    bw::ListEditor list([&](const bw::ListResult& result) { told = result.change; });
    list.Restore(games);
    GameList plain = games;
    Compare(
        "invert the checks of all rows",
        [&] {
            list.SelectInverse();
            return told;
        },
        [&] {
            for (GameEntry& entry : plain)
                entry.checked = !entry.checked;
            return bw::ListChange::kChecks;
        });
    Compare(
        "rows that hold a text (no hit)",
        [&] { return bw::FilteredRows(list.Games(), u"COLLECTOR").size(); },
        [&] { return BareRowsWith(plain, u"collector"); });
    Compare(
        "rows that hold a text (a fifth of them)",
        [&] { return bw::FilteredRows(list.Games(), u"Game of").size(); },
        [&] { return BareRowsWith(plain, u"game of"); });
    Compare(
        "typed prefix (no hit)",
        [&] { return list.FindPrefix(u"game of the years", 0).value_or(plain.size()); },
        [&] { return BarePrefix(plain, u"game of the years"); });
}

// A settings value with a million entries, of which the first 20,000 come in, against a look at
// each of its bytes.
void MillionEntries() {
    std::string text = "[history]\r\ncount=1000000\r\n";
    for (size_t i = 0; i < 1'000'000; ++i) {
        std::string number = Number(i);
        number.insert(0, 5 - std::min<size_t>(number.size(), 5), '0');
        text.append(number).append("_check=1\r\n").append(number).append("_name=Game of the year");
        text.append("\r\n").append(number).append("_path=/none/Game.nes\r\n");
        text.append(number).append("_remark=\r\n");
    }
    const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    const bench::Pair times = bench::InTurn(
        3,
        [&] {
            if (bw::LoadRememberedList({bytes, text.size()}, "/none").games.size() !=
                bw::kListLimit) {
                std::abort();
            }
        },
        [&] {
            if (std::ranges::count(text, '\n') != 4'000'002) std::abort();
        },
        [] {});
    bench::Report("remembered list with a million entries, " + Number(text.size() >> 20) + " MB",
                  times);
}

}  // namespace

int main() {
    const GameList games = bench::FullList();
    for (const bench::SortColumn& by : bench::kSortColumns)
        Sort(games, by);
    ChecksAndSearches(games);
    MillionEntries();
    return 0;
}
