#include <cstdint>
#include <span>
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
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= uint32_t{result.rom[16 + i]} << i * 8;
    return std::to_string(static_cast<int32_t>(value));
}

struct Row {
    const char* expression;
    const char* value;
};

constexpr Row kCorners[] = {{"$fF", "255"},          {"%1010", "10"},
                            {"0010", "10"},          {"08", "8"},
                            {"'A'", "65"},           {"'''", "39"},
                            {"';'", "59"},           {"$7FFFFFFF", "2147483647"},
                            {"4294967295", "-1"},    {"seven", "7"},
                            {"last", "3"},           {"*", "32768"},
                            {"-7/2", "-3"},          {"-7%2", "-1"},
                            {"7/-2", "-3"},          {"1<<31", "-2147483648"},
                            {"1<<64", "0"},          {"-1>>70", "-1"},
                            {"5>>64", "0"},          {"-8>>1", "-4"},
                            {"$FFFFFFFF>0", "1"},    {"-1<0", "1"},
                            {"$FFFFFFFF*2/2", "-1"}, {"-2147483648", "-2147483648"}};

// As in C: of two operators the one that C binds tighter goes first, equals go from the left.
constexpr Row kPrecedence[] = {
    {"2+3*4", "14"},     {"(2+3)*4", "20"},  {"100-10-1", "89"},     {"100/10/5", "2"},
    {"1<<2+1", "8"},     {"1|2^3&2", "1"},   {"6&3=3", "0"},         {"(6&3)=2", "1"},
    {"1|0&&0", "0"},     {"0&&0||1", "1"},   {"1<2=1", "1"},         {"-2*3", "-6"},
    {"~0&$F0", "240"},   {"!0+1", "2"},      {"5-%11", "2"},         {"5 % %11", "2"},
    {"7%4", "3"},        {"2**", "65536"},   {"LOW($1234)+1", "53"}, {"HIGH($1234)-2", "16"},
    {"low (-1)", "255"}, {"<$1234+1", "53"}, {">$1234", "18"},       {"LOW(HIGH($123456))", "52"},
    {"- - 5", "5"},      {"3<>3", "0"},      {"3!=4", "1"},          {"3>=3", "1"},
    {"3<=2", "0"},       {"2==2", "1"}};

constexpr Row kFaults[] = {{"1/0", "Division by zero! /"},
                           {"1<<32", "Value does not fit 32 bits!"},
                           {"1<<-1", "Negative shift count! <"},
                           {"-2147483649", "Value does not fit 32 bits!"},
                           {"$100000000", "Value does not fit 32 bits! $100000000"},
                           {"", "Missing operand!"},
                           {"(1", "Missing closing parenthesis!"},
                           {"$", "Number without digits! $"},
                           {"$1G", "Wrong digit in number! $1G"},
                           {"09x", "Wrong digit in number! 09x"},
                           {"'ab'", "Character literal must be one byte!"},
                           {"1 2", "Unexpected text behind the statement! 2"},
                           {"@", "Unexpected character in expression! @"},
                           {"nowhere", "Undefined symbol in operand field! nowhere"},
                           {"nowhere-.gone", "Undefined symbol in operand field! nowhere"},
                           {"BANK(seven)", "BANK() takes a label, not a constant! seven"},
                           {"BANK(1)", "BANK() takes one label!"}};

TEST(Expressions, HaveTheirValueOrMessage) {
    for (const std::span<const Row> rows :
         {std::span<const Row>(kCorners), {kPrecedence}, {kFaults}}) {
        for (const auto& [expression, value] : rows)
            EXPECT_EQ(ValueOf(expression), value) << expression;
    }
}

// The processor traps on this one quotient.
TEST(Arithmetic, SmallestNumberByMinusOneWraps) {
    EXPECT_EQ(Apply(Operator::Divide, INT64_MIN, -1), INT64_MIN);
    EXPECT_EQ(Apply(Operator::Remainder, INT64_MIN, -1), 0);
}

}  // namespace
}  // namespace bw::assembler
