#include "builder/tables/table_banks.h"

#include "builder/tables/generated_text.h"
#include "support/files.h"
#include "support/numbers.h"

namespace bw {
namespace {

constexpr uint32_t kPerRow = 10;

// "," inside a row, a line end behind its last column.
void AppendRowSeparator(std::string& text, size_t column, bool last) {
    text += column + 1 == kPerRow || last ? kLineEnd : ",";
}

}  // namespace

void TableBankPacker::Add(uint32_t bytes) {
    const auto game = static_cast<uint32_t>(result_.bankOfGame.size());
    if (result_.banks.empty() || Overflows(bytes)) {
        result_.banks.push_back({game, 0});
        used_ = kTableBankHead;
    }
    used_ += bytes;
    ++result_.banks.back().count;
    result_.bankOfGame.push_back(static_cast<uint8_t>(result_.banks.size() - 1));
}

TableBanks PackEqual(size_t games, uint32_t bytesPerGame) {
    TableBankPacker packer;
    for (size_t i = 0; i < games; ++i)
        packer.Add(bytesPerGame);
    return packer.Take();
}

void AppendTableLabel(std::string& text, std::string_view label, uint32_t game) {
    text += label;
    text += '_';
    AppendDecimal(text, game, 3);
}

std::string TableBankHeadText(const TableNames& names, const TableBanks::Bank& bank) {
    std::string text;
    if (bank.count == 0) return text;
    AppendTableLabel(text, names.beginLabel, bank.first);
    text += kLineEnd;
    text += " .WORD ";
    AppendDecimal(text, bank.first);
    text += kLineEnd;
    AppendTableLabel(text, names.listLabel, bank.first);
    text += kLineEnd;
    for (uint32_t i = 0; i < bank.count; ++i) {
        if (i % kPerRow == 0) text += " .WORD ";
        AppendTableLabel(text, names.label, bank.first + i);
        AppendRowSeparator(text, i % kPerRow, i + 1 == bank.count);
    }
    text += kLineEnd;
    return text;
}

std::string BankIndexText(std::string_view label, const std::vector<uint8_t>& bankOfGame) {
    std::string text(label);
    text += kLineEnd;
    for (size_t i = 0; i < bankOfGame.size(); ++i) {
        text += i % kPerRow == 0 ? " .DB $" : "$";
        AppendHex(text, bankOfGame[i], 2);
        AppendRowSeparator(text, i % kPerRow, i + 1 == bankOfGame.size());
    }
    return text;
}

FileResult<> WriteTable(const TableFiles& files, const TableBanks& banks,
                        const std::function<std::string(const TableBanks::Bank&)>& bankText,
                        const std::filesystem::path& folder, const TableWriteOptions& options) {
    const auto bankPath = [&](uint32_t number) {
        std::string name(files.bankFile);
        AppendHex(name, number, 1);
        return folder / (name + ".asm");
    };
    FileResult<> done;
    const auto inUse = static_cast<uint32_t>(banks.banks.size());
    for (uint32_t i = 0; options.write && i < inUse; ++i) {
        done.Join(WriteScratchFile(bankPath(i), bankText(banks.banks[i])));
    }
    for (uint32_t i = inUse; !options.keep && i < files.fileCount; ++i)
        DeleteFile(bankPath(i));
    const std::string index = BankIndexText(files.indexLabel, banks.bankOfGame);
    done.Join(WriteScratchFile(folder / files.indexFile, index));
    return done;
}

}  // namespace bw
