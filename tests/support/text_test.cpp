#include "support/text.h"

#include <gtest/gtest.h>

namespace bw {
namespace {

using namespace std::string_literals;

using Conversion = std::pair<std::string, std::u16string>;

TEST(Text, WellFormedTextConvertsBothWays) {
    const Conversion cases[] = {
        {"", u""},
        {"12345678 and more", u"12345678 and more"},
        {"a\0b"s, u"a\0b"s},
        {"12345678\xC2\x80", u"12345678\u0080"},
        {"\xC2\x80\xDF\xBF", u"\u0080\u07FF"},  // the bounds of each length
        {"\xE0\xA0\x80\xEF\xBF\xBF", u"\u0800\uFFFF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
        {"\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"}};  // beside the surrogates
    for (const auto& [utf8, wide] : cases) {
        EXPECT_EQ(ToWide(utf8), wide);
        EXPECT_EQ(ToUtf8(wide), utf8);
    }
}

TEST(Text, MalformedBytesBecomeOneReplacementEach) {
    const Conversion cases[] = {
        {"a\x80z", u"a\uFFFDz"},                            // a lone trail byte
        {"a\xC3", u"a\uFFFD"},                              // a lead byte at the end
        {"\xF0\x9F\x8E", u"\uFFFD\uFFFD\uFFFD"},            // three of four bytes at the end
        {"\xE4\xBDz", u"\uFFFD\uFFFDz"},                    // a sequence broken off by ASCII
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // too long a form of a slash
        {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},            // three bytes where two do
        {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // four bytes where three do
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // half a surrogate pair
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last point
        {"\xFF\xFE", u"\uFFFD\uFFFD"}};                     // no byte of UTF-8
    for (const auto& [utf8, wide] : cases)
        EXPECT_EQ(ToWide(utf8), wide);
}

TEST(Text, LoneSurrogatesBecomeReplacements) {
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(ToUtf8(std::u16string{u'a', 0xD83C}), "a" + replacement);
    EXPECT_EQ(ToUtf8(std::u16string_view(u"\U0001F3AE", 1)), replacement) << "cut in the pair";
    EXPECT_EQ(ToUtf8(std::u16string{0xDFAE, u'z'}), replacement + "z");
    EXPECT_EQ(ToUtf8(std::u16string{0xD83C, 0xD83C, 0xDFAE}), replacement + "\xF0\x9F\x8E\xAE");
}

TEST(Text, SingleBytesAndCapitals) {
    EXPECT_EQ(ToSingleByte(u"A\u00E9\u00FF\u0100\u9B42\U0001F3AE"), "A\xE9\xFF????");
    EXPECT_TRUE(EqualIgnoringAsciiCase(u"Game.FCL", u"gAME.fcl"));
    EXPECT_FALSE(EqualIgnoringAsciiCase(u"\u00E9", u"\u00C9"));
    EXPECT_FALSE(EqualIgnoringAsciiCase(u"fcl", u"fclx"));
    // The neighbours of the letters differ from their partners by the same bit.
    EXPECT_FALSE(EqualIgnoringAsciiCase(u"[`{", u"{@["));
}

TEST(Text, FoldingJoinsLettersOfAllScripts) {
    EXPECT_EQ(FoldCase(u"Game \u00C9\u0130\u0410\u03A3\u03C2\uFF21\u1E9E \u6E38[@"),
              u"game \u00E9i\u0430\u03C3\u03C3\uFF41\u00DF \u6E38[@");
    // Folding twice changes nothing more, and nothing leaves or enters the surrogates.
    for (uint32_t i = 0; i < 0x10000; ++i) {
        const auto unit = static_cast<char16_t>(i);
        const char16_t folded = FoldCase(unit);
        ASSERT_EQ(FoldCase(folded), folded) << i;
        ASSERT_TRUE(folded == unit || (folded & 0xF800) != 0xD800) << i;
    }
}

TEST(Text, OrderIsThatOfTheUtf8Bytes) {
    const std::u16string_view inOrder[] = {u"",       u"A",          u"AB",         u"a",
                                           u"\u00E9", u"\uD7FF",     u"\uE000",     u"\uFF21",
                                           u"\uFFFD", u"\U00010000", u"\U0001F3AE", u"\U0010FFFF"};
    for (const auto a : inOrder) {
        for (const auto b : inOrder) {
            EXPECT_EQ(CompareAsUtf8(a, b), ToUtf8(a).compare(ToUtf8(b)) <=> 0) << ToUtf8(a);
        }
    }
}

TEST(Text, FormatsAsThePlaceholdersOfTheMessagesAsk) {
    EXPECT_EQ(FormatText(u"%d.%s Mapper%d", 7, u"\u9B42"s, 74), u"7.\u9B42 Mapper74");
    EXPECT_EQ(FormatText(u"%0.3f%% %0.3lfMB", 12.5, 1.0625), u"12.500% 1.062MB");
    EXPECT_EQ(FormatText(u"%0.5d_path", size_t{42}), u"00042_path");
    EXPECT_EQ(FormatText(u"%d", uint64_t{1} << 33), u"8589934592");
    EXPECT_EQ(FormatText(u"%s", std::u16string_view(u"%d%n")), u"%d%n");
    EXPECT_EQ(FormatText(u"no placeholder"), u"no placeholder");
    EXPECT_EQ(FormatText(u"%d of %d", 1), u"%d of %d") << "what doesn't fit comes back unfilled";
    EXPECT_EQ(FormatText(u"50%"), u"50%");
}

}  // namespace
}  // namespace bw
