#include "list/game_list.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "list/console_name.h"
#include "list/list_columns.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;

GameEntry Named(const char16_t* name, bool checked = true) {
    GameEntry entry;
    entry.name = name;
    entry.checked = checked;
    return entry;
}

TEST(DisplayName, FollowsTheSettingsAndTheBuildAlwaysHasThePoint) {
    const struct {
        NumberSettings settings;
        const char16_t* preview;
        const char16_t* build;
    } cases[] = {{{true, true, true}, u"005.NAME", u"005.NAME"},
                 {{true, false, true}, u"005NAME", u"005.NAME"},
                 {{true, true, false}, u"5.NAME", u"5.NAME"},
                 {{true, false, false}, u"5NAME", u"5.NAME"},
                 {{false, true, true}, u".NAME", u".NAME"},
                 {{false, false, true}, u"NAME", u"NAME"}};
    for (const auto& [settings, preview, build] : cases) {
        const GameEntry entry = Named(u"NAME");
        EXPECT_EQ(DisplayName(entry, 5, 100, settings, NameRules::kDesignerAndExport), preview);
        EXPECT_EQ(DisplayName(entry, 5, 100, settings, NameRules::kRomBuild), build);
    }
}

TEST(DisplayNames, NumberTheCheckedEntriesWithoutGaps) {
    GameList list{Named(u"a"), Named(u"b", false), Named(u"c")};
    const auto names = [&list] {
        return DisplayNames(list, {true, true, true}, NameRules::kRomBuild);
    };
    EXPECT_THAT(names(), ElementsAre(u"1.a", u"2.c"));
    // The length of all ordinals is that of the last.
    list.insert(list.end(), 7, Named(u"x"));
    EXPECT_EQ(names().back(), u"9.x");
    list.push_back(Named(u"%s"));
    EXPECT_EQ(names().front(), u"01.a");
    EXPECT_EQ(names().back(), u"10.%s");
    EXPECT_EQ(MulticartTitle(CountChecked(list)), u"10 IN 1");
    list = {Named(u"b", false)};
    EXPECT_TRUE(names().empty());
}

TEST(ConsoleLine, IsWhatABuildPutsIntoTheMenu) {
    const GameList list{Named(u"a"), Named(u"b", false), Named(u"c")};
    EXPECT_THAT(Ordinals(list), ElementsAre(1, 2, 2));
    const auto line = [](const char16_t* name, const ConsoleMenu& menu = {}) {
        const ConsoleLine made = ConsoleLineOf(Named(name), 7, 12, menu);
        return made.text + (made.cut ? " cut" : "") + (made.unknown ? " unknown" : "");
    };
    EXPECT_EQ(line(u"Pok\u00E9mon \u5168\u96C6 z{"), "POK?MON ?? Z{ unknown");
    EXPECT_EQ(line(u"\u0080\u0081"), "\x80? unknown");
    EXPECT_EQ(line(u"abcdefghijklmnopqrstuvwxyz"), "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    EXPECT_EQ(line(u"abcdefghijklmnopqrstuvwxyz\u00E9"), "ABCDEFGHIJKLMNOPQRSTUVWXYZ cut");
    EXPECT_EQ(line(u"abcdefghij", {{true, false, true}, 20}), "07.ABCDEFGHI cut");
    EXPECT_EQ(line(u"ab", {{}, 99}), "A cut");  // a column is always left
}

TEST(ListColumns, CellsAndTitles) {
    GameEntry entry;
    entry.name = u"Name";
    entry.remark = u"Remark";
    entry.path = u"/p.nes";
    entry.header.bytes = {'N', 'E', 'S', 0x1A, 255, 8, 0x47, 0x08, 0, 0x21};
    entry.coolgirlSupported = true;
    std::string line;
    std::string titles;
    for (size_t i = 0; i < kListColumns; ++i) {
        const auto column = static_cast<ListColumn>(i);
        line += ToUtf8(CellText(entry, 41, column, Language::kEnglish)) + "|";
        titles += ToUtf8(LoadText(TraitsOf(column).titleId, Language::kEnglish)) + "|";
    }
    EXPECT_EQ(line, "42|Name|511 (8176KB)|520 (4160KB)|4|V|Yes|Yes|NO|YES|Remark|/p.nes||");
    EXPECT_EQ(titles,
              "Number|File name|PRG ROM|CHR ROM|Mapper #|Mirroring|Battery-backed|Trained|COOLBOY|"
              "COOLGIRL|Remark|File path|On the console|");
    auto order = kColumnOrder;
    std::ranges::sort(order);
    EXPECT_EQ(std::ranges::adjacent_find(order), order.end()) << "a column twice, another not";
    EXPECT_EQ(CellText({}, 0, ListColumn::kPrg, Language::kEnglish), u" 0 (000KB)");
    entry.name.assign(300, u'x');
    EXPECT_EQ(CellText(entry, 0, ListColumn::kName, Language::kEnglish).size(), 260u);
}

}  // namespace
}  // namespace bw
