#include "list/collection/tidy_name.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "list/collection/name_tags.h"
#include "support/text.h"

namespace bw {
namespace {

using View = std::u16string_view;

constexpr View kArticles[] = {u"the", u"a",   u"an",  u"le",   u"la",  u"les", u"l'",
                              u"der", u"die", u"das", u"el",   u"los", u"las", u"il",
                              u"lo",  u"gli", u"ein", u"eine", u"un",  u"une"};
constexpr View kBlanks = u" \t\u00A0\u3000";

bool IsDropped(TagKind kind, const TidyRules& rules) {
    switch (kind) {
        case TagKind::kRegion:
            return rules.dropRegion;
        case TagKind::kLanguage:
            return rules.dropLanguage;
        case TagKind::kRevision:
            return rules.dropRevision;
        case TagKind::kDump:
            return rules.dropDump;
        case TagKind::kOther:
            break;
    }
    return rules.dropOther;
}

bool IsBlank(char16_t unit) {
    return kBlanks.find(unit) != View::npos;
}

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

View Trimmed(View text) {
    const size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    const size_t last = text.find_last_not_of(kBlanks);
    return first == text.size() ? View() : text.substr(first, last + 1 - first);
}

// One blank for each run; the wide blank of Chinese and Japanese stays one where it stands alone.
std::u16string InOrder(View text) {
    std::u16string result;
    text = Trimmed(text);
    for (size_t i = 0; i < text.size(); ++i) {
        if (!IsBlank(text[i])) {
            result += text[i];
        } else if (!IsBlank(text[i + 1])) {  // the last one is no blank
            const bool alone = !IsBlank(text[i - 1]);
            result += text[i] == 0x3000 && alone ? text[i] : u' ';
        }
    }
    return result;
}

// Puts `text` behind what is there, parted by a blank where something has gone between them.
void Join(std::u16string& name, View text, bool gap) {
    if (gap) {
        while (!name.empty() && IsBlank(name.back()))
            name.pop_back();
        while (!text.empty() && IsBlank(text.front()))
            text.remove_prefix(1);
        const bool sign = !text.empty() && View(u",.:;!?").find(text.front()) != View::npos;
        if (!name.empty() && !text.empty() && !sign) name += u' ';
    }
    name += text;
}

// Digits that number a list of files, and what is behind them: "001. Game", "12) Game", "0012 -
// Game". Digits that may belong to the title ("1943 - The Battle", "2.5 D") are none.
struct Numbered {
    View digits;  // without zeros in front
    View title;
};
std::optional<Numbered> NumberInFront(View name) {
    constexpr size_t kMostDigits = 5;
    size_t end = 0;
    while (end < name.size() && IsDigit(name[end]))
        ++end;
    if (end == 0 || end > kMostDigits) return std::nullopt;
    const size_t sign = name.find_first_not_of(kBlanks, end);
    if (sign == View::npos) return std::nullopt;
    const bool zeros = name[0] == u'0';
    const bool parts = View(u".)]、．").find(name[sign]) != View::npos ||
                       (zeros && sign > end && name[sign] == u'-');
    const View title = Trimmed(name.substr(sign + 1));
    const bool decimal = sign + 1 < name.size() && IsDigit(name[sign + 1]);
    if (!parts || decimal || title.empty()) return std::nullopt;
    const size_t first = std::min(name.find_first_not_of(u'0'), end - 1);
    return Numbered{name.substr(first, end - first), title};
}

// "Game, The" and "Game, The - Subtitle", once.
std::optional<std::u16string> WithArticleInFront(View title) {
    for (size_t comma = title.find(u','); comma != View::npos;
         comma = title.find(u',', comma + 1)) {
        const size_t start = title.find_first_not_of(kBlanks, comma + 1);
        if (comma == 0 || start == View::npos) continue;
        const size_t end = std::min(title.find_first_of(u" ,:-", start), title.size());
        const View article = title.substr(start, end - start);
        if (std::ranges::find(kArticles, View(FoldCase(article))) == std::end(kArticles)) continue;
        const View rest = title.substr(end);
        const bool ends = rest.empty() || rest.starts_with(u" -") || rest.starts_with(u" :") ||
                          rest.starts_with(u':');
        if (!ends) continue;
        std::u16string moved(article);
        if (!article.ends_with(u'\'')) moved += u' ';
        return moved.append(title.substr(0, comma)).append(rest);
    }
    return std::nullopt;
}

std::u16string TidyTitle(View title, const TidyRules& rules) {
    std::u16string front;
    if (rules.blanks) {
        if (const std::optional<Numbered> numbered = NumberInFront(title)) {
            front = std::u16string(numbered->digits) + u". ";
            title = numbered->title;
        }
    }
    std::u16string tidy(title);
    if (rules.articles) {
        while (std::optional<std::u16string> moved = WithArticleInFront(tidy))
            tidy = *std::move(moved);
    }
    return front + tidy;
}

std::u16string TidyOnce(std::u16string name, const TidyRules& rules) {
    if (rules.underscores) std::ranges::replace(name, u'_', u' ');
    std::u16string front;  // up to the first tag that stays
    std::u16string rest;
    bool tagStays = false;
    bool gap = false;  // a tag has gone here
    bool gapBeforeRest = false;
    NamePieces pieces(name);
    while (const std::optional<NamePiece> piece = pieces.Next()) {
        if (piece->isTag && IsDropped(ReadTag(piece->text).kind, rules)) {
            gap = true;
            continue;
        }
        if (piece->isTag && !tagStays) {
            tagStays = true;
            gapBeforeRest = std::exchange(gap, false);
        }
        Join(tagStays ? rest : front, piece->text, gap);
        gap = false;
    }
    const View title = Trimmed(front);
    const size_t start = title.empty() ? 0 : static_cast<size_t>(title.data() - front.data());
    std::u16string tidy = front.substr(0, start) + TidyTitle(title, rules);
    tidy += View(front).substr(start + title.size());
    Join(tidy, rest, gapBeforeRest);
    if (gap) tidy = tidy.substr(0, tidy.find_last_not_of(kBlanks) + 1);
    if (rules.blanks) tidy = InOrder(tidy);
    if (!Trimmed(tidy).empty()) return tidy;
    tidy = rules.blanks ? InOrder(name) : name;  // a name of nothing but tags
    return Trimmed(tidy).empty() ? std::u16string() : tidy;
}

// What ends no name that was cut behind it.
bool IsEndSign(char16_t unit) {
    return View(u" ,-:&").find(unit) != View::npos;
}

// Never between the halves of a pair.
View Cut(View text, size_t length) {
    const auto half = [&](size_t at, unsigned kind) { return (text[at] & 0xFC00u) == kind; };
    const bool pairAtEnd =
        length > 0 && length < text.size() && half(length - 1, 0xD800) && half(length, 0xDC00);
    return text.substr(0, length - (pairAtEnd ? 1 : 0));
}

}  // namespace

std::u16string TidyName(View name, const TidyRules& rules) {
    // What goes may lay open something else that goes.
    constexpr int kMostRounds = 8;
    std::u16string tidy(name);
    for (int round = 0; round < kMostRounds; ++round) {
        std::u16string next = TidyOnce(tidy, rules);
        if (next.empty() || next == tidy) break;
        tidy = std::move(next);
    }
    return tidy;
}

std::u16string ShortenByWords(View name, size_t room) {
    if (name.size() <= room) return std::u16string(name);
    size_t kept = 0;  // whole words up to here
    for (size_t start = 0; start < name.size();) {
        start = std::min(name.find_first_not_of(u' ', start), name.size());
        const size_t end = std::min(name.find(u' ', start), name.size());
        size_t last = end;  // of the word without the signs behind it
        while (last > start && IsEndSign(name[last - 1]))
            --last;
        if (last > room) {
            if (last - start > room) kept = room;  // a word that has no room alone
            break;
        }
        kept = std::min(end, room);
        start = end;
    }
    View shorter = Cut(name, kept);
    while (!shorter.empty() && IsEndSign(shorter.back()))
        shorter.remove_suffix(1);
    if (shorter.empty()) shorter = Cut(name, std::max<size_t>(room, 1));
    if (shorter.empty()) shorter = name.substr(0, 2);  // a pair
    return std::u16string(shorter);
}

}  // namespace bw
