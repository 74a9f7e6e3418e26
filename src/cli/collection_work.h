// What a command does to its games before it uses them: finds missing files, keeps the best
// versions, gives new names.
#pragma once

#include <optional>

#include "cli/arguments.h"
#include "cli/terminal_user.h"
#include "list/collection/name_changes.h"
#include "list/console_name.h"
#include "list/game_list.h"

namespace bw {

class CollectionWork {
  public:
    CollectionWork(GameList& games, const Arguments& arguments, TerminalUser& user)
        : games_(games), arguments_(arguments), user_(user) {}

    // The options that ask for it decide. False if the user has ended it, or a warning has.
    bool FindMissing();
    void SkipDamaged();
    // Of the games that take part; the other versions leave the list.
    bool KeepBest();
    // False as well if a database is of no use.
    bool Rename(const ConsoleMenu& menu);

  private:
    std::u16string Text(TextId id) const;
    // False if the user has ended it.
    bool ReadSums(const std::vector<uint32_t>& rows);
    bool NameFrom(const std::filesystem::path& file, std::vector<uint32_t>& rows);
    void Take(const std::vector<NameChange>& changes);
    // One warning for each line, but for the last ones of many.
    bool WarnOfAll(const std::vector<std::u16string>& lines);
    bool Ended();

    GameList& games_;
    const Arguments& arguments_;
    TerminalUser& user_;
    RowSums sums_;  // of all rows, once read
};

}  // namespace bw
