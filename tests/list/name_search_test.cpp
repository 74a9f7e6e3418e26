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

std::u16string RefusalOf(const NamePattern& pattern, std::u16string_view name) {
    try {
        pattern.Replaced(name, kNeverStop);
    } catch (const SearchStopped& stopped) {
        return stopped.reason;
    }
    return u"not refused";
}

constexpr bool kLiteral = false;
constexpr bool kRegex = true;

TEST(NameSearch, ReplacesEveryMatch) {
    struct Case {
        bool regex;
        std::u16string find;
        std::u16string replace;
        std::u16string name;
        std::optional<std::u16string> result;
    };
    const std::vector<Case> cases{
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
        {kRegex, u"^", u"1.", u"Contra", u"1.Contra"},
        {kRegex, u"(.)\\1+", u"$1", u"aaabccd", u"abcd"},
        // A character is one match, also where it takes two units; a stray half stays.
        {kRegex, u"^.", u"", u"\U0001F600 Contra", u" Contra"},
        {kRegex, u"C", u"\U0001F600", u"\xDC80 C", u"\xDC80 \U0001F600"},
    };
    for (const Case& c : cases) {
        const auto pattern = Pattern(c.find, c.replace, c.regex);
        EXPECT_EQ(pattern->Replaced(c.name, kNeverStop), c.result)
            << ToUtf8(c.find) << " in " << ToUtf8(c.name);
        EXPECT_EQ(pattern->Matches(c.name, kNeverStop), c.result.has_value() || c.find.empty());
    }
}

TEST(NameSearch, SaysWhatIsWrongWithAnExpression) {
    struct Case {
        std::u16string pattern;
        const char* words;
    };
    const std::vector<Case> cases{
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
        {u"a{99999999999999999999}", "too large"},
        {u"a{1,99999999999999999999}", "too large"},
        {u"(a)\\99999999999999999999", "too large"},
        {u"((a{99}){99}){99}", "too large"},
        {u"(?:|){999999999}", "too large"},
        {std::u16string(100000, u'('), "100000 characters"},
        {std::u16string(101, u'(') + u"a" + std::u16string(101, u')'), "100 parentheses"},
    };
    for (const Case& c : cases) {
        std::unique_ptr<NamePattern> pattern;
        const auto problem =
            NamePattern::Compile({c.pattern, u"", true}, Language::kEnglish, pattern);
        ASSERT_TRUE(problem.has_value()) << ToUtf8(c.pattern.substr(0, 40));
        EXPECT_THAT(ToUtf8(problem->text), HasSubstr(c.words));
        NamePattern::Compile({c.pattern, u"", true}, Language::kChinese, pattern);
        EXPECT_EQ(pattern, nullptr);
    }
    EXPECT_TRUE(Pattern(std::u16string(100, u'(') + u"a" + std::u16string(100, u')'), u"", kRegex));
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
        EXPECT_THAT(ToUtf8(RefusalOf(*Pattern(u"(a|b)*c", u"", kRegex), name)),
                    HasSubstr("too involved"));
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
    EXPECT_THAT(ToUtf8(RefusalOf(*Pattern(u".", u"$`$'$`$'", kRegex), std::u16string(1000, u'a'))),
                HasSubstr("longer than 69536"));
    EXPECT_THAT(ToUtf8(RefusalOf(*Pattern(u"A", std::u16string(1000, u'b'), kLiteral),
                                 std::u16string(1000, u'a'))),
                HasSubstr("longer than"));
}

struct Steps : SearchProgress {
    void Row(size_t done, size_t total) override { seen.push_back({done, total}); }
    std::vector<std::pair<size_t, size_t>> seen;
};

TEST(NameSearch, WalksTheRows) {
    GameList games(6);
    const char16_t* names[] = {u"1.Contra",   u"Gradius", u"2.contra",
                               u"Salamander", u"Contra",  u"3.x"};
    for (size_t i = 0; i < games.size(); ++i) {
        games[i].name = names[i];
        games[i].checked = i % 2 == 1;
    }
    const std::vector<SearchRow> rows = SearchRows(games);
    const auto contra = Pattern(u"contra", u"x", kLiteral);
    const auto next = [&](size_t start, bool onlyChecked = false) {
        return FindNext(rows, *contra, start, onlyChecked, kNeverStop);
    };
    EXPECT_EQ(next(0), 0u);
    EXPECT_EQ(next(1), 2u);
    EXPECT_EQ(next(5), 0u) << "around the end";
    EXPECT_EQ(next(99), 0u);
    EXPECT_EQ(next(0, true), std::nullopt) << "no checked row has it";
    EXPECT_EQ(FindNext({}, *contra, 0, false, kNeverStop), std::nullopt);

    Steps steps;
    const auto numbers = Pattern(u"^\\d+\\.", u"", kRegex);
    const auto all = ReplaceAll(rows, *numbers, false, kNeverStop, steps);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[1].row, 2u);
    EXPECT_EQ(all[1].name, u"contra");
    const auto checked = ReplaceAll(rows, *numbers, true, kNeverStop, steps);
    ASSERT_EQ(checked.size(), 1u);
    EXPECT_EQ(checked[0].row, 5u);
    EXPECT_EQ(steps.seen.front(), std::pair(size_t{0}, size_t{6}));

    const StopFlag stopped = true;
    EXPECT_THROW(ReplaceAll(rows, *contra, false, stopped, steps), SearchStopped);
    EXPECT_THROW(FindNext(rows, *numbers, 0, false, stopped), SearchStopped);
}

}  // namespace
}  // namespace bw
