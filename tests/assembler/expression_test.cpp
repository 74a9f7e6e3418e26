#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "assembler/arithmetic.h"
#include "memory_source.h"

namespace bw::assembler {
namespace {

// The 32-bit value of an expression, taken from the ROM; the message if it has none.
std::string ValueOf(const std::string& expression) {
    const AssemblyResult result = AssembleText(" .org $8000\nseven = 7\nv = " + expression +
                                               "\n .dw v & $FFFF, v >> 16 & $FFFF\nlast = 3\n");
    if (!result.Ok()) return result.diagnostics.front().text;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= std::uint32_t{result.rom[16 + i]} << i * 8;
    return std::to_string(static_cast<std::int32_t>(value));
}

struct Row {
    const char* expression;
    const char* value;
};

class Expressions : public testing::TestWithParam<Row> {};

TEST_P(Expressions, HaveTheirValue) {
    EXPECT_EQ(ValueOf(GetParam().expression), GetParam().value) << GetParam().expression;
}

INSTANTIATE_TEST_SUITE_P(Literals, Expressions,
                         testing::Values(Row{"$fF", "255"}, Row{"%1010", "10"}, Row{"0010", "10"},
                                         Row{"08", "8"}, Row{"'A'", "65"}, Row{"'''", "39"},
                                         Row{"';'", "59"}, Row{"$7FFFFFFF", "2147483647"},
                                         Row{"4294967295", "-1"}, Row{"seven", "7"},
                                         Row{"last", "3"}, Row{"*", "32768"}));

// As in C: of two operators the one that C binds tighter goes first, equals go from the left.
INSTANTIATE_TEST_SUITE_P(
    Precedence, Expressions,
    testing::Values(Row{"2+3*4", "14"}, Row{"(2+3)*4", "20"}, Row{"100-10-1", "89"},
                    Row{"100/10/5", "2"}, Row{"1<<2+1", "8"}, Row{"1|2^3&2", "1"},
                    Row{"6&3=3", "0"}, Row{"(6&3)=2", "1"}, Row{"1|0&&0", "0"}, Row{"0&&0||1", "1"},
                    Row{"1<2=1", "1"}, Row{"-2*3", "-6"}, Row{"~0&$F0", "240"}, Row{"!0+1", "2"},
                    Row{"5-%11", "2"}, Row{"5 % %11", "2"}, Row{"7%4", "3"}, Row{"2**", "65536"},
                    Row{"LOW($1234)+1", "53"}, Row{"HIGH($1234)-2", "16"}, Row{"low (-1)", "255"},
                    Row{"<$1234+1", "53"}, Row{">$1234", "18"}, Row{"LOW(HIGH($123456))", "52"},
                    Row{"- - 5", "5"}, Row{"3<>3", "0"}, Row{"3!=4", "1"}, Row{"3>=3", "1"},
                    Row{"3<=2", "0"}, Row{"2==2", "1"}));

INSTANTIATE_TEST_SUITE_P(
    Corners, Expressions,
    testing::Values(Row{"-7/2", "-3"}, Row{"-7%2", "-1"}, Row{"7/-2", "-3"},
                    Row{"1/0", "Division by zero! /"}, Row{"1%0", "Division by zero! %"},
                    Row{"1<<31", "-2147483648"}, Row{"1<<32", "Value does not fit 32 bits!"},
                    Row{"1<<64", "0"}, Row{"-1>>70", "-1"}, Row{"5>>64", "0"},
                    Row{"1<<-1", "Negative shift count! <"}, Row{"-8>>1", "-4"},
                    Row{"$FFFFFFFF>0", "1"}, Row{"-1<0", "1"}, Row{"$FFFFFFFF*2/2", "-1"},
                    Row{"-2147483648", "-2147483648"},
                    Row{"-2147483649", "Value does not fit 32 bits!"},
                    Row{"4294967296", "Value does not fit 32 bits! 4294967296"},
                    Row{"$100000000", "Value does not fit 32 bits! $100000000"}));

INSTANTIATE_TEST_SUITE_P(
    Faults, Expressions,
    testing::Values(Row{"", "Missing operand!"}, Row{"1+", "Missing operand!"},
                    Row{"(1", "Missing closing parenthesis!"}, Row{"$", "Number without digits! $"},
                    Row{"$1G", "Wrong digit in number! $1G"},
                    Row{"%12", "Wrong digit in number! %12"},
                    Row{"09x", "Wrong digit in number! 09x"},
                    Row{"'ab'", "Character literal must be one byte!"},
                    Row{"1 2", "Unexpected text behind the statement! 2"},
                    Row{"@", "Unexpected character in expression! @"},
                    Row{"nowhere", "Undefined symbol in operand field! nowhere"},
                    Row{"nowhere-.gone", "Undefined symbol in operand field! nowhere"},
                    Row{"BANK(seven)", "BANK() takes a label, not a constant! seven"},
                    Row{"BANK(1)", "BANK() takes one label!"}));

// The processor traps on this one quotient.
TEST(Arithmetic, SmallestNumberByMinusOneWraps) {
    EXPECT_EQ(Apply(Operator::Divide, INT64_MIN, -1), INT64_MIN);
    EXPECT_EQ(Apply(Operator::Remainder, INT64_MIN, -1), 0);
}

}  // namespace
}  // namespace bw::assembler
