#include "list/list_editor.h"

#include <algorithm>
#include <functional>
#include <random>

#include <gmock/gmock.h>

#include "common/image_folder.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;

// One entry for each letter, named by it; those in capitals are checked.
GameList Letters(std::string_view letters) {
    GameList games;
    for (const char letter : letters) {
        GameEntry& entry = games.emplace_back();
        entry.checked = letter >= 'A' && letter <= 'Z';
        entry.name = FoldCase(ToWide({&letter, 1}));
    }
    return games;
}

std::string Shown(const ListEditor& list) {
    std::string letters;
    for (const GameEntry& entry : list.Games()) {
        const char letter = ToUtf8(entry.name).at(0);
        letters += entry.checked ? static_cast<char>(letter - 'a' + 'A') : letter;
    }
    return letters;
}

std::string Names(const ListEditor& list) {
    std::string names;
    for (const GameEntry& entry : list.Games())
        names += ToUtf8(entry.name) + " ";
    return names;
}

// A list that keeps what it tells.
struct Told : ListEditor {
    explicit Told(GameList games)
        : ListEditor([this](const ListResult& result) { told.push_back(result); }) {
        Restore(std::move(games));
        told.clear();
    }
    // Of the one operation since the last time.
    ListResult Take() {
        EXPECT_LE(told.size(), 1u);
        told.resize(1);
        return std::exchange(told, {}).front();
    }
    std::vector<ListResult> told;
};

using Command = void (*)(ListEditor&);
constexpr Command kUp = [](ListEditor& list) { list.MoveUp(); };
constexpr Command kDown = [](ListEditor& list) { list.MoveDown(); };
constexpr Command kTop = [](ListEditor& list) { list.MoveTop(); };
constexpr Command kBottom = [](ListEditor& list) { list.MoveBottom(); };
constexpr Command kRemove = [](ListEditor& list) { list.Remove(); };
constexpr Command kClear = [](ListEditor& list) { list.Clear(); };

TEST(ListEditor, MovesAndRemovalAndTheirWayBack) {
    const struct {
        Command command;
        const char* before;
        const char* after;
        std::optional<size_t> reveal = {};
    } cases[] = {{kUp, "abc", "abc"},
                 {kUp, "AbCd", "AbCd"},
                 {kUp, "aBcDE", "BaDEc", 0},
                 {kUp, "abCDe", "aCDbe", 1},
                 {kDown, "aBcD", "aBcD"},
                 {kDown, "ABcDe", "cABeD", 4},
                 {kDown, "aBCde", "adBCe", 3},
                 {kTop, "AbC", "AbC"},
                 {kTop, "aBcDe", "BDace", 0},
                 {kBottom, "aBC", "aBC"},
                 {kBottom, "aBcDe", "aceBD", 4},
                 {kRemove, "abc", "abc"},
                 {kRemove, "AbCDe", "be"},
                 {kClear, "aBc", ""},
                 {kClear, "", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.before);
        Told list(Letters(c.before));
        EXPECT_FALSE(list.CanUndo());
        c.command(list);
        const ListResult result = list.Take();
        EXPECT_EQ(Shown(list), c.after);
        EXPECT_EQ(result.reveal, c.reveal);
        const bool changed = std::string_view(c.before) != c.after;
        EXPECT_EQ(result.change != ListChange::kNothing, changed);
        EXPECT_EQ(list.CanUndo(), changed);
        list.Undo();
        EXPECT_EQ(Shown(list), c.before);
        EXPECT_EQ(list.CanRedo(), changed);
        list.Redo();
        EXPECT_EQ(Shown(list), c.after);
    }
}

TEST(ListEditor, AHundredCheckedRowsMoveAndNoMore) {
    for (const Command move : {kUp, kDown, kTop, kBottom}) {
        const auto tooMany = [move](const std::string& letters) {
            Told list(Letters(letters));
            move(list);
            const bool refused = list.Take().tooMany;
            EXPECT_EQ(list.CanUndo(), !refused && letters.starts_with('a'));
            return refused;
        };
        EXPECT_FALSE(tooMany("a" + std::string(100, 'B') + "cd"));
        EXPECT_TRUE(tooMany("a" + std::string(101, 'B') + "cd"));
        EXPECT_FALSE(tooMany(std::string(101, 'B'))) << "at its end already it isn't even counted";
    }
}

