#include "cli/game_command.h"

#include "builder/build_words.h"
#include "cli/fitting.h"
#include "cli/unsupported_games.h"
#include "cli/written_files.h"
#include "language/problem_text.h"
#include "support/text.h"

namespace bw {

GameCommand::GameCommand(const Arguments& arguments, const std::filesystem::path& output)
    : arguments_(arguments),
      language_(SystemLanguage()),
      user_(arguments, language_),
      gathered_(GatherGames(arguments.inputs, output, language_)) {
    for (const Diagnostic& diagnostic : gathered_.diagnostics) {
        if (diagnostic.severity == Severity::kWarning) user_.Warn(FullText(diagnostic));
    }
    for (const Diagnostic& diagnostic : gathered_.diagnostics) {
        if (diagnostic.severity == Severity::kError) user_.Error(FullText(diagnostic));
    }
    user_.Detail(FormatText(Text(TextId::kGamesGathered), Games().size(), CountChecked(Games())));
}

bool GameCommand::SparesFiles() {
    const std::optional<Diagnostic> overwritten = FindOverwritten(arguments_, gathered_, language_);
    return TellProblem(user_, overwritten) == kDone;
}

bool GameCommand::Collected() {
    // Games that were found mustn't be written over, nor those that leave the list.
    if (!collection_.FindMissing() || !SparesFiles()) return false;
    collection_.SkipDamaged();
    if (arguments_.skipUnsupported) {
        for (const std::u16string& line :
             UncheckUnsupported(gathered_.games, arguments_.board, language_)) {
            user_.Note(line);
        }
    }
    return collection_.KeepBest();
}

bool GameCommand::FitsBoard() {
    if (FitToBoard(gathered_.games, arguments_, user_)) return true;
    user_.Note(BuildStoppedText(language_));
    return false;
}

bool GameCommand::Done(const FileResult<>& result) {
    if (!result) user_.Error(ProblemText(result.Problem(), language_));
    return static_cast<bool>(result);
}

}  // namespace bw
