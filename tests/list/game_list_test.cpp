#include "list/game_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bw {
namespace {

using testing::ElementsAre;

GameEntry Named(const char16_t* name, bool checked = true) {
    GameEntry entry;
    entry.name = name;
    entry.checked = checked;
    return entry;
}

struct NameCase {
    bool order, dot, fill;
    const char16_t* preview;
    const char16_t* build;
};

TEST(DisplayName, FollowsTheSettingsAndTheBuildAlwaysHasThePoint) {
    const NameCase cases[] = {
        {true, true, true, u"005.NAME", u"005.NAME"}, {true, false, true, u"005NAME", u"005.NAME"},
        {true, true, false, u"5.NAME", u"5.NAME"},    {true, false, false, u"5NAME", u"5.NAME"},
        {false, true, true, u".NAME", u".NAME"},      {false, true, false, u".NAME", u".NAME"},
        {false, false, true, u"NAME", u"NAME"},       {false, false, false, u"NAME", u"NAME"},
    };
    const GameEntry entry = Named(u"NAME");
    for (const NameCase& c : cases) {
        const NumberSettings settings{c.order, c.dot, c.fill};
        EXPECT_EQ(DisplayName(entry, 5, 100, settings, NameRules::kDesignerAndExport), c.preview);
        EXPECT_EQ(DisplayName(entry, 5, 100, settings, NameRules::kRomBuild), c.build);
    }
}

TEST(DisplayNames, NumberTheCheckedEntriesWithoutGaps) {
    GameList list{Named(u"a"), Named(u"b", false), Named(u"c")};
    const NumberSettings settings{true, true, true};
    EXPECT_THAT(DisplayNames(list, settings, NameRules::kRomBuild), ElementsAre(u"1.a", u"2.c"));
    // The length of all ordinals is that of the last.
    list.insert(list.end(), 7, Named(u"x"));
    EXPECT_EQ(DisplayNames(list, settings, NameRules::kRomBuild).back(), u"9.x");
    list.push_back(Named(u"%s"));
    const auto names = DisplayNames(list, settings, NameRules::kRomBuild);
    EXPECT_EQ(names.front(), u"01.a");
    EXPECT_EQ(names.back(), u"10.%s");
    EXPECT_EQ(CountChecked(list), 10u);
    EXPECT_EQ(MulticartTitle(CountChecked(list)), u"10 IN 1");
    EXPECT_TRUE(DisplayNames({Named(u"b", false)}, settings, NameRules::kRomBuild).empty());
}

}  // namespace
}  // namespace bw
