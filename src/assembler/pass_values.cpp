#include <string>

#include "assembler/arithmetic.h"
#include "assembler/characters.h"
#include "assembler/pass.h"

namespace bw::assembler {
namespace {

// Fix-ups past the end of a bank only serve messages about their names; so many are enough.
constexpr std::size_t kMessageFixups = 65536;

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

// Puts the value's bytes into `bytes`; gives the error's text if it is out of range.
const char* Pass::Store(ValueKind kind, std::int64_t value, std::int64_t location,
                        std::uint8_t* bytes) const {
    const auto low = static_cast<std::uint8_t>(value & 0xFF);
    const auto high = static_cast<std::uint8_t>(value >> 8 & 0xFF);
    bytes[0] = low;
    switch (kind) {
        case ValueKind::Byte:
            return FitsByte(value) ? nullptr : "Byte value out of range!";
        case ValueKind::Immediate:
            return FitsByte(value) ? nullptr : "Incorrect immediate value!";
        case ValueKind::ZeroPage:
            return FitsZeroPage(value) ? nullptr : "Incorrect zero page address!";
        case ValueKind::Word:
            bytes[1] = high;
            return FitsWord(value) ? nullptr : "Word value out of range!";
        case ValueKind::Absolute:
            bytes[1] = high;
            return FitsWord(value) ? nullptr : "Incorrect absolute address!";
        case ValueKind::Relative: {
            const std::int64_t distance = value - (location + 2);
            bytes[0] = static_cast<std::uint8_t>(distance & 0xFF);
            const bool near = distance >= -128 && distance <= 127;
            return near ? nullptr : "Branch address out of range!";
        }
    }
    return nullptr;
}

void Pass::PutValue(ValueKind kind, const ExpressionPlace& from, const ExpressionValue& value) {
    std::uint8_t bytes[2] = {0, 0};
    const bool wide = kind == ValueKind::Word || kind == ValueKind::Absolute;
    if (value.Known()) {
        if (const char* error = Store(kind, value.value, from.location, bytes)) {
            diagnostics_.Error(from.place, error, std::to_string(value.value));
        }
    } else if (value.Failed()) {
        Report(from, value);
        Error(kReportedBefore);
    } else if (image_.Offset() < kBankSize || fixups_.size() < kMessageFixups) {
        fixups_.push_back({kind, image_.Slot(), image_.Offset(), value.name, from});
    }
    image_.Put(bytes[0]);
    if (wide) image_.Put(bytes[1]);
}

}  // namespace bw::assembler
