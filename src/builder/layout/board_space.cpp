#include "builder/layout/board_space.h"

#include <set>
#include <string>

#include "builder/layout/board_fit.h"
#include "builder/layout/build_checks.h"
#include "builder/layout/fit_games.h"
#include "support/text.h"

namespace bw {
namespace {

// "16, 32, 64"; sizes in KB.
std::string SizeList(const std::set<uint32_t>& units, uint32_t kilobytes) {
    std::string list;
    for (const uint32_t size : units) {
        list += (list.empty() ? "" : ", ") + std::to_string(size * kilobytes);
    }
    return list;
}

// Counts in the units of the header.
std::u16string SizeWords(uint32_t mapper, uint32_t prg, uint32_t chr, Language language) {
    const auto words = [&](const char* what, uint32_t count, const std::set<uint32_t>& sizes,
                           uint32_t unit) {
        const uint32_t kilobytes = unit / 1024;
        return FormatText(LoadText(TextId::kMapperSizeImpossible, language), mapper, what,
                          count * kilobytes, SizeList(sizes, kilobytes));
    };
    const MapperCapability* row = FindMapperCapability(mapper);
    return row->prgSizes.contains(prg) ? words("CHR", chr, row->chrSizes, kChrUnit)
                                       : words("PRG", prg, row->prgSizes, kPrgUnit);
}

std::u16string MapperWords(uint32_t mapper, BoardType board, Language language) {
    if (board == BoardType::kCoolgirl) {
        return FormatText(LoadText(TextId::kMapperNotSupported, language), mapper);
    }
    return FormatText(LoadText(TextId::kMapperNotAmongSupported, language), mapper);
}

// Why the board can't run the game; empty if it can.
std::u16string FaultWords(const InesHeader& header, BoardType board, Language language) {
    const MulticartItem item = ItemOfHeader(header);
    switch (FindGameFault(item, board)) {
        case GameFault::kMapper:
            return MapperWords(item.mapper, board, language);
        case GameFault::kTrainer:
            return LoadText(TextId::kTrainerNotSupported, language);
        case GameFault::kSize:
            return SizeWords(header.Mapper(), item.prgCount, item.chrCount, language);
        case GameFault::kNotValid:
        case GameFault::kNone:
            break;
    }
    // The list's columns go by the enlarged sizes of a NES 2.0 header, which a build doesn't read.
    const bool inColumn =
        board == BoardType::kCoolgirl ? CoolgirlSupported(header) : CoolboySupported(header);
    return inColumn ? std::u16string()
                    : SizeWords(header.Mapper(), header.PrgCount(), header.ChrCount(), language);
}

}  // namespace

BoardSpace EstimateSpace(const GameList& games, const BuildSettings& settings, BoardType board) {
    const BoardFit fit = MeasureFit(games, settings, board);
    return {.usedBytes = fit.usedBytes,
            .limitBytes = fit.limitBytes,
            .games = fit.shares.size(),
            .gameLimit = fit.gameLimit,
            .unfit = fit.shares.size() - fit.games};
}

std::optional<uint64_t> GameSpan(const GameEntry& entry, BoardType board) {
    const std::optional<MulticartItem> item = FitItem(entry.header, board);
    if (!item) return std::nullopt;
    return uint64_t{item->prgSpan} + item->chrSpan;
}

std::u16string WhyUnfit(const GameEntry& entry, BoardType board, Language language) {
    if (!entry.headerRead || !entry.HasValidHeader()) {
        return LoadText(TextId::kFileUnreadableOrNoNes, language);
    }
    return FaultWords(entry.header, board, language);
}

std::u16string WhyUnfit(const GameEntry& entry, Language language) {
    if (!entry.headerRead || !entry.HasValidHeader()) {
        return WhyUnfit(entry, BoardType::kCoolboy, language);
    }
    std::u16string lines;
    const auto add = [&](std::u16string_view boards, BoardType board) {
        const std::u16string words = FaultWords(entry.header, board, language);
        if (!words.empty()) {
            lines += std::u16string(lines.empty() ? u"" : u"\n") + std::u16string(boards) +
                     LoadText(TextId::kColon, language) + words;
        }
    };
    add(u"COOLBOY, MINDKIDS", BoardType::kCoolboy);
    add(u"COOLGIRL", BoardType::kCoolgirl);
    return lines;
}

}  // namespace bw
