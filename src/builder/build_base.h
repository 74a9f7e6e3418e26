// What builds and exports share: the user's words, the design, and the games.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "builder/input/build_context.h"
#include "builder/layout/build_checks.h"
#include "support/diagnostic.h"
#include "support/file_problem.h"

namespace bw {

class BuildBase {
  public:
    explicit BuildBase(const BuildContext& context)
        : context_(context), user_(context.user), language_(context.user.UiLanguage()) {}

  protected:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    void ShowError(std::u16string_view text) const;
    void ShowFileProblem(const FileProblem& problem) const;
    // True if the check has nothing to say; else the user has read it.
    bool Passes(const std::optional<Diagnostic>& fault) const;
    bool Passes(const std::vector<Diagnostic>& faults) const;
    // Tells that the work is done, and shows the result if the user wants to see it.
    void AskToShow(const std::filesystem::path& path) const;

    // The deep reading of all checked games, numbered from 0. False if the user gave up.
    bool ReadGames(NameRules rules);
    // Rounds the sizes and refuses games that the board can't run.
    bool PrepareGames(BoardType board);
    // Tells of games that a build takes in though data is missing. False if the user doesn't want
    // it.
    bool AcceptsIncomplete(std::span<const MulticartItem> items) const;
    // Which games share their saves, if any do.
    void TellOfSaves(BoardType board) const;
    // Counts the banks of the tables and refuses what the menu has no room for.
    bool CountBanks(BoardType board, uint32_t menuPrgUnits, const std::filesystem::path& folder);
    void LoadDesign() const;

    const BuildContext& context_;
    BuildUser& user_;
    Language language_;
    std::vector<std::u16string> names_;
    std::vector<MulticartItem> items_;
    std::vector<Diagnostic> unfit_;  // games that the board can't run
    BankLimits banks_{};
};

}  // namespace bw
