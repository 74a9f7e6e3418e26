// The rows of the string table.
#pragma once

#include <span>
#include <string_view>

namespace bw {

struct LanguageRow {
    int id;
    std::u16string_view english;
    std::u16string_view chinese;
};

// In ascending order of id.
std::span<const LanguageRow> LanguageTable();

}  // namespace bw
