// The road from the checked games of a list to a written multicart ROM, and the export of the
// generated files for a menu of the user's own. One road for the window and the command line: they
// differ in their BuildUser.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "builder/input/build_context.h"
#include "builder/layout/bank_layout.h"
#include "builder/layout/build_checks.h"
#include "builder/tables/final_data.h"
#include "builder/tables/kept_cart.h"

namespace bw {

// What a finished build has made.
struct BuildOutcome {
    bool done = false;
    std::vector<Diagnostic> unfit;  // the first games that the board can't run, which ended it
    bool overLimits = false;        // refused: more bytes or games than the board holds
    bool workKept = true;           // false if the folder of keepWork couldn't be filled
    BoardType board = BoardType::kCoolboy;
    RomFormat format = RomFormat::kNes20;
    std::filesystem::path output;
    LayoutResult layout;  // with the menu among its items
    std::vector<std::u16string> names;
    std::vector<FinalDataRecord> finalData;
    // Of a build that keeps the places of an earlier cart: what of it has to be burned.
    std::optional<SectorChanges> changes;
};

// What a build command tests before it starts a build: that no task runs and that not too many
// games are checked. The words for what is in the way.
std::optional<Diagnostic> CheckBuildStart(const GameList& games, bool taskBusy, Language language);
// The same, told to the user; true if nothing is in the way.
bool MayStartBuild(const GameList& games, const std::atomic<bool>& taskBusy, BuildUser& user);

// Builds and writes the ROM. Sets `taskBusy` as its first act and clears it at its end, whatever
// that end is. All
// failures are told to the user; the outcome is for programs.
BuildOutcome BuildRom(const BuildContext& context, BoardType board, std::atomic<bool>& taskBusy);

// Which tables an export makes.
enum class ExportType : uint8_t { kCoolboy = 0, kCoolgirl = 1 };

// Writes the generated files for a menu of `menuPrgUnits` 16 KB units into `folder`. With `ask` the
// user is asked for the folder, starting at the given one; it then holds the answer. game_list.txt
// goes to the folder as it stands before that question. True if all steps were taken.
bool ExportInfo(const BuildContext& context, ExportType type, uint32_t menuPrgUnits,
                std::filesystem::path& folder, bool ask);

// Whether an export writes files of this name.
bool IsExportedName(std::u16string_view name);

// The export command: type and size from the settings, the folder from the user, who is then asked
// whether to open it.
bool RunExport(const BuildContext& context);

}  // namespace bw
