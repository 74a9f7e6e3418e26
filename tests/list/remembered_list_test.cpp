#include "list/remembered_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/image_folder.h"

namespace bw {
namespace {

std::span<const uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

TEST(RememberedList, ComesBackAsItWas) {
    const test::ImageFolder folder;
    folder.Write("a=b.nes", test::Header({1}));
    GameList games(2);
    games[0].path = u"a=b.nes";
    games[0].name = u"a=b";
    games[0].checked = true;
    games[1].path = u"/gone/游戏.nes";
    games[1].remark = u"游戏";
    ColumnWidths widths{};
    widths[0] = 64;
    widths[11] = 256;
    const std::string text = StoreRememberedList(games, widths, folder.Path());
    EXPECT_TRUE(text.starts_with("[history]\r\n00000_check=1\r\n")) << text;
    EXPECT_TRUE(text.ends_with("\r\nlist_view_col_00010_width=0\r\nlist_view_col_00011_width=256"));

    const RememberedList loaded = LoadRememberedList(Bytes(text), folder.Path());
    ASSERT_EQ(loaded.games.size(), 2u);
    EXPECT_EQ(loaded.games[0].name, u"a=b");
    EXPECT_TRUE(loaded.games[0].checked && loaded.games[0].HasValidHeader());
    EXPECT_EQ(loaded.games[1].path, u"/gone/游戏.nes");
    EXPECT_EQ(loaded.games[1].remark, u"游戏");
    EXPECT_EQ(loaded.widths, widths);

    const RememberedList empty = LoadRememberedList(Bytes(StoreRememberedList({}, {}, "/")), "/");
    EXPECT_TRUE(empty.games.empty() && !empty.load.overLimit);
}

TEST(RememberedList, WidthsThatMakeNoSenseStayOut) {
    const RememberedList loaded = LoadRememberedList(
        Bytes("[list_view]\r\nlist_view_col_00000_width=-1\r\nlist_view_col_00001_width=wide\r\n"
              "list_view_col_00002_width=4294967295\r\nlist_view_col_00003_width=2147483647\r\n"
              "list_view_col_00004_width=80\r\nlist_view_col_00012_width=9"),
        "/");
    EXPECT_THAT(loaded.widths, testing::ElementsAre(0, 0, 0, 8192, 80, 0, 0, 0, 0, 0, 0, 0));
}

TEST(RememberedList, TakesWhatTheListHoldsOfALongText) {
    std::string text = "[history]\r\ncount=25000\r\n";
    for (int n = 19990; n < 25000; ++n)
        text += std::to_string(n) + "_name=" + std::to_string(n) + "\r\n";
    text += "100001_name=no key\r\n[other]\r\n";
    const RememberedList loaded = LoadRememberedList(Bytes(text), "/");
    ASSERT_EQ(loaded.games.size(), kListLimit);
    EXPECT_TRUE(loaded.load.overLimit);
    EXPECT_EQ(loaded.games.front().name, u"");
    EXPECT_EQ(loaded.games.back().name, u"19999");
    EXPECT_TRUE(LoadRememberedList(Bytes("\xFF\xFE\x00["), "/").games.empty());
}

}  // namespace
}  // namespace bw
