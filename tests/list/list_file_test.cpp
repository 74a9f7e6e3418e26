#include "list/list_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/image_folder.h"
#include "support/text.h"

namespace bw {
namespace {

using test::Header;
using test::ImageFolder;
using test::ReadText;

constexpr std::string_view kMark = "\xEF\xBB\xBF";

FileResult<ListLoadResult> LoadListText(const ImageFolder& folder, std::string_view text,
                                        GameList& list) {
    return LoadListFile(folder.Write("list.fcl", text), folder.Path(), list);
}

// The one entry of a list text with these values.
GameEntry LoadOne(const ImageFolder& folder, const std::string& path,
                  const std::string& relativePath) {
    GameList list;
    LoadListText(
        folder,
        "[history]\r\ncount=1\r\n00000_path=" + path + "\r\n00000_path_relative=" + relativePath,
        list);
    return list.at(0);
}

GameEntry Game(std::u16string path, std::u16string name, std::u16string remark, bool checked) {
    GameEntry entry;
    entry.path = std::move(path);
    entry.name = std::move(name);
    entry.remark = std::move(remark);
    entry.checked = checked;
    return entry;
}

TEST(ListFile, TextOfAListWithOneGame) {
    const ImageFolder folder;
    const auto file = folder / "out.fcl";
    ASSERT_TRUE(SaveListFile(file, {Game(u"/games/roms/Game.nes", u"Game", u"", true)}, "/games"));
    EXPECT_EQ(ReadText(file), std::string(kMark) +
                                  "[history]\r\n"
                                  "00000_check=1\r\n"
                                  "00000_name=Game\r\n"
                                  "00000_path=/games/roms/Game.nes\r\n"
                                  "00000_path_relative=roms/Game.nes\r\n"
                                  "00000_remark=\r\n"
                                  "count=1");
    ASSERT_TRUE(SaveListFile(file, {}, "/games"));
    EXPECT_EQ(ReadText(file), std::string(kMark) + "[history]\r\ncount=0");
}

TEST(ListFile, SavingMakesPathsAbsoluteAndRelative) {
    IniFile text;
    text.SetString(u"history", u"00007_name", u"of an older list");
    text.SetInt(u"list_view", u"list_view_col_00000_width", 80);
    StoreListEntries({Game(u"own/a.nes", u"", u"", false), Game(u"/else/b.nes", u"", u"", false)},
                     "/base", text);
    EXPECT_EQ(text.GetString(u"history", u"00000_path"), u"/base/own/a.nes");
    EXPECT_EQ(text.GetString(u"history", u"00000_path_relative"), u"own/a.nes");
    EXPECT_EQ(text.GetString(u"history", u"00001_path_relative"), u"../else/b.nes");
    EXPECT_EQ(text.GetString(u"history", u"00007_name"), u"");
    EXPECT_EQ(text.GetInt(u"list_view", u"list_view_col_00000_width", 0), 80u);
}

TEST(ListFile, ValuesComeBackAsTheyWere) {
    const ImageFolder folder;
    const std::u16string path = PathText(folder.Write("a=b.nes", Header({2, 1})));
    GameList list{Game(path, u"a=b=", u"[x]", true),
                  Game(path, u"\"游戏\" \U0001F3AE", u" # ", false)};
    list.push_back(Game(path, u"one\r\ntwo\nthree\rfour\n", u"\r\n[other]\r\ncount=0", false));
    ASSERT_TRUE(SaveListFile(folder / "x.fcl", list, folder.Path()));
    GameList loaded;
    ASSERT_TRUE(LoadListFile(folder / "x.fcl", folder.Path(), loaded));
    ASSERT_EQ(loaded.size(), 3u);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(loaded[i].path, path);
        EXPECT_EQ(loaded[i].name, list[i].name);
        EXPECT_EQ(loaded[i].remark, list[i].remark);
        EXPECT_EQ(loaded[i].checked, list[i].checked);
        EXPECT_TRUE(loaded[i].HasValidHeader() && loaded[i].coolboySupported);
    }
    // The format has no line breaks; a forged section stays a remark.
    EXPECT_EQ(loaded[2].name, u"one two three four ");
    EXPECT_EQ(loaded[2].remark, u" [other] count=0");

