// The program's texts in its two languages. Placeholders are printf's, in the order of the
// arguments unless they have numbers, or Qt's "%1".
#pragma once

#include <cstdint>
#include <string>

#include "language/text_id.h"

namespace bw {

// Language ids as the list of the Windows language identifiers has them.
enum class Language : uint16_t { kChinese = 2052, kEnglish = 1033 };

std::u16string LoadText(TextId id, Language language);

// Chinese where the user's locale is Chinese (LC_ALL, LC_MESSAGES, LANG in this order, or the
// user interface language on Windows), else English.
Language SystemLanguage();

}  // namespace bw
