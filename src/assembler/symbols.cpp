#include "assembler/symbols.h"

#include <cstring>

namespace bw::assembler {
namespace {

constexpr size_t kFirstSlots = 1024;  // a power of two, as the mask of SlotOf demands

uint64_t Mix(uint64_t state, uint64_t word) {
    state = (state ^ word) * 0x9E3779B97F4A7C15U;
    return state ^ state >> 32U;
}

}  // namespace

uint32_t SymbolTable::HashOf(std::string_view name, uint32_t scope) {
    uint64_t state = name.size() + (uint64_t{scope} << 32U);
    uint64_t word = 0;
    while (name.size() >= sizeof word) {
        std::memcpy(&word, name.data(), sizeof word);
        state = Mix(state, word);
        name.remove_prefix(sizeof word);
    }
    word = 0;
    for (const char c : name)
        word = word << 8U | static_cast<unsigned char>(c);
    return static_cast<uint32_t>(Mix(state, word));
}

SymbolTable::SymbolTable() : slots_(kFirstSlots) {}

size_t SymbolTable::SlotOf(std::string_view name, uint32_t scope, uint32_t hash) const {
    const size_t mask = slots_.size() - 1;
    size_t at = hash & mask;
    while (slots_[at].index != 0) {
        if (slots_[at].hash == hash) {
            const Symbol& symbol = symbols_[slots_[at].index - 1];
            if (symbol.scope == scope && symbol.name == name) break;
        }
        at = (at + 1) & mask;
    }
    return at;
}

Symbol& SymbolTable::Get(std::string_view name, uint32_t scope) {
    const uint32_t hash = HashOf(name, scope);
    size_t at = SlotOf(name, scope, hash);
    if (slots_[at].index == 0) {
        if (symbols_.size() * 4 >= slots_.size() * 3) {
            Grow();
            at = SlotOf(name, scope, hash);
        }
        Symbol& symbol = symbols_.emplace_back();
        symbol.name = name;
        symbol.scope = scope;
        slots_[at] = {hash, static_cast<uint32_t>(symbols_.size())};
    }
    return symbols_[slots_[at].index - 1];
}

Symbol* SymbolTable::Find(std::string_view name, uint32_t scope) {
    const uint32_t hash = HashOf(name, scope);
    const Slot& slot = slots_[SlotOf(name, scope, hash)];
    return slot.index == 0 ? nullptr : &symbols_[slot.index - 1];
}

const Symbol* SymbolTable::Find(std::string_view name, uint32_t scope) const {
    return const_cast<SymbolTable*>(this)->Find(name, scope);
}

void SymbolTable::Grow() {
    std::vector<Slot> old(slots_.size() * 4);
    old.swap(slots_);
    const size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.index == 0) continue;
        size_t at = slot.hash & mask;
        while (slots_[at].index != 0)
            at = (at + 1) & mask;
        slots_[at] = slot;
    }
}

}  // namespace bw::assembler
