#include "builder/tables/generated_text.h"

#include <gtest/gtest.h>

#include "support/numbers.h"

namespace bw {
namespace {

std::string With(auto&& append) {
    std::string text = "x";
    append(text);
    return text;
}

TEST(GeneratedText, Numbers) {
    EXPECT_EQ(With([](auto& t) { AppendHex(t, 0, 2); }), "x00");
    EXPECT_EQ(With([](auto& t) { AppendHex(t, 0xAB, 4); }), "x00AB");
    EXPECT_EQ(With([](auto& t) { AppendHex(t, 0x12345, 4); }), "x12345");
    EXPECT_EQ(With([](auto& t) { AppendHex(t, 0xFFFFFFFF, 8); }), "xFFFFFFFF");
    EXPECT_EQ(With([](auto& t) { AppendDecimal(t, 0); }), "x0");
    EXPECT_EQ(With([](auto& t) { AppendDecimal(t, 7, 3); }), "x007");
    EXPECT_EQ(With([](auto& t) { AppendDecimal(t, 1023, 3); }), "x1023");
    EXPECT_EQ(With([](auto& t) { AppendDecimal(t, 4294967295u, 3); }), "x4294967295");
    EXPECT_EQ(With([](auto& t) { AppendBinary(t, 0x805, 12); }), "x100000000101");
    EXPECT_EQ(With([](auto& t) { AppendBinary(t, 0x1F7, 8); }), "x11110111");
}

TEST(GeneratedText, CountedStringPlacesTheSameBytesWhateverTheyAre) {
    EXPECT_EQ(With([](auto& t) { AppendCountedString(t, "SUPER GAME; $1%"); }),
              "x .STR \"SUPER GAME; $1%\"");
    EXPECT_EQ(With([](auto& t) { AppendCountedString(t, ""); }), "x .STR \"\"");
    EXPECT_EQ(With([](auto& t) { AppendCountedString(t, "\xC2\x80"); }), "x .STR \"\xC2\x80\"");
    EXPECT_EQ(With([](auto& t) { AppendCountedString(t, "A\"B"); }), "x .DB $03,$41,$22,$42");
    EXPECT_EQ(With([](auto& t) { AppendCountedString(t, "\r\n\xFF"); }), "x .DB $03,$0D,$0A,$FF");
}

TEST(GeneratedText, CountedStringEndsWhereItsLengthByteDoes) {
    std::string longName(300, 'A');
    EXPECT_EQ(With([&](auto& t) { AppendCountedString(t, longName); }),
              "x .STR \"" + std::string(255, 'A') + "\"");
    longName[255] = '"';  // cut away, so no reason for the other form
    EXPECT_EQ(With([&](auto& t) { AppendCountedString(t, longName); }),
              "x .STR \"" + std::string(255, 'A') + "\"");
    longName[254] = '"';
    const std::string bytes = With([&](auto& t) { AppendCountedString(t, longName); });
    EXPECT_TRUE(bytes.starts_with("x .DB $FF,$41,")) << bytes;
    EXPECT_TRUE(bytes.ends_with(",$41,$22")) << bytes;
}

TEST(GeneratedText, CommentCannotEndItsLine) {
    EXPECT_EQ(With([](auto& t) { AppendComment(t, "a\r\n .DB 1\t\"\xE9\xAD\x82"); }),
              "xa?? .DB 1?\"\xE9\xAD\x82");
    std::string line = "label\r\n";
    AppendComment(line, "\n");
    EXPECT_EQ(line, "label\r\n?") << "what stood there before is kept";
}

}  // namespace
}  // namespace bw
