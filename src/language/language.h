// The program's texts in its two languages, by number. The numbers are fixed: messages, menus and
// dialogs refer to them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bw {

// Language ids as the list of the Windows language identifiers has them.
enum class Language : uint16_t { kChinese = 2052, kEnglish = 1033 };

// The text with this number; empty for a number without a row.
std::u16string LoadText(int id, Language language);

// The one of a text that the table has no row for.
std::u16string OwnText(Language language, std::u16string_view chinese, std::u16string_view english);

// Chinese where the user's locale is Chinese (LC_ALL, LC_MESSAGES, LANG in this order, or the
// user interface language on Windows), else English.
Language SystemLanguage();

}  // namespace bw
