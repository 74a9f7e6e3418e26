#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

namespace bw::assembler {

// A spot in the source for messages.
struct Place {
    uint32_t sequence = 0;  // number of the line in the order of assembly; sorts messages
    uint32_t file = 0;      // index into the file table
    uint32_t line = 0;
    uint32_t expansion = 0;  // index into the table of macro calls, 0 outside of macros
};

enum class SymbolState : uint8_t {
    Undefined,  // used, not defined so far
    Deferred,   // `name = expression` that uses names further down
    Resolving,  // a deferred one while its expression is computed
    Failed,     // deferred, and its expression has an error that is reported already
    Defined,
};

inline constexpr int16_t kNoBank = -1;

struct Symbol {
    std::string_view name;   // in the source's bytes, which outlive the table
    int64_t value = 0;       // of a deferred one: index of its expression
    uint32_t scope = 0;      // 0 for global names
    int16_t bank = kNoBank;  // slot of the image that a label stands in; at the end, its bank
    SymbolState state = SymbolState::Undefined;
    Place place;  // of the definition
};

// All names of a run. Symbols keep their address.
class SymbolTable {
  public:
    SymbolTable();

    // The symbol of that name and scope, made if it's new.
    Symbol& Get(std::string_view name, uint32_t scope);
    Symbol* Find(std::string_view name, uint32_t scope);
    const Symbol* Find(std::string_view name, uint32_t scope) const;

    std::deque<Symbol>& All() { return symbols_; }
    const std::deque<Symbol>& All() const { return symbols_; }

  private:
    struct Slot {
        uint32_t hash = 0;
        uint32_t index = 0;  // 1 + index of the symbol, 0 in a free slot
    };

    static uint32_t HashOf(std::string_view name, uint32_t scope);
    size_t SlotOf(std::string_view name, uint32_t scope, uint32_t hash) const;
    void Grow();

    std::deque<Symbol> symbols_;
    std::vector<Slot> slots_;
};

// Local names hold between two global labels, and within one macro expansion. Each such stretch is
// a scope; an expansion's scope has the surrounding one as its parent.
class Scopes {
  public:
    uint32_t Open(uint32_t parent) {
        parents_.push_back(parent);
        return static_cast<uint32_t>(parents_.size() - 1);
    }
    uint32_t Parent(uint32_t scope) const { return parents_[scope]; }

  private:
    std::vector<uint32_t> parents_ = {0, 0};  // of scope 0 (global) and of the file's start
};

inline constexpr uint32_t kFirstScope = 1;

}  // namespace bw::assembler
