// game_config.asm: the constants through which the menu source learns how to assemble itself.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "builder/input/build_settings.h"
#include "designer/model/design_store.h"
#include "support/file_problem.h"

namespace bw {

// What a build adds to the settings and the design.
struct MenuConfig {
    BoardType board = BoardType::kCoolboy;
    uint32_t menuPrgUnits = 8;  // 16 KB units
    uint32_t nameBanks = 0;
    uint32_t dataBanks = 0;
    uint32_t finalDataBanks = 0;
    uint32_t games = 0;
    uint8_t BigCursor = 0;  // read from the store at this moment, not a setting of the snapshot
};

std::string MenuConfigText(const MenuConfig& config, const BuildSettings& settings,
                           const DesignStore& design);

FileResult<> WriteMenuConfig(const MenuConfig& config, const BuildSettings& settings,
                             const DesignStore& design, const std::filesystem::path& folder);

}  // namespace bw
