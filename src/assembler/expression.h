#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "assembler/symbols.h"

namespace bw::assembler {

// What an expression can see from where it stands.
struct ExpressionPlace {
    const char* text = nullptr;  // first byte; the line's end or any foreign character ends it
    uint32_t scope = 0;
    uint32_t location = 0;  // value of `*`
    Place place;
};

enum class ExpressionStatus : uint8_t { Known, Unknown, Failed };

// Unknown: the name `detail` in it isn't defined so far. Failed: `error` says why, `detail` shows
// the culprit.
struct ExpressionValue {
    ExpressionStatus status = ExpressionStatus::Known;
    int64_t value = 0;
    bool usesLocation = false;  // `*` occurs in it
    Symbol* name = nullptr;     // if the whole expression is this one name
    const char* error = nullptr;
    std::string_view detail{};

    bool Known() const { return status == ExpressionStatus::Known; }
    bool Failed() const { return status == ExpressionStatus::Failed; }
};

// What is to be done about names that aren't defined so far.
enum class Forward : uint8_t {
    Wait,     // the value is Unknown
    Guess,    // take the value of the run before, if there was one
    Resolve,  // all lines are read: a name must be defined by now
};

// A value taken from the run before; it must turn out the same in this one.
struct Guess {
    const Symbol* symbol = nullptr;
    int64_t value = 0;
};

// The names of a run with all that finding their values takes.
class Names {
  public:
    // `before` are the names of the run before, or null in the first one.
    explicit Names(const SymbolTable* before) : before_(before) {}

    SymbolTable table;
    Scopes scopes;
    std::vector<ExpressionPlace> deferred;  // expressions of Deferred symbols
    std::vector<int16_t> unknownBanks;      // bank of each unknown slot, kNoBank until it is found
    std::vector<Guess> guesses;
    std::vector<const Symbol*> missing;  // asked for by Guess in vain

    // Computes the expression at `from.text`; `end`, if given, is set behind its last character.
    ExpressionValue Evaluate(const ExpressionPlace& from, Forward forward,
                             const char** end = nullptr);

    // The same for the bulk of all operands, a global name or a number alone, as if by
    // Forward::Wait. Nothing if it is anything else.
    std::optional<ExpressionValue> EvaluateSimple(const char* text, const char** end);

    // Defines a Deferred symbol by its expression. If that can't be computed it stays as it is.
    // `depth` is how deep in other expressions this happens.
    ExpressionValue Resolve(Symbol& symbol, int depth = 0);

    const SymbolTable* Before() const { return before_; }

  private:
    const SymbolTable* before_;
};

// The error of an expression that uses a name whose own definition failed: nothing to add.
inline constexpr const char* kReportedBefore = "";
inline constexpr const char* kUndefinedSymbol = "Undefined symbol in operand field!";

}  // namespace bw::assembler
