#include "builder/tables/game_data.h"

#include <vector>

#include "builder/tables/generated_text.h"
#include "builder/tables/reports.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kBytesPerGame = 10;  // record and pointer
constexpr TableNames kNames{"game_data", "game_data_begin", "game_data_list"};
constexpr TableFiles kFiles{"game_data_", "game_data_bank.asm", "game_data_bank_index", 8};

// An offset in 8 KB units, with the plain facts behind it as a comment.
void AppendPlace(std::string& text, uint32_t offset, uint32_t crc, uint32_t span) {
    const uint32_t bank = offset >> 13;
    text += " .DW $";
    AppendHex(text, bank, 4);
    text += " ;";
    AppendBinary(text, bank, 12);
    text += ' ';
    AppendHex(text, offset, 8);
    text += " CRC32: ";
    AppendHex(text, crc, 8);
    text += " Size: ";
    AppendHex(text, span, 8);
    text += kLineEnd;
}

void AppendSize(std::string& text, uint32_t units, std::string_view what) {
    text += " .DB $";
    AppendHex(text, units, 2);
    text += what;
    text += kLineEnd;
}

void AppendRecord(std::string& text, const MulticartItem& item, uint32_t game) {
    AppendTableLabel(text, kNames.label, game);
    text += ';';
    AppendComment(text, ToUtf8(item.name));
    text += kLineEnd;
    AppendPlace(text, item.prgOffset, item.prgCrc, item.prgSpan);
    AppendSize(text, item.prgUnits, " ;PRG Size");
    AppendPlace(text, item.chrOffset, item.chrCrc, item.chrSpan);
    AppendSize(text, item.chrUnits, " ;CHR Size");
    text += " .DB %";
    AppendBinary(text, GameFlags(item), 8);
    text += " ;Mirroring D0(0: H 1: V) Battery: D1(0: N 1: Y) Four-Screen: D2(0: N 1: Y)\r\n .DB ";
    AppendDecimal(text, item.mapper, 3);
    text += " ;Mapper\r\n";
}

}  // namespace

uint8_t GameFlags(const MulticartItem& item) {
    return static_cast<uint8_t>((item.mirroring & 1) | (item.battery & 1) << 1 |
                                (item.fourScreen & 1) << 2);
}

FileResult<> GenerateGameData(std::span<const MulticartItem> items,
                              const std::filesystem::path& folder, const TableWriteOptions& options,
                              uint32_t& bankCount) {
    std::vector<const MulticartItem*> games;
    for (const MulticartItem& item : items) {
        if (item.isMenu == 0) games.push_back(&item);
    }
    const TableBanks banks = PackEqual(games.size(), kBytesPerGame);
    bankCount = static_cast<uint32_t>(banks.banks.size());
    const auto bankText = [&](const TableBanks::Bank& bank) {
        std::string text = TableBankHeadText(kNames, bank);
        for (uint32_t game = bank.first; game < bank.first + bank.count; ++game) {
            AppendRecord(text, *games[game], game);
        }
        text += kLineEnd;
        return text;
    };
    FileResult<> tables = WriteTable(kFiles, banks, bankText, folder, options);
    if (options.write) tables.Join(WriteOffsetReport(games, folder));
    return tables;
}

}  // namespace bw
