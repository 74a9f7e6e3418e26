#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "assembler/instructions.h"

namespace bw::assembler {

enum class Directive : uint8_t {
    Bank,
    Byte,
    Ds,
    Else,
    EndIf,
    EndM,
    EndP,
    Equ,
    Fail,
    If,
    IfDef,
    IfNDef,
    IncBin,
    Include,
    InesChr,
    InesMap,
    InesMir,
    InesPrg,
    Macro,
    Org,
    Proc,
    Rs,
    RsSet,
    Str,
    Word,
};

enum class KeywordKind : uint8_t { None, Instruction, Directive };

struct Keyword {
    KeywordKind kind = KeywordKind::None;
    uint8_t index = 0;  // a Mnemonic or a Directive

    bool Is(Directive directive) const {
        return kind == KeywordKind::Directive && index == static_cast<uint8_t>(directive);
    }
};

// What a word packed by PackWord() means. Directives are listed without their dot.
Keyword FindKeyword(uint64_t packed);

// All directives, in upper case and without their dot.
std::vector<std::string_view> DirectiveNames();

}  // namespace bw::assembler
