#include "builder/tables/final_data.h"

#include "builder/tables/game_data.h"
#include "builder/tables/generated_text.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr TableNames kNames{"game_final_data", "game_final_data_begin", "game_final_data_list"};
constexpr TableFiles kFiles{"game_final_data_", "game_final_data_bank.asm",
                            "game_final_data_bank_index", 8};
constexpr std::string_view kFlagsComment =
    " ;Mirroring D0(0: H 1: V) Battery-backed: D1(0: N 1: Y) Four-screen: D2(0: N 1: Y)\r\n";

void AppendByte(std::string& text, uint8_t value, std::string_view comment) {
    text += " .DB $";
    AppendHex(text, value, 2);
    text += comment;
}

void AppendRegisters(std::string& text, std::span<const uint8_t> values, std::string_view data) {
    for (size_t i = 0; i < values.size(); ++i) {
        AppendByte(text, values[i], " ;Reg");
        AppendDecimal(text, static_cast<uint32_t>(i));
        text += " for ";
        text += data;
        text += kLineEnd;
    }
}

void AppendRecord(std::string& text, const FinalDataRecord& record, uint32_t game,
                  BoardType board) {
    AppendTableLabel(text, kNames.label, game);
    text += ';';
    AppendComment(text, ToUtf8(record.name));
    text += kLineEnd;
    const std::span<const uint8_t> prg = record.registers.prg;
    if (board == BoardType::kCoolgirl) {
        text += " .DW $";
        AppendHex(text, record.chrOffset, 4);
        text += " ;CHR 8KB offset\r\n";
        AppendByte(text, record.chrCount, " ;CHR 8KB count\r\n");
        AppendByte(text, record.flags, kFlagsComment);
        AppendRegisters(text, prg, "PRG");
    } else {
        AppendByte(text, record.flags, kFlagsComment);
        AppendByte(text, record.chrCount, " ;CHR 8KB count\r\n");
        AppendRegisters(text, std::span(record.registers.chr).first(4), "CHR");
        AppendRegisters(text, prg.first(4), "PRG");
    }
}

}  // namespace

std::vector<FinalDataRecord> MakeFinalData(std::span<const MulticartItem> laid, BoardType board) {
    std::vector<FinalDataRecord> records;
    for (const MulticartItem& item : laid) {
        if (item.isMenu != 0) continue;
        FinalDataRecord record;
        record.name = item.name;
        record.chrOffset = static_cast<uint16_t>(item.chrOffset >> 13);
        record.chrCount = static_cast<uint8_t>(item.chrCount);
        record.flags = GameFlags(item);
        record.registers =
            board == BoardType::kCoolgirl ? CoolgirlRegisters(item) : CoolboyRegisters(item);
        records.push_back(std::move(record));
    }
    return records;
}

FileResult<> GenerateFinalData(std::span<const FinalDataRecord> records,
                               const std::filesystem::path& folder, BoardType board,
                               const TableWriteOptions& options, uint32_t& bankCount) {
    const bool coolgirl = board == BoardType::kCoolgirl;
    const TableBanks banks = PackEqual(records.size(), FinalDataBytes(board));
    bankCount = static_cast<uint32_t>(banks.banks.size());
    const auto bankText = [&](const TableBanks::Bank& bank) {
        std::string text = coolgirl ? ";COOLGIRL\r\n" : ";COOLBOY\r\n";
        text += TableBankHeadText(kNames, bank);
        for (uint32_t game = bank.first; game < bank.first + bank.count; ++game) {
            AppendRecord(text, records[game], game, board);
        }
        text += kLineEnd;
        return text;
    };
    return WriteTable(kFiles, banks, bankText, folder, options);
}

}  // namespace bw
