#include "list/search/name_search.h"

#include <chrono>
#include <thread>

#include <gmock/gmock.h>

#include "support/text.h"

namespace bw {
namespace {

using testing::HasSubstr;

const StopFlag kNeverStop = false;

std::unique_ptr<NamePattern> Pattern(std::u16string find, std::u16string replace, bool regex) {
    std::unique_ptr<NamePattern> pattern;
    const auto problem = NamePattern::Compile({std::move(find), std::move(replace), regex},
                                              Language::kEnglish, pattern);
    if (problem) throw std::invalid_argument(ToUtf8(problem->text));
    return pattern;
}

constexpr bool kLiteral = false;
constexpr bool kRegex = true;

void ExpectRefusal(const NamePattern& pattern, std::u16string_view name, const char* words) {
    try {
        pattern.Replaced(name, kNeverStop);
        ADD_FAILURE() << "not refused: " << words;
    } catch (const SearchStopped& stopped) {
        EXPECT_THAT(ToUtf8(stopped.reason), HasSubstr(words));
    }
}

TEST(NameSearch, ReplacesEveryMatch) {
    const struct {
        bool regex;
        std::u16string find, replace, name;
        std::optional<std::u16string> result;
    } cases[] = {
        {kLiteral, u"CONTRA", u"Gryzor", u"Super Contra, contra", u"Super Gryzor, Gryzor"},
        {kLiteral, u"a", u"aa", u"banana", u"baanaanaa"},
        {kLiteral, u"aa", u"b", u"aaaaa", u"bba"},
        {kLiteral, u"ÄÖя", u"", u"x äöЯ y", u"x  y"},
        {kLiteral, u"^\\d+\\.", u"", u"12.Contra", {}},
        {kLiteral, u"^\\d+\\.", u"-", u"a^\\D+\\.b", u"a-b"},
        {kLiteral, u"", u"x", u"Contra", {}},
        {kRegex, u"^\\d+\\.", u"", u"12.Contra", u"Contra"},
        {kRegex, u"^\\d+\\.", u"", u"1.2.Contra", u"2.Contra"},
        {kRegex, u"^\\d+\\.", u"", u"Contra 2.", {}},
        {kRegex, u"^a|b", u"-", u"abab", u"--a-"},
        {kRegex, u"contra", u"-", u"Contra", {}},
        {kRegex, u"(\\w+) (\\w+)", u"$2, $1 [$&] $$$3", u"Super Contra!",
         u"Contra, Super [Super Contra] $!"},
        {kRegex, u"x*", u"-", u"axb", u"-a--b-"},
        {kRegex, u"(a*)*", u"-", u"baa", u"-b--"},
        {kRegex, u"", u".", u"ab", u".a.b."},
        {kRegex, u"(.)\\1+", u"$1", u"aaabccd", u"abcd"},
        // A character is one match, also where it takes two units; a stray half stays.
        {kRegex, u"^.", u"", u"\U0001F600 Contra", u" Contra"},
        {kRegex, u"C", u"\U0001F600", u"\xDC80 C", u"\xDC80 \U0001F600"},
    };
    for (const auto& c : cases) {
        const auto pattern = Pattern(c.find, c.replace, c.regex);
        EXPECT_EQ(pattern->Replaced(c.name, kNeverStop), c.result)
            << ToUtf8(c.find) << " in " << ToUtf8(c.name);
        EXPECT_EQ(pattern->Matches(c.name, kNeverStop), c.result.has_value() || c.find.empty());
    }
}

std::u16string Nested(size_t depth) {
    return std::u16string(depth, u'(') + u"a" + std::u16string(depth, u')');
}

TEST(NameSearch, SaysWhatIsWrongWithAnExpression) {
    const std::pair<std::u16string, const char*> cases[] = {
        {u"a(b(c)", "\"(\" at character 2"},
        {u"[)]\\)(?:a))", "\")\" at character 11"},
        {u"*.nes", "before the \"*\" at character 1"},
        {u"(?=a)+", "before the \"+\" at character 6"},
        {u"\\b{2}", "before the \"{\" at character 3"},
        {u"(?<year>a)", "behind \"(?\""},
        {u"[[:word", "[: :]"},
        {u"[[:wort:]]", "isn't known"},
        {u"[abc", "\"[\" is never closed"},
        {u"[z-a]", "wrong way round"},
        {u"a\\", "stands at the end"},
        {u"\\x4", "isn't complete"},
        {u"(a)\\2", "group that there isn't"},
        {u"a{2", "\"{\" is never closed"},
        {u"a{5,2}", "inside { }"},
        {u"(a)\\99999999999999999999", "too large"},
        {u"((a{99}){99}){99}", "too large"},
        {u"(?:|){999999999}", "too large"},
        {u"a{1,99999999999999999999}", "too large"},
        {std::u16string(100000, u'('), "100000 characters"},
        {Nested(101), "100 parentheses"}};
    for (const auto& [find, words] : cases) {
        std::unique_ptr<NamePattern> pattern;
        const auto problem = NamePattern::Compile({find, u"", true}, Language::kEnglish, pattern);
        ASSERT_TRUE(problem.has_value()) << ToUtf8(find.substr(0, 40));
        EXPECT_THAT(ToUtf8(problem->text), HasSubstr(words));
        NamePattern::Compile({find, u"", true}, Language::kChinese, pattern);
        EXPECT_EQ(pattern, nullptr);
    }
    EXPECT_TRUE(Pattern(Nested(100), u"", kRegex));
}

TEST(NameSearch, StopsAnExplosion) {
    // The second one never takes a character: its group takes no part.
    for (const char16_t* find : {u"^(a+)+$", u"(?:(b)|)(?:|){60}\\1"}) {
        const auto pattern = Pattern(find, u"", kRegex);
        StopFlag stop = false;
        std::chrono::steady_clock::time_point asked;
        std::jthread user([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            asked = std::chrono::steady_clock::now();
            stop = true;
        });
        EXPECT_THROW(pattern->Matches(std::u16string(60, u'a') + u"!", stop), SearchStopped);
        user.join();
        EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::milliseconds(500));
    }
}

// Deep recursion is refused, on the main thread and on one of the usual size.
TEST(NameSearch, RefusesWhatWouldOverflowTheStack) {
    const std::u16string name(1 << 20, u'a');
    std::u16string manyEmpty;  // states that don't look at the name
    for (int i = 0; i < 400; ++i)
        manyEmpty += u"(?:|)";
    const auto tryAll = [&] {
        ExpectRefusal(*Pattern(u"(a|b)*c", u"", kRegex), name, "too involved");
        EXPECT_TRUE(Pattern(u"(?:|){600}", u"", kRegex)->Matches(u"a", kNeverStop));
        EXPECT_TRUE(Pattern(manyEmpty, u"", kRegex)->Matches(u"a", kNeverStop));
        EXPECT_TRUE(Pattern(u"^a", u"", kRegex)->Matches(name, kNeverStop));
        EXPECT_EQ(Pattern(u"a{3}", u"b", kRegex)->Replaced(name + u"a", kNeverStop)->size(),
                  name.size() / 3 + 2);
    };
    tryAll();
    std::thread(tryAll).join();
}

TEST(NameSearch, BoundsWhatReplacementsMultiply) {
    const std::u16string name(1000, u'a');
    ExpectRefusal(*Pattern(u".", u"$`$'$`$'", kRegex), name, "longer than 69536");
    ExpectRefusal(*Pattern(u"A", std::u16string(1000, u'b'), kLiteral), name, "longer than");
}

struct Steps : SearchProgress {
    void Row(size_t done, size_t total) override { last = {done, total}; }
    std::pair<size_t, size_t> last;
};

TEST(NameSearch, WalksTheRows) {
    const std::vector<SearchRow> rows{{u"1.Contra", false}, {u"Gradius", true},
                                      {u"2.contra", false}, {u"Salamander", true},
                                      {u"x.Contra", false}, {u"3.x", true}};
    const auto contra = Pattern(u"contra", u"x", kLiteral);
    const auto next = [&](size_t start, bool onlyChecked = false) {
        return FindNext(rows, *contra, start, onlyChecked, kNeverStop);
    };
    EXPECT_EQ(next(0), 0u);
    EXPECT_EQ(next(1), 2u);
    EXPECT_EQ(next(5), 0u) << "around the end";
    EXPECT_EQ(next(0, true), std::nullopt) << "no checked row has it";
    EXPECT_EQ(FindNext({}, *contra, 0, false, kNeverStop), std::nullopt);

    Steps steps;
    const auto numbers = Pattern(u"^[\\dx]\\.", u"x.", kRegex);
    const auto replaced = [&](bool onlyChecked) {
        std::string text;
        for (const auto& [row, name] : ReplaceAll(rows, *numbers, onlyChecked, kNeverStop, steps))
            text += std::to_string(row) + ToUtf8(name) + " ";
        return text;
    };
    EXPECT_EQ(replaced(false), "0x.Contra 2x.contra 5x.x ") << "not where nothing changes";
    EXPECT_EQ(replaced(true), "5x.x ");
    EXPECT_EQ(steps.last, std::pair(size_t{0}, size_t{6}));

    const StopFlag stopped = true;
    EXPECT_THROW(ReplaceAll(rows, *contra, false, stopped, steps), SearchStopped);
    EXPECT_THROW(FindNext(rows, *numbers, 0, false, stopped), SearchStopped);
}

}  // namespace
}  // namespace bw
