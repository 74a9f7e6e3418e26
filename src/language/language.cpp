#include "language/language.h"

#include <algorithm>

#include "language/language_table.h"

namespace bw {

std::u16string LoadText(TextId id, Language language) {
    for (const auto& table : {FixedTexts(), OwnTexts(), DesignerTexts(), CommandLineTexts()}) {
        const auto row = std::ranges::lower_bound(table, id, {}, &TextRow::id);
        if (row == table.end() || row->id != id) continue;
        const auto column = std::ranges::find(kLanguages, language) - kLanguages.begin();
        return std::u16string(row->texts[static_cast<size_t>(column)]);
    }
    return {};
}

}  // namespace bw
