#include <string>

#include "assembler/arithmetic.h"
#include "assembler/characters.h"
#include "assembler/pass.h"

namespace bw::assembler {
namespace {

// Far more than a menu has; what goes beyond is made to use up memory.
constexpr size_t kFixupLimit = 1'000'000;

bool Fits(ValueKind kind, int64_t value) {
    switch (kind) {
        case ValueKind::Byte:
        case ValueKind::Immediate:
            return FitsByte(value);
        case ValueKind::ZeroPage:
            return FitsZeroPage(value);
        case ValueKind::Word:
        case ValueKind::Absolute:
            return FitsWord(value);
        case ValueKind::Relative:
            return value >= -128 && value <= 127;
    }
    return false;
}

const char* RangeError(ValueKind kind) {
    switch (kind) {
        case ValueKind::Byte:
            return "Byte value out of range!";
        case ValueKind::Word:
            return "Word value out of range!";
        case ValueKind::Immediate:
            return "Incorrect immediate value!";
        case ValueKind::ZeroPage:
            return "Incorrect zero page address!";
        case ValueKind::Absolute:
            return "Incorrect absolute address!";
        case ValueKind::Relative:
            return "Branch address out of range!";
    }
    return "";
}

}  // namespace

ExpressionPlace Pass::PlaceOfExpression() const {
    return {cursor_, scope_, lineAddress_, Here()};
}

ExpressionValue Pass::Evaluate(Forward forward) {
    cursor_ = SkipBlanks(cursor_);
    if (forward == Forward::Wait) {
        if (const auto simple = names_.EvaluateSimple(cursor_, &cursor_)) return *simple;
    }
    const ExpressionValue value = names_.Evaluate(PlaceOfExpression(), forward, &cursor_);
    if (value.usesLocation && !image_.Located()) needsAnother_ = true;
    return value;
}

void Pass::Report(const ExpressionPlace& from, const ExpressionValue& value) {
    const bool undefined = value.status == ExpressionStatus::Unknown;
    const std::string_view text = undefined ? kUndefinedSymbol : value.error;
    diagnostics_.Error(from.place, text, value.detail);
}

// Puts the value's bytes into `bytes` and reports it if it is out of range.
void Pass::Store(ValueKind kind, const ExpressionPlace& from, int64_t value, uint8_t* bytes) {
    const int64_t distance = value - (from.location + int64_t{2});
    const int64_t stored = kind == ValueKind::Relative ? distance : value;
    bytes[0] = static_cast<uint8_t>(stored & 0xFF);
    if (SizeOf(kind) == 2) bytes[1] = static_cast<uint8_t>(stored >> 8 & 0xFF);
    if (!Fits(kind, stored)) {
        diagnostics_.Error(from.place, RangeError(kind), std::to_string(value));
    }
}

void Pass::PutValue(ValueKind kind, const ExpressionPlace& from, const ExpressionValue& value) {
    uint8_t bytes[2] = {0, 0};
    if (value.Known()) {
        Store(kind, from, value.value, bytes);
    } else if (value.Failed()) {
        Report(from, value);
        SkipRest();
    } else if (fixups_.size() < kFixupLimit) {
        fixups_.push_back({kind, image_.Slot(), image_.Offset(), value.name, from});
    } else {
        Error("Too many names are used above their definition!", value.detail);
        followUp_ = FollowUp::End;
    }
    image_.Put(bytes[0]);
    if (SizeOf(kind) == 2) image_.Put(bytes[1]);
}

}  // namespace bw::assembler
