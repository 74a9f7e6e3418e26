// The plain facts of each game for the menu: offsets, sizes, flags, mapper.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "builder/tables/table_banks.h"
#include "rom/multicart_item.h"
#include "support/file_problem.h"

namespace bw {

// bit 0 vertical mirroring, bit 1 battery, bit 2 four-screen
uint8_t GameFlags(const MulticartItem& item);

// game_data_0.asm and on, game_data_bank.asm, and the report game_prg_chr_offset.txt. Items with
// isMenu are left out. `bankCount` receives the number of banks, also when files fail.
FileResult<> GenerateGameData(std::span<const MulticartItem> items,
                              const std::filesystem::path& folder, const TableWriteOptions& options,
                              uint32_t& bankCount);

}  // namespace bw
