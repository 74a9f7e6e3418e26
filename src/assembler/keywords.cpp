#include "assembler/keywords.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "assembler/characters.h"

namespace bw::assembler {
namespace {

struct DirectiveName {
    std::string_view name;
    Directive directive;
};

constexpr DirectiveName kDirectives[] = {
    {"BANK", Directive::Bank},       {"BYTE", Directive::Byte},
    {"DB", Directive::Byte},         {"DS", Directive::Ds},
    {"DW", Directive::Word},         {"ELSE", Directive::Else},
    {"ENDIF", Directive::EndIf},     {"ENDM", Directive::EndM},
    {"ENDP", Directive::EndP},       {"EQU", Directive::Equ},
    {"FAIL", Directive::Fail},       {"IF", Directive::If},
    {"IFDEF", Directive::IfDef},     {"IFNDEF", Directive::IfNDef},
    {"INCBIN", Directive::IncBin},   {"INCLUDE", Directive::Include},
    {"INESCHR", Directive::InesChr}, {"INESMAP", Directive::InesMap},
    {"INESMIR", Directive::InesMir}, {"INESPRG", Directive::InesPrg},
    {"MACRO", Directive::Macro},     {"ORG", Directive::Org},
    {"PROC", Directive::Proc},       {"RS", Directive::Rs},
    {"RSSET", Directive::RsSet},     {"STR", Directive::Str},
    {"WORD", Directive::Word},
};

// The names of Mnemonic, three letters each.
constexpr std::string_view kMnemonics =
    "ADCANDASLBCCBCSBEQBITBMIBNEBPLBRKBVCBVSCLCCLDCLICLVCMPCPXCPYDECDEXDEYEORINCINXINYJMPJSRLDALDX"
    "LDYLSRNOPORAPHAPHPPLAPLPROLRORRTIRTSSBCSECSEDSEISTASTXSTYTAXTAYTSXTXATXSTYA";
static_assert(kMnemonics.size() == size_t{kMnemonicCount} * 3);

struct Entry {
    uint64_t packed = 0;
    Keyword keyword;
};

constexpr size_t kSlots = 256;

constexpr size_t SlotOf(uint64_t packed) {
    return static_cast<size_t>(packed * 0x9E3779B97F4A7C15U >> 56U);
}

struct Table {
    std::array<Entry, kSlots> entries{};

    constexpr void Add(std::string_view name, KeywordKind kind, size_t index) {
        const uint64_t packed = PackWord(name);
        size_t slot = SlotOf(packed);
        while (entries[slot].packed != 0)
            slot = (slot + 1) % kSlots;
        entries[slot] = {packed, {kind, static_cast<uint8_t>(index)}};
    }
};

constexpr Table kTable = [] {
    Table table;
    for (size_t i = 0; i < kMnemonicCount; ++i) {
        table.Add(kMnemonics.substr(i * 3, 3), KeywordKind::Instruction, i);
    }
    for (const DirectiveName& entry : kDirectives) {
        table.Add(entry.name, KeywordKind::Directive, static_cast<size_t>(entry.directive));
    }
    return table;
}();

}  // namespace

Keyword FindKeyword(uint64_t packed) {
    if (packed == 0) return {};
    for (size_t slot = SlotOf(packed); kTable.entries[slot].packed != 0;
         slot = (slot + 1) % kSlots) {
        if (kTable.entries[slot].packed == packed) return kTable.entries[slot].keyword;
    }
    return {};
}

std::vector<std::string_view> DirectiveNames() {
    std::vector<std::string_view> names;
    for (const DirectiveName& entry : kDirectives)
        names.push_back(entry.name);
    return names;
}

}  // namespace bw::assembler
