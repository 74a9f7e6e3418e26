#include "language/language.h"

#include <regex>

#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "language/language_table.h"
#include "support/text.h"

namespace bw {
namespace {

std::string Matches(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::string found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
         ++match) {
        found += match->str() + " ";
    }
    return found;
}

// A placeholder of another kind or place would fill a message with the wrong values.
TEST(Language, TranslationsKeepPlaceholdersAcceleratorsAndLines) {
    for (const auto& table : {FixedTexts(), OwnTexts()}) {
        for (const TextRow& row : table) {
            const std::string english = ToUtf8(row.texts[0]);
            const std::string chinese = ToUtf8(row.texts[1]);
            for (const char* pattern : {"%[0-9.]*l?[a-z%]", "\\(&[A-Z]\\)", "\r\n"}) {
                EXPECT_EQ(Matches(chinese, pattern), Matches(english, pattern)) << english;
            }
        }
    }
}

TEST(Language, SystemLanguageFollowsTheFirstLocaleVariableThatIsSet) {
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