// Rows as such, whatever is checked; some of "ABcdEf" may be hidden by a filter.
TEST(ListEditor, RowsMoveAndGoWithoutTheirChecks) {
    using Rows = std::vector<uint32_t>;
    const auto move = [](RowMove way) {
        return [way](ListEditor& list, const Rows& rows, ListEditor::ShownRows shown) {
            list.MoveRows(rows, way, shown);
        };
    };
    const auto place = [](size_t before) {
        return [before](ListEditor& list, const Rows& rows, ListEditor::ShownRows) {
            list.PlaceRows(rows, before);
        };
    };
    const auto take = [](ListEditor& list, const Rows& rows, ListEditor::ShownRows) {
        EXPECT_EQ(list.RemoveRows(rows), rows.size());
    };
    const auto removeShown = [](ListEditor& list, const Rows&, ListEditor::ShownRows shown) {
        EXPECT_EQ(list.Remove(shown), 2u);
    };
    const auto clearShown = [](ListEditor& list, const Rows&, ListEditor::ShownRows shown) {
        EXPECT_EQ(list.Clear(shown), 3u);
    };
    const Rows shown{0, 4, 5};
    const struct {
        std::function<void(ListEditor&, const Rows&, ListEditor::ShownRows)> command;
        Rows rows;
        const char* after;
        std::optional<size_t> reveal = {};
        ListEditor::ShownRows shown = {};
    } cases[] = {
        {move(RowMove::kUp), {2}, "AcBdEf", 1},
        {move(RowMove::kUp), {0}, "ABcdEf"},
        {move(RowMove::kUp), {2, 4}, "AcEBdf", 1},  // they come together
        {move(RowMove::kUp), {4}, "EABcdf", 0, shown},
        {move(RowMove::kUp), {0}, "ABcdEf", {}, shown},
        {move(RowMove::kDown), {1, 2}, "AdBcEf", 2},
        {move(RowMove::kDown), {5}, "ABcdEf"},
        {move(RowMove::kDown), {0}, "BcdEAf", 4, shown},
        {move(RowMove::kTop), {3, 5}, "dfABcE", 0},
        {move(RowMove::kBottom), {0, 2}, "BdEfAc", 4},
        {place(3), {0, 4}, "BcAEdf", 2},
        {place(3), {2, 3}, "ABcdEf"},
        {place(6), {5, 7}, "ABcdEf"},  // one of them is gone
        {take, {2, 5}, "ABdE", 2},
        {take, {4, 5}, "ABcd", 3},
        {removeShown, {}, "Bcdf", {}, shown},
        {clearShown, {}, "Bcd", {}, shown},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.after);
        Told list(Letters("ABcdEf"));
        c.command(list, c.rows, c.shown);
        const ListResult result = list.Take();
        EXPECT_EQ(Shown(list), c.after);
        EXPECT_EQ(result.reveal, c.reveal);
        EXPECT_EQ(result.highlight > 0, c.reveal.has_value());
        list.Undo();
        EXPECT_EQ(Shown(list), "ABcdEf");
    }
    Told list(Letters("ABcdEf"));
    const auto late = [](const GameEntry& entry) { return entry.name >= u"e"; };
    EXPECT_EQ(list.CheckExactly(late, shown), 2u);
    EXPECT_EQ(Shown(list), "aBcdEF");
    list.Undo();
    EXPECT_EQ(Shown(list), "ABcdEf");
}

// A row for the sorts: name, remark, path, and the header from its fifth byte on.
GameEntry Row(std::u16string name, std::u16string remark, std::u16string path,
              std::initializer_list<int> header) {
    GameEntry entry{};
    entry.name = std::move(name);
    entry.remark = std::move(remark);
    entry.path = std::move(path);
    std::ranges::copy(test::Header(header), entry.header.bytes.begin());
    return entry;
}

