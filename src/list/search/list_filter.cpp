#include "list/search/list_filter.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "list/collection/same_games.h"
#include "rom/board_tables.h"
#include "support/text.h"

namespace bw {
namespace {

using View = std::u16string_view;
// Whether a row is left.
using Condition = std::function<bool(uint32_t row)>;

// Whether `text` holds `folded`, whose letters are folded.
bool Holds(View text, View folded) {
    return std::search(text.begin(), text.end(), folded.begin(), folded.end(),
                       [](char16_t unit, char16_t wanted) { return FoldCase(unit) == wanted; }) !=
           text.end();
}

Condition WithText(const GameList& games, View text) {
    return [&games, folded = FoldCase(text)](uint32_t row) {
        const GameEntry& entry = games[row];
        return Holds(entry.name, folded) || Holds(entry.remark, folded) ||
               Holds(entry.path, folded);
    };
}

std::optional<uint64_t> Number(View digits) {
    constexpr size_t kMostDigits = 12;
    if (digits.empty() || digits.size() > kMostDigits) return std::nullopt;
    uint64_t number = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9') return std::nullopt;
        number = number * 10 + static_cast<uint64_t>(digit - u'0');
    }
    return number;
}

// Bytes of the game's data; 0 where nothing is known of it.
uint64_t DataSize(const GameEntry& entry) {
    if (!entry.HasValidHeader()) {
        return entry.size - std::min<uint64_t>(entry.size, kInesHeaderSize);
    }
    return uint64_t{entry.header.PrgCount()} * kPrgUnit +
           uint64_t{entry.header.ChrCount()} * kChrUnit;
}

bool TakePrefix(View& text, View prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

// ">=256k"
std::optional<Condition> OfSize(const GameList& games, View value) {
    const bool less = TakePrefix(value, u"<");
    const bool more = !less && TakePrefix(value, u">");
    const bool equal = TakePrefix(value, u"=") || (!less && !more);
    if (value.ends_with(u'b')) value.remove_suffix(1);
    uint64_t unit = 1;
    if (value.ends_with(u'k') || value.ends_with(u'm')) {
        unit = value.back() == u'k' ? 1u << 10 : 1u << 20;
        value.remove_suffix(1);
    }
    const std::optional<uint64_t> number = Number(value);
    if (!number) return std::nullopt;
    return [=, &games, limit = *number * unit](uint32_t row) {
        const uint64_t size = DataSize(games[row]);
        return size != 0 &&
               ((less && size < limit) || (more && size > limit) || (equal && size == limit));
    };
}

std::optional<Condition> OfBoard(const GameList& games, View value) {
    if (value == u"coolgirl") return [&](uint32_t row) { return games[row].coolgirlSupported; };
    if (value != u"coolboy" && value != u"mindkids") return std::nullopt;
    return [&](uint32_t row) { return games[row].coolboySupported; };
}

std::optional<Condition> OfMapper(const GameList& games, View value) {
    const std::optional<uint64_t> mapper = Number(value);
    if (!mapper) return std::nullopt;
    return [&games, mapper](uint32_t row) {
        return games[row].HasValidHeader() && games[row].header.Mapper() == *mapper;
    };
}

// "yes", "no", or nothing, which is yes.
std::optional<bool> YesOrNo(View value) {
    if (value.empty() || value == u"yes") return true;
    return value == u"no" ? std::optional(false) : std::nullopt;
}

template <typename Flag>
std::optional<Condition> WithFlag(View value, Flag flag) {
    const std::optional<bool> wanted = YesOrNo(value);
    if (!wanted) return std::nullopt;
    return [flag, wanted](uint32_t row) { return flag(row) == *wanted; };
}

std::optional<Condition> OfGroups(const GameList& games, View value) {
    const bool dataAlone = value == u"data";
    if (!dataAlone && !YesOrNo(value)) return std::nullopt;
    std::vector<bool> grouped(games.size());
    for (const std::vector<uint32_t>& group : dataAlone ? SameData(games) : SameGames(games)) {
        for (const uint32_t row : group)
            grouped[row] = true;
    }
    const bool wanted = value != u"no";
    return [grouped = std::move(grouped), wanted](uint32_t row) { return grouped[row] == wanted; };
}

// What a word without blanks asks for; nothing if it is none of those that ask.
std::optional<Condition> OfWord(const GameList& games, View word) {
    const std::u16string folded = FoldCase(word);
    const size_t colon = folded.find(u':');
    if (colon == folded.npos) return std::nullopt;
    const View key = View(folded).substr(0, colon);
    const View value = View(folded).substr(colon + 1);
    if (key == u"board") return OfBoard(games, value);
    if (key == u"mapper") return OfMapper(games, value);
    if (key == u"size") return OfSize(games, value);
    if (key == u"same") return OfGroups(games, value);
    if (key == u"battery") {
        return WithFlag(value, [&](uint32_t row) {
            return games[row].HasValidHeader() && games[row].header.Battery();
        });
    }
    if (key == u"damaged") {
        return WithFlag(value, [&](uint32_t row) { return games[row].IsDamaged(); });
    }
    if (key == u"missing") return WithFlag(value, [&](uint32_t row) { return games[row].missing; });
    if (key == u"checked") return WithFlag(value, [&](uint32_t row) { return games[row].checked; });
    return std::nullopt;
}

View WithoutBlanks(View text, bool front, bool back) {
    while (front && text.starts_with(u' '))
        text.remove_prefix(1);
    while (back && text.ends_with(u' '))
        text.remove_suffix(1);
    return text;
}

// The words that ask, and the texts before, between and behind them.
std::vector<Condition> Conditions(const GameList& games, View text) {
    std::vector<Condition> conditions;
    std::vector<View> texts;
    size_t textStart = 0;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find(u' ', at), text.size());
        if (std::optional<Condition> asked = OfWord(games, text.substr(at, end - at))) {
            texts.push_back(
                WithoutBlanks(text.substr(textStart, at - textStart), textStart > 0, true));
            conditions.push_back(*std::move(asked));
            textStart = end;
        }
        at = std::min(end + 1, text.size());
    }
    texts.push_back(WithoutBlanks(text.substr(textStart), textStart > 0, false));
    for (const View part : texts) {
        if (!part.empty()) conditions.push_back(WithText(games, part));
    }
    return conditions;
}

}  // namespace

std::vector<uint32_t> FilteredRows(const GameList& games, View text) {
    const std::vector<Condition> conditions = Conditions(games, text);
    std::vector<uint32_t> rows;
    for (uint32_t row = 0; row < games.size(); ++row) {
        if (std::ranges::all_of(conditions, [row](const Condition& is) { return is(row); })) {
            rows.push_back(row);
        }
    }
    return rows;
}

}  // namespace bw
