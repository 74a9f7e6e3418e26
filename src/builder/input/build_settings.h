// The settings that a build reads, as one plain record: a snapshot of the user's store, or filled
// by the command line. The names are those of the stored values.
#pragma once

#include <cstdint>
#include <filesystem>

#include "list/game_list.h"
#include "rom/board_tables.h"
#include "settings/settings_store.h"

namespace bw {

struct BuildSettings {
    uint32_t CoolboyType = 0;  // 0 COOLBOY, 1 MINDKIDS
    uint32_t MenuSize = 8;     // menu PRG in 16 KB units: 8, 16 or 32
    bool ExternMenuEnable = false;
    std::filesystem::path ExternMenuPath;
    bool CustomEnable = false;  // the designed menu screen
    bool ShowNumberOrder = false;
    bool ShowNumberDot = false;
    bool ShowNumberFill = false;
    bool PageNumber = false;
    bool NameInsertRow = false;
    uint32_t PageSize = 10;         // 5, 10, 15 or 20
    uint32_t ShowStyle = 0;         // 0 default, 1 white
    uint32_t PageTurningSpeed = 1;  // 1 to 4 names a frame
    uint32_t Music = 0;             // 0 none, 1 beeps, 2 to 5 a tune
    uint32_t ExportRomType = 0;     // 0 COOLBOY, 1 COOLGIRL
    uint32_t ExportPrgSize = 0;     // 0, 1, 2 for a menu of 8, 16, 32 units
    std::filesystem::path LastBuildDir;
    std::filesystem::path LastExportDir;

    NumberSettings Numbers() const { return {ShowNumberOrder, ShowNumberDot, ShowNumberFill}; }
    BoardType CoolboyBoard() const {
        return CoolboyType != 0 ? BoardType::kMindkids : BoardType::kCoolboy;
    }
    // PRG of the menu in a build, in 16 KB units: the built-in one is always 128 KB on COOLGIRL.
    uint32_t MenuUnits(BoardType board) const {
        return board == BoardType::kCoolgirl && !ExternMenuEnable ? 8u : MenuSize;
    }
    uint32_t ExportMenuUnits() const {
        return ExportPrgSize == 1 ? 16u : ExportPrgSize == 2 ? 32u : 8u;
    }
};

// Missing values keep their defaults, values out of range count as the rules of the menu entries
// have it: PageSize 10, PageTurningSpeed 1, MenuSize 8, Music 1.
BuildSettings LoadBuildSettings(const SettingsStore& store);

}  // namespace bw
