#include "language/language.h"

#include <algorithm>

#include "language/language_table.h"

namespace bw {

std::u16string LoadText(TextId id, Language language) {
    std::span<const TextRow> table = FixedTexts();
    for (const auto& behind : {OwnTexts(), DesignerTexts(), CommandLineTexts()})
        if (id >= behind.front().id) table = behind;
    const auto row = std::ranges::lower_bound(table, id, {}, &TextRow::id);
    if (row == table.end() || row->id != id) return {};
    const auto column = std::ranges::find(kLanguages, language) - kLanguages.begin();
    return std::u16string(row->texts[static_cast<size_t>(column)]);
}

}  // namespace bw
