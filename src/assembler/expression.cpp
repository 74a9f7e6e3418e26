#include "assembler/expression.h"

#include <optional>

#include "assembler/arithmetic.h"
#include "assembler/assembler.h"
#include "assembler/characters.h"
#include "assembler/image.h"

namespace bw::assembler {
namespace {

enum class Function : uint8_t { Low, High, Bank };

struct OperatorToken {
    Operator op;
    int length;
};

std::optional<OperatorToken> OperatorAt(const char* at) {
    const bool twice = at[0] == at[1];
    const bool equal = at[1] == '=';
    switch (at[0]) {
        case '+':
            return OperatorToken{Operator::Add, 1};
        case '-':
            return OperatorToken{Operator::Subtract, 1};
        case '*':
            return OperatorToken{Operator::Multiply, 1};
        case '/':
            return OperatorToken{Operator::Divide, 1};
        case '%':
            return OperatorToken{Operator::Remainder, 1};
        case '^':
            return OperatorToken{Operator::BitXor, 1};
        case '&':
            return OperatorToken{twice ? Operator::And : Operator::BitAnd, twice ? 2 : 1};
        case '|':
            return OperatorToken{twice ? Operator::Or : Operator::BitOr, twice ? 2 : 1};
        case '=':
            return OperatorToken{Operator::Equal, twice ? 2 : 1};
        case '!':
            if (equal) return OperatorToken{Operator::NotEqual, 2};
            return std::nullopt;
        case '<':
            if (twice) return OperatorToken{Operator::ShiftLeft, 2};
            if (at[1] == '>') return OperatorToken{Operator::NotEqual, 2};
            return OperatorToken{equal ? Operator::LessEqual : Operator::Less, equal ? 2 : 1};
        case '>':
            if (twice) return OperatorToken{Operator::ShiftRight, 2};
            return OperatorToken{equal ? Operator::GreaterEqual : Operator::Greater, equal ? 2 : 1};
        default:
            return std::nullopt;
    }
}

std::optional<Function> FunctionNamed(std::string_view word) {
    switch (PackWord(word)) {
        case PackWord("LOW"):
            return Function::Low;
        case PackWord("HIGH"):
            return Function::High;
        case PackWord("BANK"):
            return Function::Bank;
        default:
            return std::nullopt;
    }
}

// One walk over one expression, by precedence climbing. Names that are themselves expressions are
// computed by a nested walk, which shares the depth count: it bounds the stack for any input.
class Walk {
  public:
    Walk(Names& names, const ExpressionPlace& from, Forward forward, int depth)
        : names_(names), from_(from), forward_(forward), depth_(depth), at_(from.text) {}

    ExpressionValue Run() {
        ExpressionValue result;
        result.value = Binary(1);
        result.name = single_;
        if (error_ == nullptr && !unknown_ && !FitsResult(result.value)) {
            Fail("Value does not fit 32 bits!", {});
        }
        result.error = error_;
        result.usesLocation = usesLocation_;
        result.detail = detail_;
        if (error_ != nullptr) {
            result.status = ExpressionStatus::Failed;
        } else if (unknown_) {
            result.status = ExpressionStatus::Unknown;
        }
        return result;
    }

    const char* At() const { return at_; }

  private:
    // Only the first error counts; the rest of the expression is skipped without a look.
    int64_t Fail(const char* error, std::string_view detail) {
        if (error_ == nullptr) {
            error_ = error;
            detail_ = detail;
        }
        return 0;
    }

    int64_t Unknown(std::string_view name) {
        if (!unknown_) detail_ = name;
        unknown_ = true;
        return 0;
    }

    int64_t Binary(int loosest);
    int64_t Unary();
    int64_t Primary();
    int64_t Number(unsigned base, const char* digits);
    int64_t Character();
    int64_t Parenthesis();
    int64_t Name();
    int64_t Call(Function function);
    int64_t BankOf(const char* nameBegin);
    Symbol& Lookup(std::string_view name);
    int64_t ValueOf(Symbol& symbol);
    bool Guessed(const Symbol& symbol, int64_t& value);
    void ResolveDeferred(Symbol& symbol);

