// A cart to look at: the menu with the names of a list, and no games behind them.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "builder/input/build_settings.h"
#include "designer/model/design_document.h"
#include "language/language.h"
#include "list/game_list.h"
#include "support/result.h"

namespace bw {

struct PreviewPlan {
    std::shared_ptr<const GameList> games;  // names and checks count
    BuildSettings settings;                 // an external menu is left aside
    DesignDocument design;
    Language language = Language::kEnglish;
};

// Builds it on the road of all builds and writes it to `rom` (.nes), which stays as it was where
// that fails. `workFolder` is made for it and removed. The problem is what the real build would be
// refused for, in words.
Result<void, std::u16string> BuildPreviewCart(PreviewPlan plan,
                                              const std::filesystem::path& workFolder,
                                              const std::filesystem::path& rom);

}  // namespace bw
