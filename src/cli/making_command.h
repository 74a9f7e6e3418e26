// What the commands have in common that build something of games.
#pragma once

#include <filesystem>
#include <memory>

#include "builder/input/build_context.h"
#include "cli/game_command.h"
#include "designer/model/design_document.h"
#include "designer/model/design_store.h"
#include "settings/settings_store.h"

namespace bw {

class MakingCommand : protected GameCommand {
  protected:
    // `output`: see GameCommand.
    MakingCommand(const Arguments& arguments, const std::filesystem::path& output)
        : GameCommand(arguments, output) {}

    // What the designer's window does with a file: open with the defaults, load, close.
    bool LoadScreen();
    // Behind LoadScreen, which tells where names stand.
    bool NamesGames();
    // False if a warning has ended the command.
    bool UsesAllOptions();
    BuildContext Context();
    // What to do about games that the board can't run, if it is those that were refused.
    void TellWayOut();

  private:
    // What the console shows otherwise than a designer may expect.
    void TellWhatLooksDifferent(const DesignDocument& document);

    DesignStore design_;
    std::unique_ptr<SettingsStore> store_ = MakeMemoryStore();
};

}  // namespace bw
