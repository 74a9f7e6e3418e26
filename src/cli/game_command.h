// What all commands on games do first: gather the games, and tell of what is wrong with the inputs.
#pragma once

#include <filesystem>

#include "cli/arguments.h"
#include "cli/collection_work.h"
#include "cli/inputs.h"
#include "cli/terminal_user.h"
#include "support/diagnostic.h"
#include "support/file_problem.h"

namespace bw {

class GameCommand {
  public:
    // `output`: what the games must not be taken from, as GatherGames has it.
    explicit GameCommand(const Arguments& arguments, const std::filesystem::path& output = {});

  protected:
    static constexpr int kDone = 0;
    static constexpr int kFailed = 1;

    const GameList& Games() const { return gathered_.games; }
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    // True if all inputs could be read, and no warning ended the command.
    bool Gathered() const { return gathered_.FirstError() == nullptr && !user_.Refused(); }
    // What the options ask of the games before they are used, but for their names, and SparesFiles.
    // False if that has ended the command.
    bool Collected();
    // The names that the options ask for, as `menu` has room for them.
    bool Renamed(const ConsoleMenu& menu) { return collection_.Rename(menu); }
    // Leaves games out and takes games in as the options have it; false if the user has stopped it.
    bool FitsBoard();
    // True if it is done; else the user has read why not.
    bool Done(const FileResult<>& result);

  private:
    // True if nothing of the user's would be written over; else the user has read what.
    bool SparesFiles();

  protected:
    const Arguments& arguments_;
    Language language_;
    TerminalUser user_;
    GatheredGames gathered_;
    CollectionWork collection_{gathered_.games, arguments_, user_};
};

}  // namespace bw
