// The generated files of one build folder, in their two passes: a sizing pass that only counts the
// banks, so that an overlong list is refused before anything is assembled, and a writing pass.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "builder/input/build_context.h"
#include "builder/layout/bank_layout.h"
#include "builder/layout/build_checks.h"
#include "builder/tables/final_data.h"
#include "support/file_problem.h"

namespace bw {

// The screen column of the names: the design's, or that of the default look.
uint32_t NameColumn(const BuildSettings& settings, const DesignStore& design);

// Bank counts from the names and the number of games alone. Writes no bank; where `folder` exists
// the small index files are written all the same.
BankLimits CountTableBanks(const std::vector<std::u16string>& names, BoardType board,
                           uint32_t nameColumn, const std::filesystem::path& folder);

struct MenuTables {
    const BuildContext& context;
    const std::vector<std::u16string>& names;
    BoardType board;
    uint32_t menuPrgUnits;
    std::filesystem::path folder;  // exists
};

// Name tables, game data, final data, and last game_config.asm, from a layout. Tables that can't
// be written are told as a diagnostic: the assembler fails on them and tells the user. Only of
// game_config.asm the problem comes back. `finalData` receives the records.
FileResult<> WriteMenuTables(const MenuTables& tables, const LayoutResult& layout,
                             const BankLimits& banks, std::vector<FinalDataRecord>& finalData);

// The files of the designed screen; a failure is told as a diagnostic.
void WriteScreenFiles(const MenuTables& tables);

// The diagnostic for a generated file that a build or an export goes on without.
void TellUnwritten(BuildUser& user, const FileProblem& problem);

}  // namespace bw
