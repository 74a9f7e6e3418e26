#include "assembler/arithmetic.h"
#include "assembler/characters.h"
#include "assembler/pass.h"

namespace bw::assembler {
namespace {

constexpr const char* kIllegalMode = "Illegal addressing mode!";

enum class Index : uint8_t { None, X, Y };

// Whether the word of one letter stands at `at`, in either case.
bool IsLetter(const char* at, char upper) {
    return (*at & ~0x20) == upper && !Is(at[1], kWord);
}

// Takes ",X" or ",Y" off the text at `at`.
Index TakeIndex(const char*& at) {
    const char* p = SkipBlanks(at);
    if (*p != ',') return Index::None;
    p = SkipBlanks(p + 1);
    const Index index = IsLetter(p, 'X') ? Index::X : IsLetter(p, 'Y') ? Index::Y : Index::None;
    if (index != Index::None) at = p + 1;
    return index;
}

// The bracket or parenthesis that closes the one at `at`, or null if the line has none.
const char* Closing(const char* at) {
    int depth = 0;
    for (; !Is(*at, kEnd); ++at) {
        if (*at == '\'' && at[1] != '\n' && at[2] == '\'') {
            at += 2;
        } else if (*at == '(' || *at == '[') {
            ++depth;
        } else if ((*at == ')' || *at == ']') && --depth == 0) {
            return at;
        }
    }
    return nullptr;
}

// Whether ",X" stands in front of the closing bracket.
bool ClosesBehindX(const char* closing) {
    const char* p = closing - 1;
    while (Is(*p, kBlank))
        --p;
    if ((*p & ~0x20) != 'X') return false;
    do
        --p;
    while (Is(*p, kBlank));
    return *p == ',';
}

}  // namespace

void Pass::PutInstruction(Mnemonic mnemonic, Mode mode) {
    image_.Put(static_cast<uint8_t>(Opcode(mnemonic, mode)));
}

void Pass::PutOperand(Mnemonic mnemonic, Mode mode, ValueKind kind, const ExpressionPlace& from,
                      const ExpressionValue& value) {
    PutInstruction(mnemonic, mode);
    PutValue(kind, from, value);
}

void Pass::Instruction(Mnemonic mnemonic) {
    cursor_ = SkipBlanks(cursor_);
    if (Is(*cursor_, kEnd)) {
        if (HasMode(mnemonic, Mode::Implied)) return PutInstruction(mnemonic, Mode::Implied);
        if (HasMode(mnemonic, Mode::Accumulator)) {
            return PutInstruction(mnemonic, Mode::Accumulator);
        }
        return Error("Missing operand!");
    }
    if (HasMode(mnemonic, Mode::Implied)) return PutInstruction(mnemonic, Mode::Implied);
    if (HasMode(mnemonic, Mode::Accumulator) && IsLetter(cursor_, 'A') &&
        Is(*SkipBlanks(cursor_ + 1), kEnd)) {
        ++cursor_;
        return PutInstruction(mnemonic, Mode::Accumulator);
    }
    if (*cursor_ == '#') {
        if (!HasMode(mnemonic, Mode::Immediate)) return Error(kIllegalMode);
        ++cursor_;
        const ExpressionPlace from = PlaceOfExpression();
        return PutOperand(mnemonic, Mode::Immediate, ValueKind::Immediate, from, Evaluate());
    }
    if ((*cursor_ == '[' || *cursor_ == '(') && Indirect(mnemonic)) return;
    Direct(mnemonic);
}

// [expr], [expr,X], [expr],Y and the same in parentheses. Parentheses that have none of these forms
// are part of an expression: then nothing is taken and the result is false.
bool Pass::Indirect(Mnemonic mnemonic) {
    const bool bracket = *cursor_ == '[';
    const char* closing = Closing(cursor_);
    if (closing == nullptr) {
        if (bracket) Error("Missing closing bracket!");
        return bracket;
    }
    const char* behind = closing + 1;
    const Index index = TakeIndex(behind);
    const bool last = Is(*SkipBlanks(behind), kEnd);
    Mode mode = Mode::Implied;
    if (last && index == Index::Y) {
        mode = Mode::IndirectY;
    } else if (last && index == Index::None) {
        mode = ClosesBehindX(closing) ? Mode::IndirectX : Mode::Indirect;
    }
    if (!HasMode(mnemonic, mode)) {
        if (bracket) Error(kIllegalMode);
        return bracket;
    }
    ++cursor_;
    const ExpressionPlace from = PlaceOfExpression();
    const ExpressionValue value = Evaluate();
    if (mode == Mode::IndirectX && !value.Failed()) TakeIndex(cursor_);
    const bool whole = SkipBlanks(cursor_) == closing;
    const ValueKind kind = mode == Mode::Indirect ? ValueKind::Absolute : ValueKind::ZeroPage;
    PutOperand(mnemonic, mode, kind, from, value);
    if (value.Failed()) return true;
    if (!whole) {
        Error("Unexpected character in expression!", {SkipBlanks(cursor_), 1});
        return true;
    }
    cursor_ = behind;
    return true;
}

void Pass::Direct(Mnemonic mnemonic) {
    const bool branch = HasMode(mnemonic, Mode::Relative);
    const bool forced = *cursor_ == '<' && !branch;
    if (forced) ++cursor_;
    const ExpressionPlace from = PlaceOfExpression();
    const ExpressionValue value = Evaluate();
    if (branch) return PutOperand(mnemonic, Mode::Relative, ValueKind::Relative, from, value);
    Mode zeroPage = Mode::ZeroPage;
    Mode absolute = Mode::Absolute;
    if (!value.Failed()) {
        const Index index = TakeIndex(cursor_);
        if (index == Index::X) zeroPage = Mode::ZeroPageX, absolute = Mode::AbsoluteX;
        if (index == Index::Y) zeroPage = Mode::ZeroPageY, absolute = Mode::AbsoluteY;
    }
    // Without `<` an operand is absolute even in the zero page: programs count on its cycles.
    if (HasMode(mnemonic, zeroPage) && (forced || !HasMode(mnemonic, absolute))) {
        PutOperand(mnemonic, zeroPage, ValueKind::ZeroPage, from, value);
    } else if (HasMode(mnemonic, absolute) && !forced) {
        PutOperand(mnemonic, absolute, ValueKind::Absolute, from, value);
    } else {
        if (!value.Failed()) return Error(kIllegalMode);
        Report(from, value);
        SkipRest();
    }
}

}  // namespace bw::assembler
