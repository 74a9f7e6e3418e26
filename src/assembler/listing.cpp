#include "assembler/listing.h"

#include <algorithm>
#include <cstdio>

namespace bw::assembler {
namespace {

constexpr uint32_t kBytesShown = 8;
constexpr size_t kBytesWidth = 24;

int16_t BankOfSlot(int16_t slot, const Names& names) {
    if (slot < kBankCountLimit) return slot;
    return names.unknownBanks[static_cast<size_t>(slot - kBankCountLimit)];
}

// Bytes of up to kBytesShown in hex, blanks up to the width of that many.
std::string HexOf(const ListedLine& line, Image& image) {
    std::string text;
    char hex[4];
    const uint32_t end = std::min({line.end, kBankSize, line.offset + kBytesShown});
    for (uint32_t offset = line.offset; offset < end; ++offset) {
        std::snprintf(hex, sizeof hex, "%02X ", *image.At(line.slot, offset));
        text += hex;
    }
    text.resize(kBytesWidth, ' ');
    text += line.end > line.offset + kBytesShown ? '>' : ' ';
    return text;
}

std::string_view WithoutReturn(std::string_view text) {
    if (text.ends_with('\r')) text.remove_suffix(1);
    return text;
}

}  // namespace

std::string RenderListing(const std::vector<ListedLine>& lines, const SourceFiles& files,
                          Image& image, const Names& names) {
    std::string text;
    uint32_t file = UINT32_MAX;
    char head[48];
    for (const ListedLine& line : lines) {
        if (line.place.file != file) {
            file = line.place.file;
            text.append("# ").append(files.At(file).name).append("\n");
        }
        std::snprintf(head, sizeof head, "%6u%c %02X:%04X  ", line.place.line,
                      line.place.expansion == 0 ? ' ' : '+',
                      static_cast<unsigned>(std::max(BankOfSlot(line.slot, names), int16_t{0})),
                      line.address);
        text.append(head).append(HexOf(line, image)).append(" ");
        text.append(WithoutReturn(line.text)).append("\n");
    }
    return text;
}

std::string RenderSymbols(const Names& names) {
    std::vector<const Symbol*> sorted;
    for (const Symbol& symbol : names.table.All()) {
        if (symbol.scope == 0 && symbol.state == SymbolState::Defined) sorted.push_back(&symbol);
    }
    std::sort(sorted.begin(), sorted.end(),
              [](const Symbol* a, const Symbol* b) { return a->name < b->name; });
    std::string text;
    char head[32];
    for (const Symbol* symbol : sorted) {
        std::snprintf(head, sizeof head, "$%04X ", static_cast<unsigned>(symbol->value));
        text += head;
        if (symbol->bank == kNoBank) {
            text += "- ";
        } else {
            std::snprintf(head, sizeof head, "%02X ", static_cast<unsigned>(symbol->bank));
            text += head;
        }
        text.append(symbol->name).append("\n");
    }
    return text;
}

}  // namespace bw::assembler
