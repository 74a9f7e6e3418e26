// The user's language stands in variables on POSIX systems; on Windows no program can change it.
#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "language/language.h"

namespace bw {
namespace {

TEST(LanguageOnPosix, SystemLanguageFollowsTheFirstLocaleVariableThatIsSet) {
    struct Case {
        const char *all, *messages, *lang;
        Language language;
    };
    const Case cases[] = {
        {"", "", "", Language::kEnglish},
        {"", "", "zh_CN.UTF-8", Language::kChinese},
        {"", "", "zh", Language::kChinese},
        {"", "en_US.UTF-8", "zh_CN.UTF-8", Language::kEnglish},
        {"zh_TW@x", "en_US.UTF-8", "C", Language::kChinese},
        {"C", "zh_CN", "zh_CN", Language::kEnglish},
        {"", "", "zhx_YY", Language::kEnglish},
    };
    for (const Case& c : cases) {
        const EnvironmentVariable all("LC_ALL", c.all);
        const EnvironmentVariable messages("LC_MESSAGES", c.messages);
        const EnvironmentVariable lang("LANG", c.lang);
        EXPECT_EQ(SystemLanguage(), c.language) << c.all << "," << c.messages << "," << c.lang;
    }
}

}  // namespace
}  // namespace bw