TEST(ListEditor, SortsByTheColumnsThatUsersKnow) {
    // NES 2.0 in the last one: its PRG count is 256, its mapper 256.
    Told list({Row(u"b", u"2", u"z", {2, 3, 0x12}), Row(u"\U0001F3AE", u"10", u"y", {1, 4, 0x40}),
               Row(u"\uFF21", u"1", u"x", {4, 0, 0x05}), Row(u"B", u"", u"w", {0, 1, 0, 8, 1, 1})});
    const struct {
        const char* after;
        ListColumn column;
        bool descending = false;
    } cases[] = {
        {"b 🎮 Ａ B ", ListColumn::kNumber},  // no sort
        {"B b Ａ 🎮 ", ListColumn::kName},
        {"🎮 Ａ b B ", ListColumn::kName, true},
        {"B b Ａ 🎮 ", ListColumn::kName},
        {"🎮 b Ａ B ", ListColumn::kPrg},
        {"Ａ B b 🎮 ", ListColumn::kChr},
        {"Ａ b 🎮 B ", ListColumn::kMapper},
        {"b 🎮 B Ａ ", ListColumn::kMirroring},        // equal keys keep their order
        {"Ａ B 🎮 b ", ListColumn::kMirroring, true},  // and are turned round with the rest
        {"Ａ B 🎮 b ", ListColumn::kBattery},
        {"B 🎮 b Ａ ", ListColumn::kTrainer},
        {"B Ａ 🎮 b ", ListColumn::kCoolboy},  // by the remark
        {"B Ａ 🎮 b ", ListColumn::kCoolgirl},
        {"B Ａ 🎮 b ", ListColumn::kCoolgirl, true},  // changes its state only
        {"B Ａ 🎮 b ", ListColumn::kRemark},
        {"B Ａ 🎮 b ", ListColumn::kPath},
        {"b 🎮 Ａ B ", ListColumn::kPath, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.column));
        const std::string before = Names(list);
        list.Sort(c.column);
        const ListChange told = list.Take().change;
        EXPECT_EQ(Names(list), c.after);
        EXPECT_EQ(told == ListChange::kOrder, before != c.after);
        EXPECT_EQ(told == ListChange::kNothing, c.column == ListColumn::kNumber);
        EXPECT_EQ(list.SortDescending(), c.descending);
        EXPECT_EQ(list.SortColumn(), c.column == ListColumn::kNumber ? -1 : int(c.column));
    }
    // The way back has the sort's state as well as the order.
    list.Undo();
    EXPECT_EQ(Names(list), "B Ａ 🎮 b ");
    EXPECT_FALSE(list.SortDescending());
    list.Redo();
    EXPECT_EQ(Names(list), "b 🎮 Ａ B ");
    EXPECT_TRUE(list.SortDescending());
}

TEST(ListEditor, SortsTextsAsTheirUtf8Bytes) {
    std::mt19937 random(7);
    const std::u16string_view parts[] = {u"a", u"ab", u"B", u"\uE000", u"\U0001F3AE", {u"\0", 1}};
    GameList games(600);
    for (GameEntry& entry : games) {
        entry.name.assign(random() % 3 == 0 ? 1100 : 0, u'x');  // long equal beginnings too
        for (size_t i = random() % 6; i > 0; --i)
            entry.name += parts[random() % std::size(parts)];
        entry.remark = ToWide(std::to_string(&entry - games.data()));  // shows the stability
    }
    Told list(games);
    list.Sort(ListColumn::kName);
    std::ranges::stable_sort(games, {}, [](const GameEntry& entry) { return ToUtf8(entry.name); });
    EXPECT_TRUE(
        std::ranges::equal(games, list.Games(), {}, &GameEntry::remark, &GameEntry::remark));
}

