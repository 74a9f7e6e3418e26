#include "language/language.h"

#include <regex>
#include <set>

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

// Numbers that no text has ever had.
const std::set<int> kGaps = {121, 148, 154, 158, 159, 160, 161, 162, 163, 164,
                             165, 166, 167, 168, 170, 171, 175, 177, 178, 179,
                             180, 183, 189, 190, 191, 232, 325, 326, 327, 328};

TEST(Language, EveryNumberHasATextInBothLanguages) {
    for (int id = 106; id <= 352; ++id) {
        const bool expected = !kGaps.contains(id);
        EXPECT_EQ(!LoadText(id, Language::kEnglish).empty(), expected) << id;
        EXPECT_EQ(!LoadText(id, Language::kChinese).empty(), expected) << id;
    }
    EXPECT_TRUE(LoadText(105, Language::kEnglish).empty());
    EXPECT_TRUE(LoadText(353, Language::kChinese).empty());
}

// A placeholder of another kind or place would fill a message with the wrong values.
TEST(Language, TranslationsKeepPlaceholdersAcceleratorsAndLines) {
    for (const LanguageRow& row : LanguageTable()) {
        const std::string english = ToUtf8(row.english);
        const std::string chinese = ToUtf8(row.chinese);
        for (const char* pattern : {"%[0-9.]*l?[a-z%]", "\\(&[A-Z]\\)", "\r\n"}) {
            EXPECT_EQ(Matches(chinese, pattern), Matches(english, pattern)) << row.id;
        }
    }
}

TEST(Language, TextsAreThoseOfTheirNumbers) {
    EXPECT_EQ(LoadText(106, Language::kEnglish), u"Open(&O)");
    EXPECT_EQ(LoadText(202, Language::kEnglish), u"Find && Replace(&F)");
    EXPECT_EQ(LoadText(280, Language::kEnglish),
              u"Output information overflow \r\nList data: %d/%d \r\nItem data: %d/%d \r\n"
              u"final data:%d/%d ")
        << "trailing blanks belong to the text";
    EXPECT_EQ(LoadText(147, Language::kChinese), u"\u9519\u8BEF");
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
