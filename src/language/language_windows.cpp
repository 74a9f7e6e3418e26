#include "language/language.h"
#include "support/windows_api.h"

namespace bw {

Language SystemLanguage() {
    const bool chinese = PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_CHINESE;
    return chinese ? Language::kChinese : Language::kEnglish;
}

}  // namespace bw
