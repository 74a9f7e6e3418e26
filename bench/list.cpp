// The commands of a full list, 20,000 rows, against bare loops over the same data: for a sort
// std::stable_sort of plain keys and moving the entries accordingly, for checks and searches one
// plain loop (searches without regard to letter case only in ASCII). Ours records each sort, so
// that it can be undone.
#include <algorithm>
#include <cstdlib>
#include <random>
#include <span>
#include <string>
#include <utility>

#include "measure.h"
#include "rom/list_editor.h"
#include "rom/list_history.h"
#include "support/text.h"

namespace {

using bw::GameEntry;
using bw::GameList;
using bw::ListColumn;

constexpr int kRounds = 31;

std::string Number(size_t value) {
    return std::to_string(value);
}

GameList FullList() {
    static constexpr std::u16string_view kBeginnings[] = {
        u"Super ", u"Game of the year ", u"超级游戏 ", u"The legend of ", u"Étoile "};
    std::mt19937 random(20);
    GameList games(bw::kListLimit);
    for (size_t i = 0; i < games.size(); ++i) {
        GameEntry& entry = games[i];
        entry.name = kBeginnings[random() % std::size(kBeginnings)];
        entry.name += bw::ToWide(Number(random() % games.size()));
        entry.path = u"/home/user/roms/Collection " + bw::ToWide(Number(i / 500)) + u"/" +
                     entry.name + u".nes";
        if (i % 4 == 0) entry.remark = bw::ToWide("remark " + Number(random() % 100));
        for (size_t byte = 4; byte < 8; ++byte)
            entry.header.bytes[byte] = static_cast<uint8_t>(random() % 64);
    }
    return games;
}

template <typename Key, typename KeyOf>
void BareSort(GameList& games, const KeyOf& keyOf) {
    std::vector<std::pair<Key, size_t>> keys;
    keys.reserve(games.size());
    for (size_t i = 0; i < games.size(); ++i)
        keys.emplace_back(keyOf(games[i]), i);
    std::stable_sort(keys.begin(), keys.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    GameList sorted;
    sorted.reserve(games.size());
    for (const auto& [key, row] : keys)
        sorted.push_back(std::move(games[row]));
    games = std::move(sorted);
}

// Each round sorts the same list by the column for the first time.
template <typename Key, typename KeyOf>
void Sort(std::string_view what, const GameList& games, ListColumn column, const KeyOf& keyOf) {
    GameList plain;
    std::optional<bw::ListEditor> list;
    const auto prepare = [&] {
        plain = games;
        list.emplace();
        list->Restore(games);
    };
    bench::Report(what, bench::InTurn(
                            kRounds, [&] { list->Sort(column); },
                            [&] { BareSort<Key>(plain, keyOf); }, prepare));
    const auto same = [](const GameEntry& a, const GameEntry& b) { return a.path == b.path; };
    prepare();
    list->Sort(column);
    BareSort<Key>(plain, keyOf);
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

void Sorts(const GameList& games) {
    using View = std::u16string_view;
    const auto text = [](std::u16string GameEntry::*field) {
        return [field](const GameEntry& entry) { return View(entry.*field); };
    };
    const auto number = [](auto value) {
        return [value](const GameEntry& entry) { return uint32_t{(entry.header.*value)()}; };
    };
    using bw::InesHeader;
    Sort<View>("sort by name", games, ListColumn::kName, text(&GameEntry::name));
    Sort<uint32_t>("sort by PRG", games, ListColumn::kPrg, number(&InesHeader::PrgCount));
    Sort<uint32_t>("sort by CHR", games, ListColumn::kChr, number(&InesHeader::ChrCount));
    Sort<uint32_t>("sort by mapper", games, ListColumn::kMapper, number(&InesHeader::Mapper));
    Sort<uint32_t>("sort by mirroring", games, ListColumn::kMirroring,
                   number(&InesHeader::Vertical));
    Sort<uint32_t>("sort by battery", games, ListColumn::kBattery, number(&InesHeader::Battery));
    Sort<uint32_t>("sort by trainer", games, ListColumn::kTrainer, number(&InesHeader::Trainer));
    Sort<View>("sort by remark", games, ListColumn::kCoolboy, text(&GameEntry::remark));
    Sort<View>("sort by path", games, ListColumn::kPath, text(&GameEntry::path));
}

void ChecksAndSearches(const GameList& games) {
    bw::ListEditor list;
    list.Restore(games);
    GameList plain = games;
    Compare(
        "invert the checks of all rows", [&] { return list.SelectInverse().change; },
        [&] {
            for (GameEntry& entry : plain)
                entry.checked = !entry.checked;
            return bw::ListChange::kChecks;
        });
    Compare(
        "rows that hold a text (no hit)", [&] { return list.RowsWith(u"COLLECTOR").size(); },
        [&] { return BareRowsWith(plain, u"collector"); });
    Compare(
        "rows that hold a text (a fifth of them)", [&] { return list.RowsWith(u"Game of").size(); },
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
            if (bw::LoadListHistory({bytes, text.size()}, "/none").games.size() != bw::kListLimit) {
                std::abort();
            }
        },
        [&] {
            if (std::ranges::count(text, '\n') != 4'000'002) std::abort();
        },
        [] {});
    bench::Report("list history with a million entries, " + Number(text.size() >> 20) + " MB",
                  times);
}

}  // namespace

int main() {
    const GameList games = FullList();
    Sorts(games);
    ChecksAndSearches(games);
    MillionEntries();
    return 0;
}
