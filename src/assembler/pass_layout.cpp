#include <algorithm>
#include <string>

#include "assembler/characters.h"
#include "assembler/pass.h"

namespace bw::assembler {
namespace {

constexpr int64_t kAddressLimit = 0x10000;

}  // namespace

// A value that decides where things stand. If a name in it is only defined further down, the value
// of the reading before serves; without one this is an error, unless another reading follows.
std::optional<int64_t> Pass::LayoutValue() {
    const ExpressionPlace from = PlaceOfExpression();
    const ExpressionValue value = Evaluate(Forward::Guess);
    if (value.Known()) return value.value;
    Report(from, value);
    SkipRest();
    return std::nullopt;
}

void Pass::SelectBank() {
    overflowReported_ = false;
    const ExpressionPlace from = PlaceOfExpression();
    const Forward forward = names_.Before() == nullptr ? Forward::Wait : Forward::Guess;
    const ExpressionValue value = Evaluate(forward);
    if (value.Known()) {
        bankUses_.push_back({value.value, from.place});
        if (value.value >= 0 && value.value < kBankCountLimit) {
            image_.Select(static_cast<int16_t>(value.value));
            return NoteLocation();
        }
    }
    const int16_t slot = image_.SelectUnknown();
    const bool fresh = names_.unknownBanks.size() < kUnknownBankLimit;
    if (fresh) names_.unknownBanks.push_back(kNoBank);
    if (value.status == ExpressionStatus::Unknown) {
        if (!fresh) needsAnother_ = true;
        unknownBanks_.push_back({slot, from});
        return NoteLocation();
    }
    // The bank is wrong and reported; what stands in it is still looked through.
    image_.SetAddress(0);
    NoteLocation();
    if (value.Failed()) {
        Report(from, value);
        SkipRest();
    }
}

void Pass::SetOrigin() {
    const std::optional<int64_t> address = LayoutValue();
    if (!address) return;
    if (*address < 0 || *address >= kAddressLimit) {
        return Error("Address out of range!", std::to_string(*address));
    }
    image_.SetAddress(static_cast<uint32_t>(*address));
    NoteLocation();
    overflowReported_ = false;
}

void Pass::SetRamCounter() {
    const std::optional<int64_t> address = LayoutValue();
    if (!address) return;
    if (*address < 0 || *address > kAddressLimit) {
        return Error("Address out of range!", std::to_string(*address));
    }
    ramCounter_ = *address;
}

void Pass::AllocateRam() {
    const std::string_view name = TakeLabel();
    if (!name.empty()) {
        Symbol& symbol = SymbolNamed(name);
        if (Claim(symbol, PlaceOfExpression(), {.value = ramCounter_})) {
            symbol.state = SymbolState::Defined;
            symbol.value = ramCounter_;
        }
    }
    const std::optional<int64_t> count = LayoutValue();
    if (!count) return;
    const int64_t next = ramCounter_ + *count;
    if (next < 0 || next > kAddressLimit) {
        return Error("Address out of range!", std::to_string(next));
    }
    ramCounter_ = next;
}

// .DS count [, fill]: without a fill the bytes stay as unused ROM.
void Pass::ReserveSpace() {
    const std::optional<int64_t> count = LayoutValue();
    if (!count) return;
    if (*count < 0) return Error("Negative count!", std::to_string(*count));
    // One bank and a bit is as good as any larger number: it overflows the bank, and is told so.
    const auto bytes = static_cast<uint32_t>(std::min<int64_t>(*count, int64_t{kBankSize} * 2));
    cursor_ = SkipBlanks(cursor_);
    if (*cursor_ != ',') return image_.Skip(bytes);
    ++cursor_;
    const ExpressionPlace from = PlaceOfExpression();
    const ExpressionValue value = Evaluate();
    for (uint32_t i = 0; i < bytes && i < kBankSize + 1; ++i) {
        PutValue(ValueKind::Byte, from, value);
        if (value.Failed()) return;
    }
}

void Pass::HeaderField(Directive directive) {
    const int64_t limit = directive == Directive::InesMir ? 15 : 255;
    const std::optional<int64_t> value = LayoutValue();
    if (!value) return;
    if (*value < 0 || *value > limit) {
        return Error("Header value out of range!", std::to_string(*value));
    }
    const auto field = static_cast<uint8_t>(*value);
    switch (directive) {
        case Directive::InesPrg:
            header_.prg = field;
            break;
        case Directive::InesChr:
            header_.chr = field;
            break;
        case Directive::InesMap:
            header_.mapper = field;
            break;
        default:
            header_.mirroring = field;
            break;
    }
    image_.Reserve(BankCount());
}

}  // namespace bw::assembler
