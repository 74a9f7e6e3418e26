#pragma once

#include <cstdint>
#include <optional>

namespace bw::assembler {

// Operators of expressions, in the order of their binding in kBinding (arithmetic.cpp).
enum class Operator : uint8_t {
    Or,
    And,
    BitOr,
    BitXor,
    BitAnd,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    ShiftLeft,
    ShiftRight,
    Add,
    Subtract,
    Multiply,
    Divide,
    Remainder,
};

// How tightly an operator binds, 1 (loosest) to 10, as in C.
int Binding(Operator op);

// Computes in 64 bits and wraps there; comparisons and logic give 0 or 1. Division cuts toward zero
// and the remainder has the sign of the dividend, as in C. A shift by 64 or more leaves nothing
// but the sign of a value shifted right. Nothing for a division by zero or a negative shift count.
std::optional<int64_t> Apply(Operator op, int64_t left, int64_t right);

// Expression results must fit 32 bits, read as signed or as unsigned number.
constexpr bool FitsResult(int64_t value) {
    return value >= INT32_MIN && value <= static_cast<int64_t>(UINT32_MAX);
}
constexpr bool FitsByte(int64_t value) {
    return value >= -128 && value <= 255;
}
constexpr bool FitsWord(int64_t value) {
    return value >= -32768 && value <= 65535;
}
constexpr bool FitsZeroPage(int64_t value) {
    return value >= 0 && value <= 255;
}

}  // namespace bw::assembler
