#include "list/list_editor.h"

#include <algorithm>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

// A list that keeps what it tells.
class Told : public ListEditor {
  public:
    Told() : ListEditor([this](const ListResult& result) { Hear(result); }) {}
    void Forget() { times_ = 0; }
    // Of the one operation since the last time.
    ListResult Take() {
        EXPECT_LE(times_, 1);
        return std::exchange(times_, 0) == 0 ? ListResult{} : last_;
    }

  private:
    void Hear(const ListResult& result) {
        last_ = result;
        ++times_;
    }
    ListResult last_;
    int times_ = 0;
};

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

using Command = void (ListEditor::*)();
constexpr Command kUp = &ListEditor::MoveUp;
constexpr Command kDown = &ListEditor::MoveDown;
constexpr Command kTop = &ListEditor::MoveTop;
constexpr Command kBottom = &ListEditor::MoveBottom;
constexpr Command kRemove = &ListEditor::Remove;

constexpr int kNone = -1;
struct CommandCase {
    Command command;
    const char* before;
    const char* after;
    int reveal;
};

TEST(ListEditor, MovesAndRemovalAndTheirWayBack) {
    const CommandCase cases[] = {
        {kUp, "", "", kNone},
        {kUp, "abc", "abc", kNone},
        {kUp, "AbCd", "AbCd", kNone},  // the first row holds all others
        {kUp, "aBcDE", "BaDEc", 0},
        {kUp, "abCDe", "aCDbe", 1},
        {kDown, "aBcD", "aBcD", kNone},
        {kDown, "ABcDe", "cABeD", 4},
        {kDown, "aBCde", "adBCe", 3},
        {kTop, "AbC", "AbC", kNone},
        {kTop, "aBcDe", "BDace", 0},
        {kBottom, "aBC", "aBC", kNone},
        {kBottom, "aBcDe", "aceBD", 4},
        {kRemove, "abc", "abc", kNone},
        {kRemove, "AbCDe", "be", kNone},
        {kRemove, "ABC", "", kNone},
        {&ListEditor::Clear, "aBc", "", kNone},
        {&ListEditor::Clear, "", "", kNone},
    };
    for (const CommandCase& c : cases) {
        SCOPED_TRACE(c.before);
        Told list;
        list.Restore(Letters(c.before));
        EXPECT_FALSE(list.CanUndo());
        list.Forget();
        (list.*c.command)();
        const ListResult result = list.Take();
        EXPECT_EQ(Shown(list), c.after);
        EXPECT_EQ(result.reveal ? static_cast<int>(*result.reveal) : kNone, c.reveal);
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
        Told list;
        const auto tooMany = [&](const std::string& letters) {
            list.Restore(Letters(letters));
            list.Forget();
            (list.*move)();
            return list.Take().tooMany;
        };
        EXPECT_FALSE(tooMany("a" + std::string(100, 'B') + "cd"));
        EXPECT_TRUE(list.CanUndo());
        EXPECT_TRUE(tooMany("a" + std::string(101, 'B') + "cd"));
        EXPECT_FALSE(list.CanUndo());
        EXPECT_FALSE(tooMany(std::string(101, 'B'))) << "at its end already it isn't even counted";
    }
}

// A row for the sorts: name, remark, path, and the header from its fifth byte on.
GameEntry Row(std::u16string name, std::u16string remark, std::u16string path,
              std::initializer_list<int> header) {
    GameEntry entry;
    entry.name = std::move(name);
    entry.remark = std::move(remark);
    entry.path = std::move(path);
    const std::string bytes = test::Header(header);
    std::ranges::copy(bytes, entry.header.bytes.begin());
    return entry;
}

struct SortCase {
    const char* after;
    ListColumn column;
    bool descending;
};

