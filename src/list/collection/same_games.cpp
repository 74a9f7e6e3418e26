#include "list/collection/same_games.h"

#include <algorithm>
#include <array>
#include <bit>
#include <compare>
#include <functional>
#include <iterator>
#include <numeric>
#include <string_view>
#include <utility>

#include "list/collection/name_tags.h"
#include "support/text.h"

namespace bw {
namespace {

using View = std::u16string_view;

// The last component of a path of any platform, without its extension.
View FileTitle(const GameEntry& entry) {
    View name = entry.path.empty() ? View(entry.name) : View(entry.path);
    size_t start = name.size();
    while (start > 0 && name[start - 1] != u'/' && name[start - 1] != u'\\')
        --start;
    name.remove_prefix(start);
    return entry.path.empty() ? name : name.substr(0, name.rfind(u'.'));
}

// Rows that belong together, however many ways lead from one to another.
class Unions {
  public:
    explicit Unions(size_t count) : parents_(count) {
        std::iota(parents_.begin(), parents_.end(), 0u);
    }

    uint32_t Root(uint32_t row) {
        while (parents_[row] != row)
            row = parents_[row] = parents_[parents_[row]];
        return row;
    }
    // The lower row becomes the root.
    void Join(uint32_t a, uint32_t b) {
        a = Root(a);
        b = Root(b);
        parents_[std::max(a, b)] = std::min(a, b);
    }

    RowGroups Groups() {
        std::vector<uint32_t> sizes(parents_.size());
        for (uint32_t row = 0; row < parents_.size(); ++row)
            ++sizes[Root(row)];
        RowGroups groups;
        std::vector<size_t> groupOf(parents_.size());
        for (uint32_t row = 0; row < parents_.size(); ++row) {
            const uint32_t root = Root(row);
            if (sizes[root] < 2) continue;
            if (root == row) {
                groupOf[row] = groups.size();
                groups.emplace_back().reserve(sizes[root]);
            }
            groups[groupOf[root]].push_back(row);
        }
        return groups;
    }

  private:
    std::vector<uint32_t> parents_;
};

// Sorted rather than hashed: a full list comes by with every letter typed into the filter.
void JoinData(const GameList& games, Unions& unions) {
    constexpr uint32_t kUnknown = 0;  // the sizes of games whose files are gone
    struct Data {
        uint64_t sums;
        uint32_t sizes;
        uint32_t row;
        auto operator<=>(const Data&) const = default;
    };
    std::vector<Data> all;
    all.reserve(games.size());
    for (uint32_t row = 0; row < games.size(); ++row) {
        const GameEntry& entry = games[row];
        if (!entry.crcs) continue;
        const uint32_t sizes = entry.header.PrgLow() << 8 | entry.header.ChrLow();
        all.push_back({uint64_t{entry.crcs->prg} << 32 | entry.crcs->chr,
                       entry.HasValidHeader() ? sizes : kUnknown, row});
    }
    std::ranges::sort(all);
    for (size_t i = 1; i < all.size(); ++i) {
        const bool fits = all[i].sizes == all[i - 1].sizes || all[i - 1].sizes == kUnknown;
        if (fits && all[i].sums == all[i - 1].sums) unions.Join(all[i].row, all[i - 1].row);
    }
}

bool IsLetter(char16_t unit) {
    if (unit < 0x80) {
        return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') || unit == u'+';
    }
    const bool sign = unit < 0xC0 || unit == 0xD7 || unit == 0xF7 ||
                      (unit >= 0x2000 && unit < 0x2070) ||
                      (unit >= 0x3000 && unit < 0x3040 && unit != 0x3005) ||  // 3005 repeats one
                      (unit >= 0xFF00 && unit < 0xFF10) || (unit >= 0xFF1A && unit < 0xFF21) ||
                      (unit >= 0xFF3B && unit < 0xFF41) || (unit >= 0xFF5B && unit < 0xFF66);
    return !sign;
}

// Where the title begins behind the number of a list: "001. Game".
size_t EndOfNumber(View name) {
    const size_t digits = std::min(name.find_first_not_of(u"0123456789"), name.size());
    const bool parts = digits > 0 && digits < name.size() &&
                       (name[digits] == u'.' || name[digits] == u')') &&
                       name.find_first_of(u"0123456789", digits) != digits + 1;
    return parts ? digits + 1 : 0;
}

// Writes the letters of titles behind each other; "the" counts as little as signs do.
class TitleKeys {
  public:
    explicit TitleKeys(size_t count) {
        constexpr size_t kUsual = 32;  // letters of a title
        letters_.reserve(count * kUsual);
        spans_.reserve(count);
    }

