#include "language/language.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <regex>

#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "language/language_table.h"
#include "support/text.h"

namespace bw {
namespace {

// By the argument's number what stands for it: "d" of "%d" and "%1$d", nothing of Qt's "%1".
std::map<int, std::string> Placeholders(const std::string& text) {
    static const std::regex placeholder("%(?:([1-9])\\$)?([0-9.]*l*[A-Za-z%])|%([1-9])");
    std::map<int, std::string> found;
    int next = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), placeholder), end; match != end;
         ++match) {
        const std::string position = (*match)[1].str() + (*match)[3].str();
        found[position.empty() ? ++next : std::stoi(position)] = (*match)[2];
    }
    return found;
}

// A placeholder of another kind or place would fill a message with the wrong values.
TEST(Language, TranslationsKeepPlaceholdersAcceleratorsAndLines) {
    const auto letter = [](const std::string& text) {
        static const std::regex marked("&([A-Za-z])");
        std::smatch match;
        return std::regex_search(text, match, marked) ? std::toupper(*match[1].first) : 0;
    };
    for (const auto& table : {FixedTexts(), OwnTexts()}) {
        for (const TextRow& row : table) {
            const std::string first = ToUtf8(row.texts.front());
            for (const auto text : row.texts) {
                const std::string other = ToUtf8(text);
                EXPECT_EQ(Placeholders(other), Placeholders(first)) << first;
                EXPECT_EQ(letter(other), letter(first)) << first;
                EXPECT_EQ(std::ranges::count(other, '\n'), std::ranges::count(first, '\n'))
                    << first;
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