TEST(ListEditor, SortsByTheColumnsThatUsersKnow) {
    Told list;
    // NES 2.0 in the last one: its PRG count is 256, its mapper 256.
    list.Restore(
        {Row(u"b", u"2", u"z", {2, 3, 0x12}), Row(u"\U0001F3AE", u"10", u"y", {1, 4, 0x40}),
         Row(u"\uFF21", u"1", u"x", {4, 0, 0x05}), Row(u"B", u"", u"w", {0, 1, 0, 8, 1, 1})});
    const std::string start = Names(list);
    const SortCase cases[] = {
        {"b 🎮 Ａ B ", ListColumn::kNumber, false},  // no sort
        {"B b Ａ 🎮 ", ListColumn::kName, false},
        {"🎮 Ａ b B ", ListColumn::kName, true},
        {"B b Ａ 🎮 ", ListColumn::kName, false},
        {"🎮 b Ａ B ", ListColumn::kPrg, false},
        {"Ａ B b 🎮 ", ListColumn::kChr, false},
        {"Ａ b 🎮 B ", ListColumn::kMapper, false},
        {"b 🎮 B Ａ ", ListColumn::kMirroring, false},  // equal keys keep their order
        {"Ａ B 🎮 b ", ListColumn::kMirroring, true},   // and are turned round with the rest
        {"Ａ B 🎮 b ", ListColumn::kBattery, false},
        {"B 🎮 b Ａ ", ListColumn::kTrainer, false},
        {"B Ａ 🎮 b ", ListColumn::kCoolboy, false},  // by the remark
        {"B Ａ 🎮 b ", ListColumn::kCoolgirl, false},
        {"B Ａ 🎮 b ", ListColumn::kCoolgirl, true},  // changes its state only
        {"B Ａ 🎮 b ", ListColumn::kRemark, false},
        {"B Ａ 🎮 b ", ListColumn::kPath, false},
        {"b 🎮 Ａ B ", ListColumn::kPath, true},
    };
    for (const SortCase& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.column));
        const std::string before = Names(list);
        list.Forget();
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
    while (list.CanUndo())
        list.Undo();
    EXPECT_EQ(Names(list), start);
    while (list.CanRedo())
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
    ListEditor list;
    list.Restore(games);
    list.Sort(ListColumn::kName);
    std::ranges::stable_sort(games, {}, [](const GameEntry& entry) { return ToUtf8(entry.name); });
    for (size_t row = 0; row < games.size(); ++row)
        ASSERT_EQ(list.Games()[row].remark, games[row].remark) << row;
}

struct ClickCase {
    size_t findRow;
    size_t row;
    RowClick click;
    const char* after;
    size_t newFindRow;
    std::vector<uint32_t> shown = {};
};

TEST(ListEditor, ClicksCheckAndMoveTheAnchor) {
    const ClickCase cases[] = {
        {0, 3, {}, "aBcde", 3},
        {0, 3, {.inCheckSquare = true}, "aBcDe", 3},
        {0, 1, {.inCheckSquare = true}, "abcde", 1},
        {0, 3, {.ctrl = true}, "aBcDe", 0},
        {0, 1, {.ctrl = true, .inCheckSquare = true}, "aBcde", 0},
        {0, 2, {.shift = true}, "ABCde", 0},
        {4, 2, {.shift = true, .ctrl = true}, "aBCDE", 4},
        {9, 3, {.shift = true}, "aBcDE", 9},  // the anchor's row is gone
        {0, 5, {.inCheckSquare = true}, "aBcde", 0},
        {0, 3, {.shift = true}, "ABcDe", 0, {0, 3, 4}},  // rows that a filter hides stay
    };
    for (const ClickCase& c : cases) {
        SCOPED_TRACE(c.after);
        Told list;
        list.Restore(Letters("aBcde"));
        list.Forget();
        list.SetFindRow(c.findRow);
        const auto shown = c.shown.empty() ? ListEditor::ShownRows{} : std::span(c.shown);
        list.Click(c.row, c.click, shown);
        EXPECT_EQ(Shown(list), c.after);
        EXPECT_EQ(list.Take().change == ListChange::kChecks, Shown(list) != "aBcde");
        EXPECT_EQ(list.FindRow(), c.newFindRow);
    }
    Told list;
    list.Restore(Letters("aBcd"));
    const std::vector<uint32_t> shown{1, 3, 9};
    list.SelectAll(shown);
    EXPECT_EQ(Shown(list), "aBcD");
    list.SelectInverse(shown);
    EXPECT_EQ(Shown(list), "abcd");
    list.SelectInverse();
    EXPECT_EQ(Shown(list), "ABCD");
    list.Forget();
    list.SelectAll();
    EXPECT_EQ(list.Take().change, ListChange::kNothing);
    EXPECT_FALSE(list.CanUndo());
}

