#include "list/search/name_characters.h"

#include <algorithm>

namespace bw {
namespace {

constexpr bool kWhole = sizeof(wchar_t) > 2;  // holds every character
constexpr char32_t kFirstHalf = 0xD800;
constexpr size_t kHalves = 0x800;

bool IsHalf(char32_t point) {
    return point >= kFirstHalf && point < kFirstHalf + kHalves;
}

// Takes the first character off the text. A half without a partner is one of its own.
char32_t TakePoint(std::u16string_view& text) {
    const char32_t first = text.front();
    const bool pair = (first & 0xFC00) == 0xD800 && text.size() > 1 && (text[1] & 0xFC00) == 0xDC00;
    const char32_t point = pair ? 0x10000 + ((first & 0x3FF) << 10) + (text[1] & 0x3FFu) : first;
    text.remove_prefix(pair ? 2 : 1);
    return point;
}

bool NeedsStandin(char32_t point) {
    return !kWhole && (point >= 0x10000 || IsHalf(point));
}

void AppendPoint(char32_t point, std::u16string& text) {
    if (point < 0x10000) {
        text += static_cast<char16_t>(point);
    } else {
        text += static_cast<char16_t>(0xD7C0 + (point >> 10));
        text += static_cast<char16_t>(0xDC00 | (point & 0x3FF));
    }
}

}  // namespace

NameCharacters::NameCharacters(std::u16string_view pattern) {
    while (!pattern.empty()) {
        const char32_t point = TakePoint(pattern);
        if (NeedsStandin(point)) own_.push_back(point);
    }
    std::ranges::sort(own_);
    own_.erase(std::ranges::unique(own_).begin(), own_.end());
}

std::wstring NameCharacters::From(std::u16string_view text) {
    std::wstring result;
    result.reserve(text.size());
    while (!text.empty()) {
        const char32_t point = TakePoint(text);
        result += NeedsStandin(point) ? UnitOf(point) : static_cast<wchar_t>(point);
    }
    return result;
}

// The expression's own characters stand so far apart that those of a name find room between them.
wchar_t NameCharacters::UnitOf(char32_t point) {
    const auto known = std::ranges::find(standins_, point, &Standin::point);
    if (known != standins_.end()) return known->unit;
    const size_t step = std::max<size_t>(kHalves / (own_.size() + 1), 1);
    const auto at = std::ranges::lower_bound(own_, point);
    const auto before = static_cast<size_t>(at - own_.begin());
    size_t unit = before * step;  // that of the one before it
    if (at != own_.end() && *at == point) {
        unit += step;
    } else {
        unit += 1;
        const auto taken = [&](size_t wanted) {
            return std::ranges::any_of(standins_, [&](const Standin& other) {
                return static_cast<size_t>(other.unit) == kFirstHalf + wanted;
            });
        };
        while (unit + 1 < (before + 1) * step && taken(unit))
            ++unit;
    }
    const auto stand = static_cast<wchar_t>(kFirstHalf + std::min(unit, kHalves - 1));
    standins_.push_back({point, stand});
    return stand;
}

void NameCharacters::Append(wchar_t character, std::u16string& text) const {
    const auto unit = static_cast<char32_t>(character);
    if (kWhole || !IsHalf(unit)) return AppendPoint(unit, text);
    const auto standin = std::ranges::find(standins_, character, &Standin::unit);
    if (standin != standins_.end()) AppendPoint(standin->point, text);
}

}  // namespace bw
