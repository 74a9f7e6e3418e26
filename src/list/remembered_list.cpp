#include "list/remembered_list.h"

#include <algorithm>
#include <limits>

#include "support/text.h"

namespace bw {
namespace {

constexpr std::u16string_view kSection = u"list_view";
constexpr uint32_t kWidestColumn = 8192;  // pixels: wider than screens are

std::u16string WidthKey(size_t column) {
    const std::string digits = std::to_string(column);
    return u"list_view_col_" + std::u16string(5 - digits.size(), u'0') + ToWide(digits) + u"_width";
}

}  // namespace

std::string StoreRememberedList(const GameList& games, const ColumnWidths& widths,
                                const std::filesystem::path& base) {
    IniFile text;
    StoreListEntries(games, base, text);
    for (size_t column = 0; column < widths.size(); ++column)
        text.SetInt(kSection, WidthKey(column), widths[column]);
    return text.ToText();
}

RememberedList LoadRememberedList(std::span<const uint8_t> text,
                                  const std::filesystem::path& base) {
    IniFile stored;
    stored.LoadFromMemory(text, IsListKey);
    RememberedList list;
    list.load = AppendListEntries(stored, base, list.games);
    for (size_t column = 0; column < list.widths.size(); ++column) {
        const uint32_t width = stored.GetInt(kSection, WidthKey(column), 0);
        // Beyond 31 bits it is a negative number.
        if (width > std::numeric_limits<int32_t>::max()) continue;
        list.widths[column] = std::min(width, kWidestColumn);
    }
    return list;
}

}  // namespace bw
