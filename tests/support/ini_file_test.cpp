#include "support/ini_file.h"

#include <gtest/gtest.h>

#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::string_literals;

IniFile Parsed(const std::string& bytes) {
    IniFile file;
    file.LoadFromMemory({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
    return file;
}

std::string Utf16(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

TEST(IniFile, Parsing) {
    const struct {
        const char* about;
        std::string input, kept;
    } cases[] = {
        {"empty", "", ""},
        {"first = separates", "[s]\r\nk=a=b\r\n=v\r\n", "[s]\r\n=v\r\nk=a=b"},
        {"no = at all", "[s]\r\nkey", "[s]\r\nkey="},
        {"blanks belong to key and value", "[ s ]\r\n k = v ", "[ s ]\r\n k = v "},
        {"order is that of the units", "[b]\r\nB=1\r\na=2\r\nA=3\r\n[a]\r\n",
         "[a]\r\n[b]\r\nA=3\r\nB=1\r\na=2"},
        {"the first of equal keys stays", "[s]\r\nk=1\r\nk=2\r\n[t]\r\n[s]\r\nk=3\r\nm=4",
         "[s]\r\nk=1\r\nm=4\r\n[t]"},
        {"entries outside sections", "k=1\r\n[s]\r\nm=2\r\n[]\r\nn=3", "[s]\r\nm=2"},
        {"comments", "[s]\r\n#k=1\r\nk#=2\r\n#", "[s]\r\nk#=2"},
        {"only both characters end a line", "[s]\r\nk=a\nb\rc\r\r\nm=1",
         "[s]\r\nk=a\nb\rc\r\r\nm=1"},
        {"lone brackets", "[\r\n]\r\n[s]\r\n[k=]x\r\n[", "[s]\r\n[=\r\n[k=]x"},
        {"UTF-8 with its mark", "\xEF\xBB\xBF[\xE9\xAD\x82]\r\nk=\xC3\xA9",
         "[\xE9\xAD\x82]\r\nk=\xC3\xA9"},
        {"a mark alone", "\xEF\xBB\xBF", ""},
        {"no UTF-8", "[s]\r\nk=\xB2\xBB", "[s]\r\nk=\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"UTF-16", Utf16(u"[s]\r\nk=\u9B42"), "[s]\r\nk=\xE9\xAD\x82"},
        {"UTF-16 with half a unit", Utf16(u"[s]\r\nk=1") + "x", "[s]\r\nk=1"},
        {"the UTF-16 mark alone", "\xFF\xFE", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Parsed(c.input).ToText(), c.kept) << c.about;
        EXPECT_EQ(Parsed(c.kept).ToText(), c.kept) << c.about;
    }
}

TEST(IniFile, NumbersAreReadAsTheyStart) {
    const std::pair<const char16_t*, uint32_t> cases[] = {
        {u"  42 games", 42},
        {u"\t+7", 7},
        {u"007", 7},
        {u"", 0},
        {u"0x10", 0},
        {u"- 1", 0},
        {u"-1", 4294967295u},
        {u"4294967295", 4294967295u},
        {u"4294967296", 4294967295u},
        {u"99999999999999999999999", 4294967295u}};
    IniFile file;
    for (const auto& [text, number] : cases) {
        file.SetString(u"s", u"k", text);
        EXPECT_EQ(file.GetInt(u"s", u"k", 5), number) << ToUtf8(text);
    }
    EXPECT_EQ(file.GetInt(u"s", u"missing", 5), 5u);
    file.SetInt(u"s", u"k", 4294967295u);
    EXPECT_EQ(file.GetString(u"s", u"k"), u"4294967295");
}

TEST(IniFile, MissingValuesAndRemoval) {
    IniFile file = Parsed("[s]\r\nk=\r\nm=2\r\n[t]\r\nn=3");
    EXPECT_EQ(file.GetString(u"s", u"k", u"d"), u"");
    EXPECT_EQ(file.GetString(u"s", u"missing", u"d"), u"d");
    EXPECT_EQ(file.GetString(u"S", u"k", u"d"), u"d") << "case counts";
    EXPECT_FALSE(file.Remove(u"missing") || file.Remove(u"missing", u"k") ||
                 file.Remove(u"s", u"n"));
    EXPECT_TRUE(file.Remove(u"s", u"k"));
    EXPECT_EQ(file.ToText(), "[s]\r\nm=2\r\n[t]\r\nn=3");
    EXPECT_TRUE(file.Remove(u"s"));
    EXPECT_EQ(file.ToText(), "[t]\r\nn=3");
}

TEST(IniFile, FileHasTheMarkAndLoadsAgain) {
    const TemporaryFolder folder;
    IniFile file;
    file.SetString(u"s", u"k", u"\u9B42=1");
    file.SetInt(u"s", u"m", 1);
    ASSERT_TRUE(file.Save(folder / "list.fcl"));
    EXPECT_EQ(test::ReadText(folder / "list.fcl"), "\xEF\xBB\xBF" + file.ToText());
    // Texts that are loaded later, or not at all, leave what is there.
    IniFile again = Parsed("[s]\r\nk=mine");
    EXPECT_TRUE(again.Load(folder / "list.fcl"));
    EXPECT_FALSE(again.Load(folder / "missing.fcl"));
    EXPECT_EQ(again.ToText(), "[s]\r\nk=mine\r\nm=1");
    EXPECT_FALSE(file.Save(folder / "missing/list.fcl"));
}

}  // namespace
}  // namespace bw
