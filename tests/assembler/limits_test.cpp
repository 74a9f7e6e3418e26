#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "memory_source.h"

// Input that would eat time, memory or the stack, and the limits that stop it.

namespace bw::assembler {
namespace {

using testing::HasSubstr;

std::string Repeat(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string Include(int file) {
    return std::string(" include \"").append(std::to_string(file)).append("\"\n");
}

// A line that makes one numbered name equal to another one.
std::string Link(char letter, int name, int other) {
    std::string line;
    line.append(1, letter).append(std::to_string(name)).append(" = ");
    return line.append(1, letter).append(std::to_string(other)).append("\n");
}

struct Row {
    const char* name;
    std::string text;
    const char* message;
};

class Refused : public testing::TestWithParam<Row> {};

TEST_P(Refused, WithAMessage) {
    const AssemblyResult result = AssembleText(GetParam().text);
    EXPECT_FALSE(result.Ok());
    EXPECT_TRUE(result.rom.empty());
    EXPECT_THAT(Messages(result), HasSubstr(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    Limits, Refused,
    testing::Values(
        Row{"ReserveMuch", " .ds 4000000000\n", "offset:3FFF  > $1FFF!"},
        Row{"FillMuch", " .ds 4000000000,1\n", "Bank overflow, addr: 0000"},
        Row{"CountTooBigForMostNumbers", " .ds $FFFFFFFF*$FFFFFFFF\n", "Value does not fit"},
        Row{"MacroCallsItself", "m macro\n m\n endm\n m\n", "Macro calls nested too deeply! m"},
        Row{"MacroCallsItselfOften", "m macro\n m\n m\n m\n endm\n m\n",
            "Macro calls nested too deeply! m"},
        Row{"MacroGrows", "m macro\n m \\1\\1\\1\\1,\\1\n endm\n m xxxxxxxx\n",
            "Source is too large!"},
        Row{"Conditions", Repeat(" .if 1\n", 300) + Repeat(" .endif\n", 300),
            "Conditions nested too deeply!"},
        Row{"Parentheses", Repeat("v =", 1) + Repeat("(", 100000) + "\n",
            "Expression nested too deeply!"},
        Row{"Signs", Repeat("v =", 1) + Repeat("-", 100000) + "1\n",
            "Expression nested too deeply!"},
        Row{"Functions", Repeat("v =", 1) + Repeat("LOW(", 100000) + "\n",
            "Expression nested too deeply!"},
        Row{"UnknownBanksWithoutEnd", Repeat(" .bank x\n .org 0\n .db 1\n", 50000),
            "Undefined symbol in operand field! x"},
        Row{"ImpossibleBanksWithoutEnd", Repeat(" .bank -1\n .db 1\n", 50000),
            "Bank index out of range!"},
        Row{"ForwardNamesWithoutEnd", Repeat(" .org 0\n .db x,x,x,x,x,x,x,x,x,x\n", 100001),
            "Too many names are used above their definition! x"},
        Row{"NoBanks", " .inesprg 0\n .db 1\n", "The ROM has no banks!"},
        Row{"ZeroBytes", std::string(" .db 1\n \0\0\n", 11), "Unexpected character!"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(Limits, BinaryThatDoesNotFitIsNotRead) {
    MemorySource source;
    source.files["a.asm"] = " .db 1\n incbin \"big\"\n incbin \"big\"\n .db 1\n";
    source.hugeFiles["big"] = std::size_t{1} << 32U;
    EXPECT_THAT(Messages(Assemble("a.asm", source)), HasSubstr("2: Bank overflow, addr: 0001"));
}

TEST(Limits, BinaryMayFillABankExactlyAndNotByOneMore) {
    MemorySource source;
    source.files["a.asm"] = " .db 1\n incbin \"rest\"\n";
    source.files["rest"] = std::string(8191, 'x');
    EXPECT_TRUE(Assemble("a.asm", source).Ok());
    source.files["rest"] += 'x';
    EXPECT_EQ(Messages(Assemble("a.asm", source)),
              "2: Bank overflow, addr: 0001, offset:2000  > $1FFF!\n");
}

TEST(Limits, IncludesNestSixteenDeep) {
    MemorySource source;
    for (int i = 0; i < 30; ++i) {
        source.files[std::to_string(i)] = Include(i + 1);
    }
    const AssemblyResult result = Assemble("0", source);
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].file, "16");
    EXPECT_EQ(result.diagnostics[0].text, "Includes nested too deeply! 17");
}

TEST(Limits, IncludesThatMultiplyEnd) {
    MemorySource source;
    for (int i = 0; i < 16; ++i) {
        source.files[std::to_string(i)] = Repeat(Include(i + 1), 20);
    }
    source.files["16"] = " nop\n";
    EXPECT_THAT(Messages(Assemble("0", source)), HasSubstr("Source is too large!"));
}

// Long chains of names are no reason to fail, in either direction, nor to use up the stack.
TEST(Limits, ChainsOfDefinitionsResolveEitherWay) {
    std::string down = " .db a0\n";
    std::string up = "b0 = end\n";
    constexpr int kLinks = 20000;
    for (int i = 0; i < kLinks; ++i) {
        down += Link('a', i, i + 1);
        up += Link('b', i + 1, i);
    }
    const std::string last = std::to_string(kLinks);
    const AssemblyResult result =
        AssembleText(down + "a" + last + " = 7\n" + up + " .db b" + last + "\nend = 8\n");
    EXPECT_EQ(RomBytes(result, 3), (std::vector<int>{7, 8, 0xFF})) << Messages(result);
}

TEST(Limits, MessagesAreCutButAllErrorsCounted) {
    const AssemblyResult result = AssembleText(Repeat(" .db nowhere\n", 5000) + " bogus\n");
    EXPECT_EQ(result.errorCount, 5001U);
    EXPECT_EQ(result.diagnostics.size(), kDiagnosticLimit);
    EXPECT_EQ(result.diagnostics.back().line, kDiagnosticLimit);
    EXPECT_THAT(FormatDiagnostics(result), testing::EndsWith("\n# 5001 error(s)\n"));
}

// Errors of fix-ups are found last, but the reader goes through the file from the top.
TEST(Limits, MessagesStandInTheOrderOfTheSource) {
    EXPECT_EQ(Messages(AssembleText(" .db late\n bogus\n .dw late,nowhere\nlate = 999\n")),
              "1: Byte value out of range! 999\n"
              "2: Unknown instruction! bogus\n"
              "3: Undefined symbol in operand field! nowhere\n");
}

TEST(Limits, UnreadableMainSourceIsNamed) {
    MemorySource source;
    EXPECT_EQ(FormatDiagnostics(Assemble("gone.asm", source)),
              "gone.asm:0: error: Can not open file! gone.asm\n# 1 error(s)\n");
}

// The table past the end of a bank is told once, and the next bank is whole again.
TEST(Limits, OverflowIsToldOncePerStretch) {
    const std::string text = " .inesprg 1\n .org $BFFF\n" + Repeat(" .dw $1234\n", 3) +
                             " .org $BFFF\n .db 1,2\n .bank 1\n .db 1\n";
    EXPECT_EQ(Messages(AssembleText(text)),
              "3: Bank overflow, addr: BFFF, offset:2000  > $1FFF!\n"
              "7: Bank overflow, addr: BFFF, offset:2000  > $1FFF!\n");
}

// Texts by whom the reader finds a spot: what they show is made of what the assembler knows.
TEST(Listing, ShowsAddressesBytesAndText) {
    const AssemblyResult result = AssembleText(
        "; head\n .bank 1\n .org $A000\nmain lda later\n .db 1,2,3,4,5,6,7,8,9\r\nm macro\n nop\n"
        " endm\n m\nlater = $123\n",
        {.listing = true, .symbols = true});
    EXPECT_EQ(result.listing,
              "# a.asm\n"
              "     1  00:0000                            ; head\n"
              "     2  01:0000                             .bank 1\n"
              "     3  01:A000                             .org $A000\n"
              "     4  01:A000  AD 23 01                  main lda later\n"
              "     5  01:A003  01 02 03 04 05 06 07 08 >  .db 1,2,3,4,5,6,7,8,9\n"
              "     6  01:A00C                            m macro\n"
              "     9  01:A00C                             m\n"
              "     7+ 01:A00C  EA                         nop\n"
              "    10  01:A00D                            later = $123\n");
    EXPECT_EQ(result.symbols, "$0123 - later\n$A000 01 main\n");
}

}  // namespace
}  // namespace bw::assembler
