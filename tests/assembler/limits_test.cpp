#include <string>
#include <utility>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "memory_source.h"

// Input that would eat time, memory or the stack, and the limits that stop it.

namespace bw::assembler {
namespace {

using testing::HasSubstr;

std::string Repeat(const std::string& text, size_t count) {
    std::string result;
    for (size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST(Limits, RefuseWithAMessage) {
    const std::pair<std::string, const char*> rows[] = {
        {" .ds 4000000000\n", "offset:3FFF  > $1FFF!"},
        {" .ds 4000000000,1\n", "Bank overflow, addr: 0000"},
        {" .ds $FFFFFFFF*$FFFFFFFF\n", "Value does not fit"},
        {"m macro\n m\n endm\n m\n", "Macro calls nested too deeply! m"},
        {"m macro\n m\n m\n m\n endm\n m\n", "Macro calls nested too deeply! m"},
        {"m macro\n m \\1\\1\\1\\1,\\1\n endm\n m xxxxxxxx\n", "Source is too large!"},
        {Repeat(" .if 1\n", 300) + Repeat(" .endif\n", 300), "Conditions nested too deeply!"},
        {"v =" + Repeat("(", 100000) + "\n", "Expression nested too deeply!"},
        {"v =" + Repeat("-", 100000) + "1\n", "Expression nested too deeply!"},
        {"v =" + Repeat("LOW(", 100000) + "\n", "Expression nested too deeply!"},
        {Repeat(" .bank x\n .org 0\n .db 1\n", 50000), "Undefined symbol in operand field! x"},
        {Repeat(" .bank -1\n .db 1\n", 50000), "Bank index out of range!"},
        {Repeat(" .org 0\n .db x,x,x,x,x,x,x,x,x,x\n", 100001),
         "Too many names are used above their definition! x"},
        {" .inesprg 0\n .db 1\n", "The ROM has no banks!"},
        {" .org here + 1\nhere .db 1\n", "Phase error: the value changes with its own use! here"},
        {std::string(" .db 1\n \0\0\n", 11), "Unexpected character!"}};
    for (const auto& [text, message] : rows) {
        const AssemblyResult result = AssembleText(text);
        EXPECT_TRUE(!result.Ok() && result.rom.empty()) << message;
        EXPECT_THAT(Messages(result), HasSubstr(message));
    }
}

TEST(Limits, BinaryMayFillTheRomExactlyAndNotByOneMore) {
    MemorySource source;
    source.files["a.asm"] = " .org $8001\n incbin \"rest\"\nend\n .bank 0\n .dw end\n";
    source.files["rest"] = std::string(16383, 'x');
    EXPECT_EQ(Messages(Assemble("a.asm", source)),
              "5: Bank overflow, addr: A000, offset:2001  > $1FFF!\n");
    source.files["rest"] += 'x';
    EXPECT_EQ(Messages(Assemble("a.asm", source)).substr(0, 43),
              "2: Bank index out of range! limit is: 1\n5: ");
}

TEST(Limits, IncludesNestSixteenDeepAndEndIfTheyMultiply) {
    const auto include = [](int file) { return fmt::format(" include \"{}\"\n", file); };
    MemorySource source;
    for (int i = 0; i < 30; ++i)
        source.files[std::to_string(i)] = include(i + 1);
    const AssemblyResult result = Assemble("0", source);
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(result.diagnostics[0].place.file, "16");
    EXPECT_EQ(result.diagnostics[0].text, "Includes nested too deeply! 17");
    for (int i = 0; i < 16; ++i)
        source.files[std::to_string(i)] = Repeat(include(i + 1), 20);
    source.files["16"] = " nop\n";
    EXPECT_THAT(Messages(Assemble("0", source)), HasSubstr("Source is too large!"));
}

// Long chains of names are no reason to fail, in either direction, nor to use up the stack.
TEST(Limits, ChainsOfDefinitionsResolveEitherWay) {
    std::string down = " .db a0\n";
    std::string up = "b0 = end\n";
    constexpr int kLinks = 20000;
    for (int i = 0; i < kLinks; ++i) {
        down += fmt::format("a{} = a{}\n", i, i + 1);
        up += fmt::format("b{} = b{}\n", i + 1, i);
    }
    const AssemblyResult result =
        AssembleText(down + fmt::format("a{0} = 7\n{1} .db b{0}\nend = 8\n", kLinks, up));
    EXPECT_EQ(RomBytes(result, 3), (std::vector<int>{7, 8, 0xFF})) << Messages(result);
}

TEST(Limits, MessagesAreCutButAllErrorsCounted) {
    const AssemblyResult result = AssembleText(Repeat(" .db nowhere\n", 5000) + " bogus\n");
    EXPECT_EQ(result.errorCount, 5001U);
    EXPECT_EQ(result.diagnostics.size(), kDiagnosticLimit);
    EXPECT_EQ(result.diagnostics.back().place.line, kDiagnosticLimit);
    EXPECT_THAT(FormatDiagnostics(result), testing::EndsWith("\n# 5001 error(s)\n"));
}

// Errors of fix-ups are found last, but the reader goes through the file from the top. The table
// past the end of a bank is told once, and the next bank is whole again.
TEST(Limits, MessagesStandInTheOrderOfTheSource) {
    EXPECT_EQ(Messages(AssembleText(
                  " .inesprg 1\n .db late\n bogus\n .dw late,nowhere\nlate = 999\n .org $BFFF\n" +
                  Repeat(" .dw $1234\n", 3) + " .org $BFFF\n .db 1,2\n .bank 1\n .db 1\n")),
              "2: Byte value out of range! 999\n"
              "3: Unknown instruction! bogus\n"
              "4: Undefined symbol in operand field! nowhere\n"
              "7: Bank overflow, addr: BFFF, offset:2000  > $1FFF!\n"
              "11: Bank overflow, addr: BFFF, offset:2000  > $1FFF!\n");
    MemorySource none;
    EXPECT_EQ(FormatDiagnostics(Assemble("gone.asm", none)),
              "gone.asm: error: Can not open file!\n# 1 error(s)\n");
}

// Texts by whom the reader finds a spot: what they show is made of what the assembler knows.
TEST(Listing, ShowsAddressesBytesAndText) {
    const AssemblyResult result = AssembleText(
        "; head\n .bank 1\n .org $A000\nmain lda later\n .db 1,2,3,4,5,6,7,8,9\r\nm macro\n nop\n"
        " endm\n m\nlater = $123\n",
        {.listing = true, .symbols = true});
    EXPECT_EQ(result.listing, R"(# a.asm
     1  00:0000                            ; head
     2  01:0000                             .bank 1
     3  01:A000                             .org $A000
     4  01:A000  AD 23 01                  main lda later
     5  01:A003  01 02 03 04 05 06 07 08 >  .db 1,2,3,4,5,6,7,8,9
     6  01:A00C                            m macro
     9  01:A00C                             m
     7+ 01:A00C  EA                         nop
    10  01:A00D                            later = $123
)");
    EXPECT_EQ(result.symbols, "$0123 - later\n$A000 01 main\n");
}

}  // namespace
}  // namespace bw::assembler
