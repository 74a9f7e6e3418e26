// The user's language from the locale variables of POSIX.
#include <cstdlib>
#include <string_view>

#include "language/language.h"

namespace bw {

Language SystemLanguage() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == '\0') continue;
        const std::string_view locale = value;
        const std::string_view language = locale.substr(0, locale.find_first_of("_.@"));
        return language == "zh" ? Language::kChinese : Language::kEnglish;
    }
    return Language::kEnglish;
}

}  // namespace bw
