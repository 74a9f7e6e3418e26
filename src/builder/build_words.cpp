#include "builder/build_words.h"

#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kRunsTold = 20;  // of neighbouring sectors; reports have them all

}  // namespace

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

std::u16string OverText(const LayoutResult& layout, BoardType board, Language language) {
    const BoardLimit limit = LimitOf(board);
    const size_t games = layout.items.empty() ? 0 : layout.items.size() - 1;
    std::u16string text;
    if (layout.romSize > limit.romBytes) {
        text = FormatText(LoadText(TextId::kOverByBytes, language),
                          (layout.romSize - limit.romBytes) / 1048576.0);
    }
    if (games > limit.games) {
        text += (text.empty() ? u"" : u" ") +
                FormatText(LoadText(TextId::kOverByGames, language), games - limit.games);
    }
    return text;
}

std::u16string ChangesText(const SectorChanges& changes, Language language) {
    constexpr uint32_t kKilobytes = SectorChanges::kBytes / 1024;
    const std::vector<uint32_t>& changed = changes.changed;
    if (changed.empty()) {
        return FormatText(LoadText(TextId::kNoSectorChanged, language), changes.sectors,
                          kKilobytes);
    }
    std::u16string list;
    size_t runs = 0;
    for (size_t first = 0, last = 0; first < changed.size(); first = last + 1) {
        if (++runs > kRunsTold) {
            list += u", ...";
            break;
        }
        last = first;
        while (last + 1 < changed.size() && changed[last + 1] == changed[last] + 1)
            ++last;
        list += FormatText(list.empty() ? u"%d" : u", %d", changed[first]);
        if (last != first) list += FormatText(u"-%d", changed[last]);
    }
    return FormatText(LoadText(TextId::kSectorsChanged, language), changed.size(), changes.sectors,
                      kKilobytes, list);
}

std::u16string BuildStoppedText(Language language) {
    return LoadText(TextId::kStoppedNothingWritten, language);
}

}  // namespace bw
