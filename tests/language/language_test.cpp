#include "language/language.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "language/language_table.h"
#include "support/text.h"

namespace bw {
namespace {

using std::filesystem::recursive_directory_iterator;

const std::filesystem::path kSources = BANKWEAVER_SOURCE "/src";

void AddWords(const std::filesystem::path& file, std::set<std::string>& words) {
    std::ifstream stream(file);
    std::string word;
    for (char c = 0; stream.get(c);) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            word += c;
        } else if (!word.empty()) {
            words.insert(std::exchange(word, {}));
        }
    }
}

// The names and numbers of TextId as its header declares them.
std::map<std::string, int> DeclaredTexts() {
    std::map<std::string, int> texts;
    std::ifstream stream(kSources / "language/text_id.h");
    const std::regex declaration("    (k\\w+)(?: = (\\d+))?,");
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, declaration)) continue;
        number = match[2].matched ? std::stoi(match[2]) : number + 1;
        texts[match[1]] = number;
    }
    return texts;
}

TEST(Language, EveryNameHasOneRowWithATextInEachLanguage) {
    std::vector<int> rows;
    for (const auto& table : {FixedTexts(), OwnTexts(), DesignerTexts(), CommandLineTexts()}) {
        EXPECT_TRUE(std::ranges::is_sorted(table, {}, &TextRow::id));
        for (const TextRow& row : table) {
            rows.push_back(static_cast<int>(row.id));
            for (const auto text : row.texts)
                EXPECT_FALSE(text.empty()) << rows.back();
        }
    }
    std::ranges::sort(rows);
    EXPECT_EQ(std::ranges::adjacent_find(rows), rows.end());
    std::vector<int> declared;
    for (const auto& [name, number] : DeclaredTexts())
        declared.push_back(number);
    EXPECT_THAT(declared, testing::UnorderedElementsAreArray(rows));
    EXPECT_EQ(LoadText(TextId::kErrorTitle, Language::kChinese), u"\u9519\u8BEF");
    EXPECT_EQ(LoadText(TextId::kStop, Language::kEnglish), u"Stop");
}

// The fixed texts wait for the windows that will say them.
TEST(Language, EveryOwnTextIsSaidSomewhere) {
    std::set<std::string> words;
    for (const auto& entry : recursive_directory_iterator(kSources)) {
        const std::string file = entry.path().filename().string();
        if (file == "text_id.h" || file.ends_with("_texts.cpp")) continue;
        if (entry.is_regular_file()) AddWords(entry.path(), words);
    }
    for (const auto& [name, number] : DeclaredTexts()) {
        const bool fixed = number < static_cast<int>(OwnTexts().front().id);
        EXPECT_TRUE(fixed || words.contains(name)) << name;
    }
}

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
    for (const auto& table : {FixedTexts(), OwnTexts(), DesignerTexts(), CommandLineTexts()}) {
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

}  // namespace
}  // namespace bw
