#include "assembler/arithmetic.h"

#include <array>
#include <cstddef>

namespace bw::assembler {
namespace {

constexpr std::array<uint8_t, 18> kBinding = {1, 2, 3, 4, 5, 6, 6,  7,  7,
                                              7, 7, 8, 8, 9, 9, 10, 10, 10};

constexpr int64_t Signed(uint64_t value) {
    return static_cast<int64_t>(value);
}

std::optional<int64_t> Divide(int64_t left, int64_t right, bool remainder) {
    if (right == 0) return std::nullopt;
    // The one quotient that doesn't fit 64 bits; processors trap on it.
    if (right == -1) return remainder ? 0 : Signed(0 - static_cast<uint64_t>(left));
    return remainder ? left % right : left / right;
}

std::optional<int64_t> Shift(int64_t left, int64_t count, bool toTheLeft) {
    if (count < 0) return std::nullopt;
    if (toTheLeft) return count > 63 ? 0 : Signed(static_cast<uint64_t>(left) << count);
    return left >> (count > 63 ? 63 : count);
}

}  // namespace

int Binding(Operator op) {
    return kBinding[static_cast<size_t>(op)];
}

std::optional<int64_t> Apply(Operator op, int64_t left, int64_t right) {
    const auto a = static_cast<uint64_t>(left);
    const auto b = static_cast<uint64_t>(right);
    switch (op) {
        case Operator::Or:
            return left != 0 || right != 0 ? 1 : 0;
        case Operator::And:
            return left != 0 && right != 0 ? 1 : 0;
        case Operator::BitOr:
            return Signed(a | b);
        case Operator::BitXor:
            return Signed(a ^ b);
        case Operator::BitAnd:
            return Signed(a & b);
        case Operator::Equal:
            return left == right ? 1 : 0;
        case Operator::NotEqual:
            return left != right ? 1 : 0;
        case Operator::Less:
            return left < right ? 1 : 0;
        case Operator::LessEqual:
            return left <= right ? 1 : 0;
        case Operator::Greater:
            return left > right ? 1 : 0;
        case Operator::GreaterEqual:
            return left >= right ? 1 : 0;
        case Operator::ShiftLeft:
            return Shift(left, right, true);
        case Operator::ShiftRight:
            return Shift(left, right, false);
        case Operator::Add:
            return Signed(a + b);
        case Operator::Subtract:
            return Signed(a - b);
        case Operator::Multiply:
            return Signed(a * b);
        case Operator::Divide:
            return Divide(left, right, false);
        case Operator::Remainder:
            return Divide(left, right, true);
    }
    return std::nullopt;
}

}  // namespace bw::assembler
