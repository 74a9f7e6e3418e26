#include <algorithm>
#include <string>

#include "assembler/arithmetic.h"
#include "assembler/listing.h"
#include "assembler/pass.h"

namespace bw::assembler {

void Pass::Finish() {
    if (hopeless_) return;
    ResolveBanks();
    ResolveDeferred();
    CheckGuesses();
    CheckRedefinitions();
    ApplyFixups();
    SettleBanks();
    CheckBanks();
}

uint32_t Pass::BankCount() const {
    return header_.prg * 2U + header_.chr;
}

void Pass::ResolveBanks() {
    for (const UnknownBank& unknown : unknownBanks_) {
        const ExpressionValue value = names_.Evaluate(unknown.from, Forward::Resolve);
        if (!value.Known()) {
            Report(unknown.from, value);
            hopeless_ = true;
            continue;
        }
        bankUses_.push_back({value.value, unknown.from.place});
        if (value.value >= 0 && value.value < kBankCountLimit) {
            names_.unknownBanks[static_cast<size_t>(unknown.slot - kBankCountLimit)] =
                static_cast<int16_t>(value.value);
        }
    }
}

// Computes the names that were defined by names further down. A walk from the first one on makes
// short work of long chains in one direction, a walk back of those in the other.
void Pass::ResolveDeferred() {
    for (Symbol* symbol : deferredSymbols_) {
        if (symbol->state == SymbolState::Deferred) names_.Resolve(*symbol);
    }
    for (auto it = deferredSymbols_.rbegin(); it != deferredSymbols_.rend(); ++it) {
        Symbol& symbol = **it;
        if (symbol.state != SymbolState::Deferred) continue;
        const ExpressionPlace& from = names_.deferred[static_cast<size_t>(symbol.value)];
        const ExpressionValue value = names_.Resolve(symbol);
        if (value.Known()) continue;
        symbol.state = SymbolState::Failed;
        Report(from, value);
    }
}

void Pass::CheckGuesses() {
    for (const Guess& guess : names_.guesses) {
        const bool same =
            guess.symbol->state == SymbolState::Defined && guess.symbol->value == guess.value;
        if (!same) needsAnother_ = true;
    }
    for (const Symbol* symbol : names_.missing) {
        if (symbol->state == SymbolState::Defined) needsAnother_ = true;
    }
}

// A name may be defined again as what it is, as by a file of constants that is included twice.
void Pass::CheckRedefinitions() {
    for (const auto& [symbol, from, given] : redefinitions_) {
        if (symbol->state == SymbolState::Failed || given.Failed()) continue;  // reported
        const ExpressionValue value =
            given.Known() ? given : names_.Evaluate(from, Forward::Resolve);
        const std::string detail =
            std::string(symbol->name) + " (at " + diagnostics_.Spot(symbol->place) + ")";
        if (!value.Known()) {
            Report(from, value);
        } else if (symbol->value == value.value) {
            diagnostics_.Warning(from.place, "Symbol is defined again with the same value!",
                                 detail);
        } else {
            diagnostics_.Error(from.place, "Symbol is defined already!", detail);
        }
    }
}

void Pass::ApplyFixups() {
    for (const Fixup& fixup : fixups_) {
        ExpressionValue value;
        if (fixup.name != nullptr && fixup.name->state == SymbolState::Defined) {
            value.value = fixup.name->value;
        } else {
            value = names_.Evaluate(fixup.from, Forward::Resolve);
        }
        if (!value.Known()) {
            Report(fixup.from, value);
            continue;
        }
        uint8_t bytes[2] = {0, 0};
        Store(fixup.kind, fixup.from, value.value, bytes);
        const uint32_t size = SizeOf(fixup.kind);
        if (fixup.offset + size > kBankSize) continue;  // reported as an overflow
        std::copy_n(bytes, size, image_.At(fixup.slot, fixup.offset));
    }
}

void Pass::SettleBanks() {
    for (const UnknownBank& unknown : unknownBanks_) {
        const int16_t bank =
            names_.unknownBanks[static_cast<size_t>(unknown.slot - kBankCountLimit)];
        if (bank != kNoBank && !image_.Settle(unknown.slot, bank)) needsAnother_ = true;
    }
    for (Symbol& symbol : names_.table.All()) {
        if (symbol.bank < kBankCountLimit) continue;
        symbol.bank = names_.unknownBanks[static_cast<size_t>(symbol.bank - kBankCountLimit)];
    }
}

void Pass::CheckBanks() {
    if (BankCount() == 0) diagnostics_.Error({.sequence = sequence_}, "The ROM has no banks!");
    for (const BankUse& use : bankUses_) {
        if (use.bank >= 0 && use.bank < BankCount()) continue;
        diagnostics_.Error(use.place, "Bank index out of range! limit is: " +
                                          std::to_string(int64_t{BankCount()} - 1));
    }
}

void Pass::ReportUnsettled() {
    for (const Guess& guess : names_.guesses) {
        if (guess.symbol->state == SymbolState::Defined && guess.symbol->value == guess.value) {
            continue;
        }
        diagnostics_.Error(guess.symbol->place, "Phase error: the value changes with its own use!",
                           guess.symbol->name);
        return;
    }
    diagnostics_.Error({.sequence = sequence_}, "Phase error: locations do not settle!");
}

// iNES header, 16 bytes. Source: NESdev wiki, "INES".
void Pass::WriteHeader(std::vector<uint8_t>& rom) const {
    std::fill_n(rom.begin(), kHeaderSize, uint8_t{0});
    constexpr uint8_t kMagic[] = {'N', 'E', 'S', 0x1A};
    std::copy(std::begin(kMagic), std::end(kMagic), rom.begin());
    rom[4] = header_.prg;
    rom[5] = header_.chr;
    rom[6] = static_cast<uint8_t>((header_.mapper & 0x0F) << 4 | header_.mirroring);
    rom[7] = static_cast<uint8_t>(header_.mapper & 0xF0);
}

AssemblyResult Pass::TakeResult() {
    AssemblyResult result;
    result.errorCount = diagnostics_.ErrorCount();
    result.diagnostics = diagnostics_.Take();
    if (options_.listing) result.listing = RenderListing(listed_, files_, image_, names_);
    if (!result.Ok()) return result;
    if (options_.symbols) result.symbols = RenderSymbols(names_);
    result.rom = image_.Take(BankCount());
    WriteHeader(result.rom);
    return result;
}

}  // namespace bw::assembler
