#include "shell/dialogs/cart_report.h"

#include <algorithm>

#include "builder/output/rom_header.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kMenuUnit = 16;  // KB

std::u16string Number(uint64_t count) {
    return ToWide(std::to_string(count));
}

void AddLine(std::u16string& lines, std::u16string_view line) {
    if (!lines.empty()) lines += u'\n';
    lines += line;
}

}  // namespace

std::u16string CartFactsText(const CartContents& cart, Language language) {
    const CartTables& tables = cart.tables;
    std::u16string facts =
        FormatText(LoadText(TextId::kCartFacts, language), ToWide(BoardName(tables.board)),
                   ToWide(FormatExtension(tables.format)),
                   static_cast<double>(tables.romBytes) / (1024.0 * 1024.0), cart.games.size(),
                   tables.menuUnits * kMenuUnit);
    if (!cart.hasManifest) AddLine(facts, LoadText(TextId::kCartWithoutNotes, language));
    return facts;
}

std::u16string NumberRuns(std::span<const uint32_t> numbers) {
    std::u16string text;
    for (size_t i = 0; i < numbers.size();) {
        size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        if (!text.empty()) text += u", ";
        text += Number(numbers[i]);
        if (last > i) text += (last == i + 1 ? u", " : u"-") + Number(numbers[last]);
        i = last + 1;
    }
    return text;
}

std::u16string ComparisonText(const CartContents& cart, const CartComparison& comparison,
                              const std::filesystem::path& dump, Language language) {
    const auto text = [&](TextId id, const auto&... arguments) {
        return FormatText(LoadText(id, language), arguments...);
    };
    const std::u16string name = PathText(dump.filename());
    std::u16string lines = name + u": ";
    if (comparison.Same()) {
        lines += text(TextId::kCartsAreSame);
    } else {
        lines += text(TextId::kCartsDiffer, comparison.differing, comparison.sectors.size(),
                      comparison.sectorsInAll, comparison.sectorBytes / 1024);
    }
    if (comparison.missingBytes > 0)
        AddLine(lines, text(TextId::kDumpTooShort, name, comparison.missingBytes));
    if (comparison.behindBytes > 0) {
        AddLine(lines, text(comparison.behindErased ? TextId::kErasedBehind : TextId::kOtherBehind,
                            name, comparison.behindBytes));
    }
    if (comparison.menuBytes > 0)
        AddLine(lines, text(TextId::kMenuProgram) + u": " + Number(comparison.menuBytes));
    for (const GameDifference& game : comparison.games) {
        if (game.game >= cart.games.size()) continue;
        AddLine(lines, Number(game.game + uint64_t{1}) + u" " + cart.games[game.game].name + u": " +
                           Number(game.bytes));
    }
    if (!comparison.sectors.empty())
        AddLine(lines, text(TextId::kSectorsThatDiffer) + u": " + NumberRuns(comparison.sectors));
    return lines;
}

bool IsTakenOut(const SplitGame& game) {
    return game.end == SplitEnd::kRight || game.end == SplitEnd::kWrong ||
           game.end == SplitEnd::kNotKnown;
}

std::u16string SplitText(const std::vector<SplitGame>& split, size_t games,
                         const std::filesystem::path& folder, Language language) {
    std::u16string lines = FormatText(LoadText(TextId::kSplitDone, language), PathText(folder),
                                      std::ranges::count_if(split, IsTakenOut), games);
    for (const SplitGame& game : split) {
        if (const std::u16string line = SplitProblemText(game, language); !line.empty())
            AddLine(lines, line);
    }
    return lines;
}

}  // namespace bw