TEST(ListEditor, TextsAndTheirLimit) {
    Told list;
    list.Restore(Letters("abc"));
    list.Forget();
    list.SetName(3, u"x");
    EXPECT_EQ(list.Take().change, ListChange::kNothing);
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
    list.Redo();
    list.Redo();
    EXPECT_EQ(list.Games()[2].name, u"second");
}

TEST(ListEditor, AppendingEndsAtTheLimitIfAsked) {
    Told list;
    list.Restore(GameList(kListLimit - 1));
    list.Forget();
    const auto appended = [&](std::string_view letters, ListEditor::Appending how) {
        list.Append(Letters(letters), how);
        return list.Take();
    };
    EXPECT_EQ(appended("ab", {}).reveal, kListLimit - 1);
    EXPECT_EQ(list.Games().size(), kListLimit);
    const ListResult none = appended("c", {});
    EXPECT_TRUE(none.change == ListChange::kNothing && none.reveal) << "the end shows all the same";
    const ListResult beyond = appended("c", {.limited = false, .reveal = false});
    EXPECT_TRUE(beyond.change == ListChange::kSize && !beyond.reveal);
    EXPECT_EQ(list.Games().size(), kListLimit + 1);
    list.Undo();
    list.Undo();
    EXPECT_EQ(list.Games().size(), kListLimit - 1);
}

// Any commands, taken back and done again, meet the same lists.
TEST(ListEditor, TheWayBackMeetsEveryListAgain) {
    std::mt19937 random(20);
    Told list;
    std::vector<std::string> seen{Names(list)};
    for (int i = 0; i < 2000; ++i) {
        const size_t row = random() % 12;
        list.SetChecked(row, random() % 3 == 0);
        list.Forget();
        switch (random() % 8) {
            case 0:
                list.Append(Letters("qXwEr"), {});
                break;
            case 1:
                list.Remove();
                break;
            case 2:
                list.Sort(ListColumn(random() % 12));
                break;
            case 3:
                list.SetName(row, ToWide(std::to_string(i)));
                break;
            case 4:
                list.MoveUp();
                break;
            case 5:
                list.MoveBottom();
                break;
            case 6:
                random() % 20 == 0 ? list.Clear() : list.MoveDown();
                break;
            case 7:
                if (list.CanUndo()) {
                    list.Undo();
                    list.Forget();
                    seen.pop_back();
                    ASSERT_EQ(Names(list), seen.back()) << i;
                }
        }
        if (list.Take().change > ListChange::kChecks) seen.push_back(Names(list));
    }
    const std::string last = Names(list);
    size_t steps = 0;
    for (; list.CanUndo(); ++steps) {
        ASSERT_EQ(Names(list), seen[seen.size() - 1 - steps]);
        list.Undo();
    }
    EXPECT_LE(steps, 100u);
    for (; steps > 0; --steps)
        list.Redo();
    EXPECT_EQ(Names(list), last);
}

TEST(ListEditor, FindsLettersInAnyCase) {
    ListEditor list;
    list.Restore({Row(u"Game", u"", u"C:\\ROMS\\a", {}), Row(u"ÉTOILE", u"", u"", {}),
                  Row(u"game 2", u"Étoile", u"", {}), Row(u"G", u"", u"", {})});
    EXPECT_EQ(list.FindPrefix(u"GAME", 0), 0u);
    EXPECT_EQ(list.FindPrefix(u"GAME", 1), 2u);
    EXPECT_EQ(list.FindPrefix(u"GAME", 3), std::nullopt);
    EXPECT_EQ(list.FindPrefix(u"ét", 0), 1u);
    EXPECT_THAT(list.RowsWith(u"éToI"), ElementsAre(1, 2));
    EXPECT_THAT(list.RowsWith(u"roms"), ElementsAre(0));
    EXPECT_THAT(list.RowsWith(u""), ElementsAre(0, 1, 2, 3));
}

}  // namespace
}  // namespace bw