    // Loading appends, and looks for no duplicates.
    const auto again = LoadListFile(folder / "x.fcl", folder.Path(), loaded);
    EXPECT_EQ(again->added, 3u);
    EXPECT_EQ(loaded.size(), 6u);
}

TEST(ListFile, WhichPathNamesTheImage) {
    const ImageFolder folder;
    const std::string moved = folder.Write("roms/moved.nes", Header({1})).string();
    const std::string old = folder.Write("old/old.nes", Header({2})).string();
    const auto text = [](const std::string& path) { return ToWide(path); };

    EXPECT_EQ(LoadOne(folder, old, "roms/moved.nes").path, text(moved)) << "relative wins";
    EXPECT_EQ(LoadOne(folder, old, "roms/gone.nes").path, text(old)) << "unless it is gone";
    EXPECT_EQ(LoadOne(folder, old, "roms").path, text(old)) << "or is no file";
    EXPECT_EQ(LoadOne(folder, old, "").path, text(old));
    EXPECT_EQ(LoadOne(folder, "old/old.nes", "").path, text(old)) << "made absolute";
    EXPECT_EQ(LoadOne(folder, "C:\\x\\moved.nes", ".\\roms\\moved.nes").path, text(moved))
        << "a list of another platform";
    EXPECT_EQ(LoadOne(folder, "old\\old.nes", "").path, text(old));
    const std::string odd = folder.Write("roms\\moved.nes", Header({3})).string();
    EXPECT_EQ(LoadOne(folder, old, "roms\\moved.nes").path, text(odd)) << "as written comes first";
}

TEST(ListFile, ASecondBaseServesRelativePathsOnly) {
    const ImageFolder program;
    const ImageFolder travelling;
    const auto own = travelling.Write("a.nes", Header({1}));
    const auto file = travelling.Write("list.fcl",
                                       "[history]\r\ncount=2\r\n00000_path=/gone/a.nes\r\n"
                                       "00000_path_relative=.\\a.nes\r\n00001_path=a.nes");
    GameList list;
    ASSERT_TRUE(LoadListFile(file, program.Path(), list, travelling.Path()));
    EXPECT_EQ(list.at(0).path, PathText(own));
    EXPECT_EQ(list.at(1).path, PathText(program / "a.nes"));

    const auto first = program.Write("a.nes", Header({1}));
    ASSERT_TRUE(LoadListFile(file, program.Path(), list, travelling.Path()));
    EXPECT_EQ(list.at(2).path, PathText(first)) << "the first base comes first";
}

TEST(ListFile, MissingImagesStayInTheList) {
    const ImageFolder folder;
    const GameEntry gone = LoadOne(folder, "/no such drive/a.nes", "a.nes");
    EXPECT_EQ(gone.path, u"/no such drive/a.nes");
    EXPECT_FALSE(gone.headerRead || gone.HasValidHeader());

    // A path of another platform survives loading and saving.
    for (const char* path :
         {"D:\\roms\\Game.nes", "D:/roms/Game.nes", "\\\\server\\roms\\Game.nes"}) {
        const GameEntry foreign = LoadOne(folder, path, "roms\\Game.nes");
        EXPECT_EQ(foreign.path, ToWide(path));
        IniFile text;
        StoreListEntries({foreign}, folder.Path(), text);
        EXPECT_EQ(text.GetString(u"history", u"00000_path"), ToWide(path));
    }
}

TEST(ListFile, WhatIsNoListAddsNothing) {
    const ImageFolder folder;
    GameList list(2);
    EXPECT_FALSE(LoadListFile(folder / "missing.fcl", folder.Path(), list));
    EXPECT_FALSE(LoadListFile(folder.Path(), folder.Path(), list));
    for (const char* text : {"", "[history]", "[other]\r\ncount=1", "count=1",
                             "[history]\r\n#count=1", "NES\x1A\x02\x01", "[history]\ncount=1"}) {
        EXPECT_FALSE(LoadListText(folder, text, list)) << text;
    }
    EXPECT_EQ(LoadListText(folder, "[history]\r\ncount=0", list)->added, 0u);
    EXPECT_EQ(LoadListText(folder, "[history]\r\ncount=zero", list)->added, 0u);
    EXPECT_EQ(list.size(), 2u);
}

TEST(ListFile, Utf16FromAnEditor) {
    const ImageFolder folder;
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : std::u16string_view(u"[history]\r\ncount=1\r\n00000_check=7\r\n"
                                                   u"00000_name=游戏")) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    GameList list;
    ASSERT_TRUE(LoadListText(folder, bytes, list));
    EXPECT_EQ(list.at(0).name, u"游戏");
    EXPECT_TRUE(list.at(0).checked);
}

struct LimitCase {
    size_t before;
    const char* count;
    size_t added;
    bool overLimit;
};

TEST(ListFile, TheListEndsAtItsLimit) {
    const LimitCase cases[] = {
        {0, "3", 3, false},
        {0, "20000", 20000, false},
        {0, "25000", 20000, true},
        {1, "20000", 19999, true},
        {20000, "0", 0, false},
        {20000, "1", 0, true},
        {20001, "1", 0, true},
        {5, "4294967295", 19995, true},
        {5, "99999999999999999999", 19995, true},
    };
    for (const LimitCase& c : cases) {
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
        if (c.added > 2) {
            EXPECT_EQ(list[c.before + 1].name, u"second");
            EXPECT_EQ(list[c.before + 2].path, u"");
            EXPECT_FALSE(list[c.before + 2].headerRead);
        }
    }
}

}  // namespace
}  // namespace bw