TEST(ListEditor, ClicksCheckAndMoveTheAnchor) {
    const std::vector<uint32_t> shown{0, 3, 4, 9};
    const struct {
        size_t findRow;
        size_t row;
        RowClick click;
        const char* after;
        size_t newFindRow;
        ListEditor::ShownRows shown = {};
    } cases[] = {
        {0, 3, {}, "aBcde", 3},
        {0, 3, {.inCheckSquare = true}, "aBcDe", 3},
        {0, 1, {.inCheckSquare = true}, "abcde", 1},
        {0, 3, {.ctrl = true}, "aBcDe", 0},
        {0, 1, {.ctrl = true, .inCheckSquare = true}, "aBcde", 0},
        {0, 2, {.shift = true}, "ABCde", 0},
        {4, 2, {.shift = true, .ctrl = true}, "aBCDE", 4},
        {9, 3, {.shift = true}, "aBcDE", 9},  // the anchor's row is gone
        {0, 5, {.inCheckSquare = true}, "aBcde", 0},
        {0, 3, {.shift = true}, "ABcDe", 0, shown},  // rows that a filter hides stay
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.after);
        Told list(Letters("aBcde"));
        list.SetFindRow(c.findRow);
        list.Click(c.row, c.click, c.shown);
        EXPECT_EQ(Shown(list), c.after);
        EXPECT_EQ(list.Take().change == ListChange::kChecks, Shown(list) != "aBcde");
        EXPECT_EQ(list.FindRow(), c.newFindRow);
    }
    Told list(Letters("aBcd"));
    list.SelectAll(shown);
    EXPECT_EQ(Shown(list), "ABcD");
    list.SelectInverse(shown);
    EXPECT_EQ(Shown(list), "aBcd");
    list.SelectInverse();
    EXPECT_EQ(Shown(list), "AbCD");
    list.SelectAll();
    list.told.clear();
    list.SelectAll();
    EXPECT_TRUE(list.told.empty());
    for (const char* before : {"AbCD", "aBcd", "ABcD", "aBcd"}) {
        list.Undo();
        EXPECT_EQ(Shown(list), before);
    }
    EXPECT_FALSE(list.CanUndo());
}

TEST(ListEditor, TextsAndTheirLimit) {
    Told list(Letters("abc"));
    list.SetName(3, u"x");
    EXPECT_TRUE(list.told.empty());
    list.SetName(0, std::u16string(300, u'x'));
    EXPECT_EQ(list.Games()[0].name.size(), 260u);
    list.SetRemark(1, std::u16string(259, u'x') + u"\U0001F3AE");
    EXPECT_EQ(list.Games()[1].remark, std::u16string(259, u'x')) << "no half of a pair";
    list.SetRemark(1, list.Games()[1].remark);

    list.Rename({{7, u"gone"}, {1, u"b"}, {2, u"first"}, {2, u"second"}});
    EXPECT_EQ(list.Games()[2].name, u"second");
    list.Undo();
    EXPECT_EQ(list.Games()[2].name, u"c");
    list.Undo();
    EXPECT_EQ(list.Games()[1].remark, u"");
}

TEST(ListEditor, AppendingEndsAtTheLimitIfAsked) {
    Told list(GameList(kListLimit - 1));
    list.Append(Letters("ab"), {});
    EXPECT_EQ(list.Take().reveal, kListLimit - 1);
    EXPECT_EQ(list.Games().size(), kListLimit);
    list.Append(Letters("c"), {});
    EXPECT_EQ(list.Take().reveal, kListLimit - 1) << "the end shows all the same";
    list.Append(Letters("c"), {.limited = false, .reveal = false});
    EXPECT_FALSE(list.Take().reveal);
    EXPECT_EQ(list.Games().size(), kListLimit + 1);
    list.Undo();
    list.Undo();
    EXPECT_EQ(list.Games().size(), kListLimit - 1);
}

