// What a build works on.
#pragma once

#include <filesystem>
#include <optional>

#include "builder/input/build_settings.h"
#include "builder/input/build_user.h"
#include "designer/model/design_store.h"
#include "list/game_list.h"
#include "settings/settings_store.h"

namespace bw {

// The caller keeps everything alive and unchanged until the build returns;
// `games` and `settings` are a snapshot when the build runs beside a window.
struct BuildContext {
    const GameList& games;
    const BuildSettings& settings;
    SettingsStore& store;  // the design's stored values; takes LastBuildDir
    DesignStore& design;
    BuildUser& user;
    // A folder of this build's own, removed at its end with all that it holds.
    std::filesystem::path workFolder;
    // Receives a copy of the work folder's menu tree at the end, however the build ends. It must be
    // as KeepFiles wants it.
    std::optional<std::filesystem::path> keepWork;
    // Go the whole road but for files outside the work folder: no ROM is written, and a menu's
    // source of the user's own, which would leave files beside itself, counts as large as the
    // settings say.
    bool dryRun = false;
    // For a look at the menu: the games are their names alone. No image is read or judged, and the
    // ROM holds nothing but the menu, which must be the built-in one.
    bool menuOnly = false;
    // A cart for the same board: games that are on it stay where they are, and what the new ROM
    // leaves unused keeps its bytes. May be the output itself.
    std::optional<std::filesystem::path> keepPlaces = {};
};

}  // namespace bw
