// The rows of the string table.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "language/language.h"

namespace bw {

// The columns of the table.
inline constexpr std::array kLanguages{Language::kEnglish, Language::kChinese};

struct TextRow {
    TextId id;
    std::array<std::u16string_view, kLanguages.size()> texts;
};

// Each in ascending order of id.
std::span<const TextRow> FixedTexts();
std::span<const TextRow> OwnTexts();
std::span<const TextRow> DesignerTexts();
std::span<const TextRow> CommandLineTexts();

}  // namespace bw
