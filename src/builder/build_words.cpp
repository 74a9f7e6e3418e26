#include "builder/build_words.h"

#include "support/text.h"

namespace bw {

std::u16string StageText(BuildStage stage, Language language) {
    switch (stage) {
        case BuildStage::kReadGames:
            return LoadText(TextId::kReadingGames, language);
        case BuildStage::kWriteTables:
            return LoadText(TextId::kWritingTables, language);
        case BuildStage::kAssembleMenu:
            return LoadText(TextId::kAssemblingMenu, language);
        default:
            return LoadText(TextId::kWritingRom, language);
    }
}

std::u16string BuildSummary(const BuildOutcome& outcome, Language language) {
    return FormatText(LoadText(TextId::kRomWritten, language),
                      VisibleText(PathText(outcome.output)), BoardName(outcome.board),
                      outcome.names.size(), outcome.layout.romSize / 1048576.0);
}

std::u16string BuildStoppedText(Language language) {
    return LoadText(TextId::kStoppedNothingWritten, language);
}

}  // namespace bw