// Any commands, taken back and done again, meet the same lists.
TEST(ListEditor, TheWayBackMeetsEveryListAgain) {
    std::mt19937 random(20);
    Told list({});
    const std::vector<std::function<void()>> commands{
        [&] { list.Append(Letters("qXwEr"), {}); },
        [&] { list.Remove(); },
        [&] { list.Sort(ListColumn(random() % 12)); },
        [&] { list.SetName(random() % 12, ToWide(std::to_string(random()))); },
        [&] { list.SetChecked(random() % 12, random() % 3 == 0); },
        [&] { list.SelectInverse(); },
        [&] {
            const auto row = static_cast<uint32_t>(random() % 12);
            list.PlaceRows(std::vector{row, row + 2}, random() % 16);
        },
        [&] {
            const auto row = static_cast<uint32_t>(random() % 12);
            list.SetChecks(std::vector{row + 2, row, row + 2}, random() % 2 == 0);
        },
        [&] {
            const auto row = static_cast<uint32_t>(random() % 12);
            GameEntry found;
            found.path = ToWide(std::to_string(random()));
            list.ReplaceEntries({{row, found}, {row + 2, found}, {row, Letters("Z")[0]}});
        },
        [&] { list.MoveUp(); },
        [&] { list.MoveBottom(); },
        [&] { random() % 20 == 0 ? kClear(list) : list.MoveDown(); },
    };
    const auto state = [&] {
        std::string others;
        for (const GameEntry& entry : list.Games())
            others += (entry.checked ? 'x' : '-') + ToUtf8(entry.path);
        return Names(list) + others;
    };
    std::vector<std::string> seen{state()};
    for (int i = 0; i < 4000; ++i) {
        const size_t command = random() % (commands.size() + 1);
        list.told.clear();
        if (command < commands.size()) {
            commands[command]();
            if (list.Take().change >= ListChange::kChecks) seen.push_back(state());
        } else if (list.CanUndo()) {
            list.Undo();
            seen.pop_back();
            ASSERT_EQ(state(), seen.back()) << i;
        }
    }
    const std::string last = state();
    size_t steps = 0;
    for (; list.CanUndo(); ++steps) {
        ASSERT_EQ(state(), seen[seen.size() - 1 - steps]);
        list.Undo();
    }
    EXPECT_LE(steps, 500u);
    while (list.CanRedo())
        list.Redo();
    EXPECT_EQ(state(), last);
}

TEST(ListEditor, FindsLettersInAnyCase) {
    const Told list({Row(u"Game", u"", u"C:\\ROMS\\a", {}), Row(u"ÉTOILE", u"", u"", {}),
                     Row(u"game 2", u"Étoile", u"", {}), Row(u"G", u"", u"", {})});
    EXPECT_EQ(list.FindPrefix(u"GAME", 0), 0u);
    EXPECT_EQ(list.FindPrefix(u"GAME", 1), 2u);
    EXPECT_EQ(list.FindPrefix(u"GAME", 3), std::nullopt);
    EXPECT_EQ(list.FindPrefix(u"ét", 0), 1u);
}

TEST(ListEditor, FoundFilesKeepWhatTheUserTypedAndSumsAreNoStep) {
    Told list(Letters("aB"));
    list.ReplaceEntries({{1, GameEntry()}, {2, GameEntry()}});
    EXPECT_EQ(list.Take().change, ListChange::kTexts);
    EXPECT_EQ(Shown(list), "aB");
    const std::vector<std::optional<ImageSums>> sums{{}, ImageSums{.data = {1, 2}, .size = 3}};
    list.NoteSums(std::vector<uint32_t>{0, 1}, sums);
    EXPECT_EQ(list.Take().change, ListChange::kTexts) << "so that marks show";
    EXPECT_EQ(list.Games()[1].crcs, sums[1]->data);
    list.NoteSums(std::vector<uint32_t>{1, 2}, sums);
    EXPECT_TRUE(list.told.empty()) << "nothing new of the second row, and no third one";
    list.Undo();
    EXPECT_FALSE(list.CanUndo());
}

}  // namespace
}  // namespace bw
