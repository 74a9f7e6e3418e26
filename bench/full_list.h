// A list as full as it can be, and bare sorts of it: std::stable_sort of plain keys, then moving
// the entries accordingly.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "list/list_columns.h"
#include "support/text.h"

namespace bench {

struct SortColumn {
    const char* name;
    bw::ListColumn column;
};
// What a click on a column sorts by. The column of the one board sorts by the remark.
inline constexpr SortColumn kSortColumns[] = {
    {"name", bw::ListColumn::kName},
    {"PRG", bw::ListColumn::kPrg},
    {"CHR", bw::ListColumn::kChr},
    {"mapper", bw::ListColumn::kMapper},
    {"mirroring", bw::ListColumn::kMirroring},
    {"battery", bw::ListColumn::kBattery},
    {"trainer", bw::ListColumn::kTrainer},
    {"remark", bw::ListColumn::kCoolboy},
    {"path", bw::ListColumn::kPath},
};

inline bw::GameList FullList() {
    static constexpr std::u16string_view kBeginnings[] = {
        u"Super ", u"Game of the year ", u"超级游戏 ", u"The legend of ", u"Étoile "};
    std::mt19937 random(20);
    bw::GameList games(bw::kListLimit);
    for (size_t i = 0; i < games.size(); ++i) {
        bw::GameEntry& entry = games[i];
        entry.name = kBeginnings[random() % std::size(kBeginnings)];
        entry.name += bw::ToWide(std::to_string(random() % games.size()));
        entry.path = u"/home/user/roms/Collection " + bw::ToWide(std::to_string(i / 500)) + u"/" +
                     entry.name + u".nes";
        if (i % 4 == 0) entry.remark = bw::ToWide("remark " + std::to_string(random() % 100));
        for (size_t byte = 4; byte < 8; ++byte)
            entry.header.bytes[byte] = static_cast<uint8_t>(random() % 64);
    }
    return games;
}

template <typename Key, typename KeyOf>
void BareSort(bw::GameList& games, const KeyOf& keyOf) {
    std::vector<std::pair<Key, size_t>> keys;
    keys.reserve(games.size());
    for (size_t i = 0; i < games.size(); ++i)
        keys.emplace_back(keyOf(games[i]), i);
    std::stable_sort(keys.begin(), keys.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    bw::GameList sorted;
    sorted.reserve(games.size());
    for (const auto& [key, row] : keys)
        sorted.push_back(std::move(games[row]));
    games = std::move(sorted);
}

inline void BareSort(bw::GameList& games, bw::ListColumn column) {
    using View = std::u16string_view;
    using Entry = bw::GameEntry;
    using enum bw::ListColumn;
    const auto number = [&](auto value) {
        BareSort<uint32_t>(games, [=](const Entry& entry) { return (entry.header.*value)(); });
    };
    const auto text = [&](std::u16string Entry::*field) {
        BareSort<View>(games, [=](const Entry& entry) { return View(entry.*field); });
    };
    switch (column) {
        case kName:
            return text(&Entry::name);
        case kPrg:
            return number(&bw::InesHeader::PrgCount);
        case kChr:
            return number(&bw::InesHeader::ChrCount);
        case kMapper:
            return number(&bw::InesHeader::Mapper);
        case kMirroring:
            return number(&bw::InesHeader::Vertical);
        case kBattery:
            return number(&bw::InesHeader::Battery);
        case kTrainer:
            return number(&bw::InesHeader::Trainer);
        case kCoolboy:
            return text(&Entry::remark);
        case kPath:
            return text(&Entry::path);
        default:
            std::abort();
    }
}

}  // namespace bench
