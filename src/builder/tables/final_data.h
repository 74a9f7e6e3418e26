// Each game reduced to the bytes that the board's registers take, so that the console only copies
// them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "builder/tables/board_registers.h"
#include "builder/tables/table_banks.h"
#include "rom/board_tables.h"
#include "rom/multicart_item.h"
#include "support/file_problem.h"

namespace bw {

struct FinalDataRecord {
    std::u16string name;  // for the comment in the file
    BoardRegisters registers;
    uint16_t chrOffset = 0;  // 8 KB units
    uint8_t chrCount = 0;    // 8 KB units of the file, not of the rounded span
    uint8_t flags = 0;       // bit 0 vertical mirroring, bit 1 battery, bit 2 four-screen
};

// What a game takes of the table: record and pointer.
constexpr uint32_t FinalDataBytes(BoardType board) {
    return board == BoardType::kCoolgirl ? 14 : 12;
}

// One record for each game, the menu left out, in the order of the laid items.
std::vector<FinalDataRecord> MakeFinalData(std::span<const MulticartItem> laid, BoardType board);

// game_final_data_0.asm and on, and game_final_data_bank.asm. `bankCount` receives the number of
// banks, also when files fail.
FileResult<> GenerateFinalData(std::span<const FinalDataRecord> records,
                               const std::filesystem::path& folder, BoardType board,
                               const TableWriteOptions& options, uint32_t& bankCount);

}  // namespace bw