    Names& names_;
    const ExpressionPlace& from_;
    Forward forward_;
    int depth_;
    const char* at_;
    Symbol* single_ = nullptr;
    bool unknown_ = false;
    bool usesLocation_ = false;
    bool ambiguous_ = false;  // a local name of a macro that may still be defined closer by
    const char* error_ = nullptr;
    std::string_view detail_;
};

int64_t Walk::Binary(int loosest) {
    int64_t left = Unary();
    while (error_ == nullptr) {
        at_ = SkipBlanks(at_);
        const std::optional<OperatorToken> token = OperatorAt(at_);
        if (!token || Binding(token->op) < loosest) break;
        const char* spot = at_;
        at_ += token->length;
        single_ = nullptr;
        const int64_t right = Binary(Binding(token->op) + 1);
        single_ = nullptr;
        if (error_ != nullptr || unknown_) continue;
        const std::optional<int64_t> result = Apply(token->op, left, right);
        if (!result) {
            const bool shift =
                token->op == Operator::ShiftLeft || token->op == Operator::ShiftRight;
            return Fail(shift ? "Negative shift count!" : "Division by zero!", {spot, 1});
        }
        left = *result;
    }
    return left;
}

int64_t Walk::Unary() {
    at_ = SkipBlanks(at_);
    const char sign = *at_;
    if (sign != '-' && sign != '+' && sign != '~' && sign != '!' && sign != '<' && sign != '>') {
        return Primary();
    }
    if (++depth_ > kExpressionDepth) return Fail("Expression nested too deeply!", {});
    ++at_;
    const int64_t value = Unary();
    single_ = nullptr;
    --depth_;
    switch (sign) {
        case '-':
            return *Apply(Operator::Subtract, 0, value);
        case '~':
            return ~value;
        case '!':
            return value == 0 ? 1 : 0;
        case '<':
            return value & 0xFF;
        case '>':
            return value >> 8 & 0xFF;
        default:
            return value;
    }
}

int64_t Walk::Primary() {
    const char c = *at_;
    if (c == '$') return Number(16, at_ + 1);
    if (c == '%') return Number(2, at_ + 1);
    if (Is(c, kDigit)) return Number(10, at_);
    if (c == '\'') return Character();
    if (c == '(') return Parenthesis();
    if (c == '*') {
        ++at_;
        usesLocation_ = true;
        return from_.location;
    }
    if (Is(c, kWordStart) || c == '.') return Name();
    if (Is(c, kEnd) || c == ',') return Fail("Missing operand!", {});
    return Fail("Unexpected character in expression!", {at_, 1});
}

int64_t Walk::Number(unsigned base, const char* digits) {
    const char* end = SkipWord(digits);
    const std::string_view all(at_, static_cast<size_t>(end - at_));
    at_ = end;
    if (digits == end) return Fail("Number without digits!", all);
    int64_t value = 0;
    for (const char* p = digits; p != end; ++p) {
        const unsigned digit = Is(*p, kHexDigit) ? HexValue(*p) : base;
        if (digit >= base) return Fail("Wrong digit in number!", all);
        value = value * base + digit;
        if (value > UINT32_MAX) return Fail("Value does not fit 32 bits!", all);
    }
    return value;
}

int64_t Walk::Character() {
    if (at_[1] == '\n' || at_[2] != '\'') return Fail("Character literal must be one byte!", {});
    const auto value = static_cast<unsigned char>(at_[1]);
    at_ += 3;
    return value;
}

int64_t Walk::Parenthesis() {
    if (++depth_ > kExpressionDepth) return Fail("Expression nested too deeply!", {});
    ++at_;
    const int64_t value = Binary(1);
    --depth_;
    if (error_ != nullptr) return 0;
    if (*at_ != ')') return Fail("Missing closing parenthesis!", {});
    ++at_;
    return value;
}

int64_t Walk::Name() {
    const char* begin = at_;
    at_ = SkipWord(at_ + 1);
    const std::string_view name(begin, static_cast<size_t>(at_ - begin));
    if (name == ".") return Fail("Unexpected character in expression!", name);
    const char* next = SkipBlanks(at_);
    if (*next == '(') {
        if (const std::optional<Function> function = FunctionNamed(name)) {
            at_ = next;
            return Call(*function);
        }
    }
    Symbol& symbol = Lookup(name);
    if (!ambiguous_) single_ = &symbol;
    return ValueOf(symbol);
}

int64_t Walk::Call(Function function) {
    if (function == Function::Bank) return BankOf(SkipBlanks(at_ + 1));
    const int64_t value = Parenthesis();
    single_ = nullptr;
    return function == Function::Low ? value & 0xFF : value >> 8 & 0xFF;
}

int64_t Walk::BankOf(const char* nameBegin) {
    const char* end = nameBegin;
    if (Is(*end, kWordStart) || *end == '.') end = SkipWord(end + 1);
    const std::string_view name(nameBegin, static_cast<size_t>(end - nameBegin));
    at_ = SkipBlanks(end);
    if (name.empty() || *at_ != ')') return Fail("BANK() takes one label!", {});
    ++at_;
    Symbol& symbol = Lookup(name);
    ValueOf(symbol);
    single_ = nullptr;
    if (error_ != nullptr || unknown_) return 0;
    const Symbol* label = &symbol;
    if (symbol.state != SymbolState::Defined) label = names_.Before()->Find(name, symbol.scope);
    if (label->bank == kNoBank) return Fail("BANK() takes a label, not a constant!", name);
    if (label->bank < kBankCountLimit) return label->bank;
    const auto slot = static_cast<size_t>(label->bank - kBankCountLimit);
    if (names_.unknownBanks[slot] != kNoBank) return names_.unknownBanks[slot];
    if (forward_ == Forward::Resolve) return Fail("Bank depends on itself!", name);
    return Unknown(name);
}

// A local name in a macro expansion is looked for in the expansion, then around it. As long as
// lines are still to come, only a find in the innermost scope is sure to be the final one.
Symbol& Walk::Lookup(std::string_view name) {
    ambiguous_ = false;
    if (name.front() != '.') return names_.table.Get(name, 0);
    const uint32_t parent = names_.scopes.Parent(from_.scope);
    if (parent == 0) return names_.table.Get(name, from_.scope);
    for (uint32_t scope = from_.scope; scope != 0; scope = names_.scopes.Parent(scope)) {
        Symbol* symbol = names_.table.Find(name, scope);
        const bool sure = scope == from_.scope || forward_ != Forward::Wait;
        if (symbol != nullptr && symbol->state != SymbolState::Undefined && sure) return *symbol;
    }
    ambiguous_ = true;
    return names_.table.Get(name, from_.scope);
}

int64_t Walk::ValueOf(Symbol& symbol) {
    if (symbol.state == SymbolState::Defined) return symbol.value;
    int64_t guess = 0;
    if (forward_ == Forward::Guess && Guessed(symbol, guess)) return guess;
    if (forward_ != Forward::Resolve) return Unknown(symbol.name);
    if (symbol.state == SymbolState::Failed) return Fail(kReportedBefore, {});
    if (symbol.state == SymbolState::Deferred) ResolveDeferred(symbol);
    if (symbol.state == SymbolState::Defined) return symbol.value;
    if (symbol.state == SymbolState::Resolving) return Fail("Circular definition!", symbol.name);
    if (symbol.state == SymbolState::Deferred) {
        return Fail("Chain of definitions is too long!", symbol.name);
    }
    return Fail(kUndefinedSymbol, symbol.name);
}

bool Walk::Guessed(const Symbol& symbol, int64_t& value) {
    const SymbolTable* before = names_.Before();
    const Symbol* known = before == nullptr ? nullptr : before->Find(symbol.name, symbol.scope);
    if (known == nullptr || known->state != SymbolState::Defined) {
        names_.missing.push_back(&symbol);
        return false;
    }
    value = known->value;
    names_.guesses.push_back({&symbol, value});
    return true;
}

void Walk::ResolveDeferred(Symbol& symbol) {
    if (depth_ >= kExpressionDepth) return;
    const ExpressionValue result = names_.Resolve(symbol, depth_ + 1);
    if (!result.Known()) Fail(result.error, result.detail);
}

}  // namespace

std::optional<ExpressionValue> Names::EvaluateSimple(const char* text, const char** end) {
    const auto ends = [](const char* behind) {
        behind = SkipBlanks(behind);
        return *behind == ',' || Is(*behind, kEnd);
    };
    ExpressionValue result;
    const char* at = text;
    if (Is(*at, kWordStart)) {
        at = SkipWord(at);
        if (!ends(at)) return std::nullopt;
        const std::string_view name(text, static_cast<size_t>(at - text));
        Symbol& symbol = table.Get(name, 0);
        const bool known = symbol.state == SymbolState::Defined;
        result.status = known ? ExpressionStatus::Known : ExpressionStatus::Unknown;
        result.value = symbol.value;
        result.name = &symbol;
        result.detail = name;
    } else if (*at == '$') {
        constexpr int kMostDigits = 8;
        for (++at; Is(*at, kHexDigit) && at - text <= kMostDigits; ++at) {
            result.value = result.value << 4U | HexValue(*at);
        }
        if (at == text + 1) return std::nullopt;
    } else {
        constexpr int kMostDigits = 9;
        for (; Is(*at, kDigit) && at - text < kMostDigits; ++at) {
            result.value = result.value * 10 + HexValue(*at);
        }
        if (at == text) return std::nullopt;
    }
    if (!ends(at)) return std::nullopt;
    *end = at;
    return result;
}

ExpressionValue Names::Resolve(Symbol& symbol, int depth) {
    const int64_t index = symbol.value;
    symbol.state = SymbolState::Resolving;
    const ExpressionPlace& from = deferred[static_cast<size_t>(index)];
    const ExpressionValue result = Walk(*this, from, Forward::Resolve, depth).Run();
    symbol.state = result.Known() ? SymbolState::Defined : SymbolState::Deferred;
    symbol.value = result.Known() ? result.value : index;
    return result;
}

ExpressionValue Names::Evaluate(const ExpressionPlace& from, Forward forward, const char** end) {
    Walk walk(*this, from, forward, 0);
    const ExpressionValue result = walk.Run();
    if (end != nullptr) *end = walk.At();
    return result;
}

}  // namespace bw::assembler
