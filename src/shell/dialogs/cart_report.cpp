#include "shell/dialogs/cart_report.h"

#include <algorithm>

#include "builder/output/rom_header.h"
#include "language/problem_text.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kMenuUnit = 16;  // KB

std::u16string Bytes(uint64_t count) {
    return ToWide(std::to_string(count));
}

void AddLine(std::u16string& lines, std::u16string_view line) {
    if (!lines.empty()) lines += u'\n';
    lines += line;
}

// What is to be said of a game that isn't out and right; nothing else.
std::u16string EndText(const SplitGame& game, Language language) {
    const auto text = [&](TextId id) {
        return FormatText(LoadText(id, language), PathText(game.file.filename()));
    };
    switch (game.end) {
        case SplitEnd::kWrong:
            return text(TextId::kCartWrongSum);
        case SplitEnd::kCutShort:
            return text(TextId::kCartCutShort);
        case SplitEnd::kExists:
            return text(TextId::kCartNameTaken);
        case SplitEnd::kNotWritten:
            return game.problem ? ProblemText(*game.problem, language) : std::u16string();
        default:
            return {};
    }
}

}  // namespace

std::u16string CartFactsText(const CartContents& cart, Language language) {
    const CartTables& tables = cart.tables;
    return FormatText(LoadText(TextId::kCartFacts, language), ToWide(BoardName(tables.board)),
                      ToWide(FormatExtension(tables.format)),
                      static_cast<double>(tables.romBytes) / (1024.0 * 1024.0), cart.games.size(),
                      tables.menuUnits * kMenuUnit);
}

std::u16string NumberRuns(std::span<const uint32_t> numbers) {
    std::u16string text;
    for (size_t i = 0; i < numbers.size();) {
        size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        if (!text.empty()) text += u", ";
        text += Bytes(numbers[i]);
        if (last > i) text += (last == i + 1 ? u", " : u"-") + Bytes(numbers[last]);
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
    std::u16string lines;
    if (comparison.Same()) {
        lines = text(TextId::kCartSame, name);
    } else {
        lines = text(TextId::kCartCompared, name, Bytes(comparison.differing),
                     comparison.sectors.size(), comparison.sectorsInAll,
                     comparison.sectorBytes / 1024, comparison.games.size());
    }
    if (comparison.missingBytes > 0)
        AddLine(lines, text(TextId::kCartDumpShort, Bytes(comparison.missingBytes)));
    if (comparison.behindBytes > 0 && !comparison.behindErased)
        AddLine(lines, text(TextId::kCartBehind, Bytes(comparison.behindBytes)));
    if (comparison.menuBytes > 0)
        AddLine(lines, text(TextId::kCartMenuDiffers, Bytes(comparison.menuBytes)));
    for (const GameDifference& game : comparison.games) {
        if (game.game >= cart.games.size()) continue;
        AddLine(lines, Bytes(game.game + uint64_t{1}) + u" " + cart.games[game.game].name + u": " +
                           Bytes(game.bytes));
    }
    if (!comparison.sectors.empty())
        AddLine(lines, text(TextId::kCartSectors, NumberRuns(comparison.sectors)));
    return lines;
}

bool IsTakenOut(const SplitGame& game) {
    return game.end == SplitEnd::kRight || game.end == SplitEnd::kWrong ||
           game.end == SplitEnd::kNotKnown;
}

std::u16string SplitText(const std::vector<SplitGame>& split, const std::filesystem::path& folder,
                         Language language) {
    std::u16string lines =
        FormatText(LoadText(TextId::kCartTakenOut, language),
                   std::ranges::count_if(split, IsTakenOut), split.size(), PathText(folder));
    for (const SplitGame& game : split) {
        if (const std::u16string line = EndText(game, language); !line.empty())
            AddLine(lines, line);
    }
    return lines;
}

}  // namespace bw
