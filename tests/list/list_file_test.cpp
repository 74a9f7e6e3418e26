#include "list/list_file.h"

#include <gmock/gmock.h>

#include "common/image_folder.h"
#include "list/remembered_list.h"
#include "support/text.h"

namespace bw {
namespace {

using test::Header;
using test::ImageFolder;

class ListFile : public testing::Test {
  protected:
    FileResult<ListLoadResult> LoadText(std::string_view text) {
        return LoadListFile(folder_.Write("list.fcl", text), folder_.Path(), list_);
    }
    // The one entry of a list text with these values.
    GameEntry LoadOne(const std::string& path, const std::string& relativePath) {
        list_.clear();
        LoadText("[history]\r\ncount=1\r\n00000_check=7\r\n00000_path=" + path +
                 "\r\n00000_path_relative=" + relativePath);
        return list_.at(0);
    }

    ImageFolder folder_;
    GameList list_;
};

GameEntry Game(std::u16string path, std::u16string name, std::u16string remark, bool checked) {
    GameEntry entry;
    entry.path = std::move(path);
    entry.name = std::move(name);
    entry.remark = std::move(remark);
    entry.checked = checked;
    return entry;
}

TEST_F(ListFile, SavingMakesPathsAbsoluteAndRelative) {
    IniFile text;
    text.SetString(u"history", u"00007_name", u"of an older list");
    text.SetInt(u"list_view", u"list_view_col_00000_width", 80);
    const auto other = std::filesystem::absolute("/else/b.nes");
    StoreListEntries(
        {Game(u"own/a.nes", u"A", u"", true), Game(PathText(other), u"", u"best", false)},
        std::filesystem::absolute("/base"), text);
    // In the system's own form.
    const auto own = [](std::filesystem::path path) {
        return ToUtf8(PathText(path.make_preferred()));
    };
    EXPECT_EQ(text.ToText(),
              "[history]\r\n00000_check=1\r\n00000_name=A\r\n00000_path=" +
                  own(std::filesystem::absolute("/base/own/a.nes")) +
                  "\r\n00000_path_relative=" + own("own/a.nes") +
                  "\r\n00000_remark=\r\n00001_check=0\r\n00001_name=\r\n00001_path=" + own(other) +
                  "\r\n00001_path_relative=" + own("../else/b.nes") +
                  "\r\n00001_remark=best\r\ncount=2\r\n"
                  "[list_view]\r\nlist_view_col_00000_width=80");
}

TEST_F(ListFile, ValuesComeBackAsTheyWere) {
    const std::u16string path = PathText(folder_.Write("a=b.nes", Header({2, 1})));
    GameList saved{Game(path, u"a=b=", u"[x]", true),
                   Game(path, u"\"游戏\" \U0001F3AE", u" # ", false),
                   Game(path, u"one\r\ntwo\nthree\rfour\n", u"\r\n[other]\r\ncount=0", false)};
    ASSERT_TRUE(SaveListFile(folder_ / "x.fcl", saved, folder_.Path()));
    // The format has no line breaks; a forged section stays a remark.
    saved[2].name = u"one two three four ";
    saved[2].remark = u" [other] count=0";
    // Loading appends, and looks for no duplicates.
    for (int times = 0; times < 2; ++times)
        EXPECT_EQ(LoadListFile(folder_ / "x.fcl", folder_.Path(), list_)->added, 3u);
    ASSERT_EQ(list_.size(), 6u);
    for (size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(list_[i].path, path);
        EXPECT_EQ(list_[i].name, saved[i % 3].name);
        EXPECT_EQ(list_[i].remark, saved[i % 3].remark);
        EXPECT_EQ(list_[i].checked, i % 3 == 0);
        EXPECT_TRUE(list_[i].HasValidHeader() && list_[i].coolboySupported);
    }
}

TEST_F(ListFile, WhichPathNamesTheImage) {
    const std::string moved = folder_.Write("roms/moved.nes", Header({1})).string();
    const std::string old = folder_.Write("old/old.nes", Header({2})).string();
    const auto found = [&](const std::string& path, const std::string& relativePath) {
        return ToUtf8(LoadOne(path, relativePath).path);
    };
    EXPECT_EQ(found(old, "roms/moved.nes"), moved) << "relative wins";
    EXPECT_EQ(found(old, "roms/gone.nes"), old) << "unless it is gone";
    EXPECT_EQ(found(old, "roms"), old) << "or is no file";
    EXPECT_EQ(found("old/old.nes", ""), old) << "made absolute";
    EXPECT_EQ(found("C:\\x\\moved.nes", ".\\roms\\moved.nes"), moved) << "of another platform";
    EXPECT_EQ(found("old\\old.nes", ""), old);
    const std::string odd = folder_.Write("roms\\moved.nes", Header({3})).string();
    EXPECT_EQ(found(old, "roms\\moved.nes"), odd) << "as written comes first";

    // A second base serves relative paths only.
    const ImageFolder program;
    const auto file = folder_.Write("old/list.fcl",
                                    "[history]\r\ncount=2\r\n00000_path=/gone/old.nes\r\n"
                                    "00000_path_relative=.\\old.nes\r\n00001_path=old.nes");
    LoadListFile(file, program.Path(), list_, folder_ / "old");
    const auto own = program.Write("old.nes", Header({1}));
    LoadListFile(file, program.Path(), list_, folder_ / "old");
    ASSERT_EQ(list_.size(), 5u);
    EXPECT_EQ(list_[1].path, ToWide(old));
    EXPECT_EQ(list_[2].path, PathText(own));
    EXPECT_EQ(list_[3].path, PathText(own)) << "the first base comes first";
}

TEST_F(ListFile, MissingImagesStayInTheList) {
    const GameEntry gone = LoadOne("/no such drive/a.nes", "a.nes");
    EXPECT_EQ(gone.path, u"/no such drive/a.nes");
    EXPECT_FALSE(gone.headerRead || gone.HasValidHeader() || !gone.checked);

    // A path of another platform survives loading and saving.
    for (const std::u16string path :
         {u"D:\\roms\\Game.nes", u"D:/roms/Game.nes", u"\\\\server\\roms\\Game.nes"}) {
        IniFile text;
        StoreListEntries({LoadOne(ToUtf8(path), "roms\\Game.nes")}, folder_.Path(), text);
        EXPECT_EQ(text.GetString(u"history", u"00000_path"),
                  PathText(TextPath(path).make_preferred()));
    }
}

TEST_F(ListFile, WhatIsNoListAddsNothing) {
    EXPECT_FALSE(LoadListFile(folder_ / "missing.fcl", folder_.Path(), list_));
    EXPECT_FALSE(LoadListFile(folder_.Path(), folder_.Path(), list_));
    for (const char* text : {"", "[history]", "[other]\r\ncount=1", "count=1",
                             "[history]\r\n#count=1", "NES\x1A\x02\x01", "[history]\ncount=1"}) {
        EXPECT_FALSE(LoadText(text)) << text;
    }
    EXPECT_EQ(LoadText("[history]\r\ncount=zero")->added, 0u);
    EXPECT_TRUE(list_.empty());
}

TEST_F(ListFile, TheListEndsAtItsLimit) {
    const struct {
        size_t before;
        const char* count;
        size_t added;
        bool overLimit;
    } cases[] = {
        {0, "20000", 20000, false}, {0, "25000", 20000, true},
        {1, "20000", 19999, true},  {20000, "0", 0, false},
        {20001, "1", 0, true},      {5, "99999999999999999999", 19995, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.count);
        IniFile text;
        text.SetString(u"history", u"count", ToWide(c.count));
        text.SetString(u"history", u"00001_name", u"second");
        GameList list(c.before);
        const ListLoadResult result = AppendListEntries(text, "/", list);
        EXPECT_EQ(result.added, c.added);
        EXPECT_EQ(result.overLimit, c.overLimit);
        ASSERT_EQ(list.size(), c.before + c.added);
        // Announced entries that the text doesn't have come as empty ones.
        if (c.added == 0) continue;
        EXPECT_EQ(list[c.before + 1].name, u"second");
        EXPECT_TRUE(list[c.before + 2].path.empty() && !list[c.before + 2].headerRead);
    }
}

std::span<const uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

TEST(RememberedList, ComesBackAsItWas) {
    const ImageFolder folder;
    folder.Write("a=b.nes", Header({1}));
    const ColumnWidths widths{64, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 256, 9};
    GameList games{Game(u"a=b.nes", u"a=b", u"", true),
                   Game(u"/gone/游戏.nes", u"", u"游戏", false)};
    games[0].size = kInesHeaderSize;
    games[1].size = uint64_t{5} << 32;
    games[1].crcs = DataCrcs{0x1234ABCD, 5};
    const std::string text = StoreRememberedList(games, widths, folder.Path());
    EXPECT_NE(text.find("00001_crc=1234ABCD00000005\r\n"), text.npos);
    EXPECT_TRUE(text.starts_with("[history]\r\n00000_check=1\r\n")) << text;
    EXPECT_TRUE(text.ends_with("\r\nlist_view_col_00011_width=256\r\nlist_view_col_00012_width=9"));

    const RememberedList loaded = LoadRememberedList(Bytes(text), folder.Path());
    ASSERT_EQ(loaded.games.size(), 2u);
    EXPECT_TRUE(loaded.games[0].HasValidHeader());
    EXPECT_EQ(StoreRememberedList(loaded.games, loaded.widths, folder.Path()), text);
}

TEST(RememberedList, SumsThatCantBeTheFilesStayOut) {
    const struct {
        const char* keys;
        bool known;
    } cases[] = {{"00000_crc=0123456789abcdef", true},
                 {"00000_crc=0123456789abcde", false},
                 {"00000_crc=0x23456789abcdef", false},
                 {"00000_crc=0123456789abcde ", false},
                 {"00000_size=17\r\n00000_crc=0123456789abcdef", true},
                 {"00000_size=x\r\n00000_crc=0123456789abcdef", true}};
    for (const auto& c : cases) {
        const std::string text = std::string("[history]\r\ncount=1\r\n") + c.keys;
        EXPECT_EQ(LoadRememberedList(Bytes(text), "/").games[0].crcs.has_value(), c.known) << text;
    }
    GameList games{Game(u"a.nes", u"", u"", false)};
    const ImageFolder folder;
    folder.Write("a.nes", Header({1}));
    games[0].size = 17;  // the file has 16 by now
    games[0].crcs = DataCrcs{};
    const std::string text = StoreRememberedList(games, {}, folder.Path());
    EXPECT_FALSE(LoadRememberedList(Bytes(text), folder.Path()).games[0].crcs);
}

TEST(RememberedList, WidthsThatMakeNoSenseStayOut) {
    const RememberedList loaded = LoadRememberedList(
        Bytes("[list_view]\r\nlist_view_col_00000_width=-1\r\nlist_view_col_00001_width=wide\r\n"
              "list_view_col_00002_width=4294967295\r\nlist_view_col_00003_width=2147483647\r\n"
              "list_view_col_00004_width=80\r\nlist_view_col_00013_width=9"),
        "/");
    EXPECT_THAT(loaded.widths, testing::ElementsAre(0, 0, 0, 8192, 80, 0, 0, 0, 0, 0, 0, 0, 0));
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
