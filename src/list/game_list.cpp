#include "list/game_list.h"

#include <algorithm>

#include "support/text.h"

namespace bw {
namespace {

std::u16string Decimal(size_t value, size_t digits = 1) {
    std::u16string text = ToWide(std::to_string(value));
    if (text.size() < digits) text.insert(0, digits - text.size(), u'0');
    return text;
}

}  // namespace

size_t CountChecked(const GameList& list) {
    return static_cast<size_t>(
        std::ranges::count_if(list, [](const GameEntry& entry) { return entry.checked; }));
}

std::vector<uint32_t> Ordinals(const GameList& list) {
    std::vector<uint32_t> ordinals;
    ordinals.reserve(list.size());
    uint32_t checkedAbove = 0;
    for (const GameEntry& entry : list) {
        ordinals.push_back(checkedAbove + 1);
        checkedAbove += entry.checked ? 1 : 0;
    }
    return ordinals;
}

std::u16string DisplayName(const GameEntry& entry, size_t ordinal, size_t checkedCount,
                           const NumberSettings& settings, NameRules rules) {
    // With the number off, the point stands alone before the name. That is meant.
    if (!settings.showNumberOrder) return settings.showNumberDot ? u"." + entry.name : entry.name;
    const size_t digits = settings.showNumberFill ? Decimal(checkedCount).size() : 1;
    const bool dot = settings.showNumberDot || rules == NameRules::kRomBuild;
    return Decimal(ordinal, digits) + (dot ? u"." : u"") + entry.name;
}

std::vector<std::u16string> DisplayNames(const GameList& list, const NumberSettings& settings,
                                         NameRules rules) {
    const size_t checkedCount = CountChecked(list);
    std::vector<std::u16string> names;
    names.reserve(checkedCount);
    for (const GameEntry& entry : list) {
        if (!entry.checked) continue;
        names.push_back(DisplayName(entry, names.size() + 1, checkedCount, settings, rules));
    }
    return names;
}

std::u16string MulticartTitle(size_t checkedCount) {
    return Decimal(checkedCount) + u" IN 1";
}

}  // namespace bw