    void Add(View name) {
        const size_t start = letters_.size();
        const View title = name.substr(EndOfNumber(name));
        NamePieces pieces(title);
        while (const std::optional<NamePiece> piece = pieces.Next()) {
            if (!piece->isTag) AddWords(piece->text);
        }
        if (letters_.size() == start) letters_ += FoldCase(name);  // signs or tags alone
        spans_.emplace_back(start, letters_.size() - start);
    }
    View Key(size_t row) const {
        return View(letters_).substr(spans_[row].first, spans_[row].second);
    }

  private:
    void AddWords(View text) {
        size_t word = letters_.size();
        for (size_t i = 0; i <= text.size(); ++i) {
            const char16_t unit = i < text.size() ? FoldCase(text[i]) : u' ';
            if (IsLetter(unit)) {
                letters_ += unit;
            } else if (unit != u'\'') {
                if (View(letters_).substr(word) == u"the") letters_.resize(word);
                word = letters_.size();
            }
        }
    }

    std::u16string letters_;
    std::vector<std::pair<size_t, size_t>> spans_;
};

void JoinTitles(const GameList& games, Unions& unions) {
    TitleKeys keys(games.size());
    for (const GameEntry& entry : games)
        keys.Add(FileTitle(entry));
    // A table of the first rows of each title, twice as large as need be, in which the next free
    // place serves for one that is taken: a third of the time of a map.
    constexpr uint32_t kFree = ~0u;
    std::vector<uint32_t> firsts(std::bit_ceil(2 * games.size() + 1), kFree);
    for (uint32_t row = 0; row < games.size(); ++row) {
        const View key = keys.Key(row);
        if (key.empty()) continue;
        size_t place = std::hash<View>()(key) & (firsts.size() - 1);
        while (firsts[place] != kFree && keys.Key(firsts[place]) != key)
            place = (place + 1) & (firsts.size() - 1);
        if (firsts[place] == kFree) firsts[place] = row;
        unions.Join(firsts[place], row);
    }
}

// What a version is judged by; the lower, the better.
struct Merits {
    uint32_t row;
    bool missing;
    std::array<int, 4> byRule{};  // of BestRule
};

std::string Canonical(View region) {
    const std::vector<std::string> known = RegionsOf(region);
    return known.empty() ? ToUtf8(FoldCase(region)) : known.front();
}

Merits MeritsOf(const GameList& games, uint32_t row, const std::vector<std::string>& regions) {
    Merits merits{row, games[row].missing};
    int region = static_cast<int>(regions.size());
    int revision = 0;
    int marks = 0;
    for (const NameTag& tag : SplitTags(FileTitle(games[row])).tags) {
        if (tag.kind == TagKind::kRevision) revision += RevisionOf(tag);
        if (tag.kind == TagKind::kDump && tag.text != u"!") ++marks;
        std::vector<std::string> named = RegionsOf(tag.text);
        if (tag.kind != TagKind::kRegion) named = {ToUtf8(FoldCase(tag.text))};
        for (const std::string& name : named) {
            const auto found = std::ranges::find(regions, name);
            region = std::min(region, static_cast<int>(found - regions.begin()));
        }
    }
    merits.byRule[static_cast<size_t>(BestRule::kRegion)] = region;
    merits.byRule[static_cast<size_t>(BestRule::kRevision)] = -revision;
    merits.byRule[static_cast<size_t>(BestRule::kDump)] = marks;
    merits.byRule[static_cast<size_t>(BestRule::kFirst)] = static_cast<int>(row);
    return merits;
}

}  // namespace

RowGroups SameData(const GameList& games) {
    Unions unions(games.size());
    JoinData(games, unions);
    return unions.Groups();
}

RowGroups SameGames(const GameList& games) {
    Unions unions(games.size());
    JoinData(games, unions);
    JoinTitles(games, unions);
    return unions.Groups();
}

uint32_t BestOf(const GameList& games, std::span<const uint32_t> group, const BestRules& rules) {
    std::vector<std::string> regions;
    for (const std::u16string& region : rules.regions)
        regions.push_back(Canonical(region));
    std::vector<Merits> versions;
    for (const uint32_t row : group)
        versions.push_back(MeritsOf(games, row, regions));
    const auto better = [&](const Merits& a, const Merits& b) {
        if (a.missing != b.missing) return b.missing;
        for (const BestRule rule : rules.order) {
            const auto index = static_cast<size_t>(rule);
            if (a.byRule[index] != b.byRule[index]) return a.byRule[index] < b.byRule[index];
        }
        return a.row < b.row;
    };
    return std::ranges::min_element(versions, better)->row;
}

std::vector<uint32_t> Surplus(const GameList& games, const RowGroups& groups,
                              const BestRules& rules) {
    std::vector<uint32_t> surplus;
    for (const std::vector<uint32_t>& group : groups) {
        const uint32_t best = BestOf(games, group, rules);
        std::ranges::remove_copy(group, std::back_inserter(surplus), best);
    }
    std::ranges::sort(surplus);
    return surplus;
}

}  // namespace bw
