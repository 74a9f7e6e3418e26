#include "language/language.h"

#include <algorithm>

#include "language/language_table.h"

namespace bw {

std::u16string LoadText(int id, Language language) {
    const auto table = LanguageTable();
    const auto row = std::ranges::lower_bound(table, id, {}, &LanguageRow::id);
    if (row == table.end() || row->id != id) return {};
    return std::u16string(language == Language::kChinese ? row->chinese : row->english);
}

std::u16string OwnText(Language language, std::u16string_view chinese,
                       std::u16string_view english) {
    return std::u16string(language == Language::kChinese ? chinese : english);
}

}  // namespace bw
