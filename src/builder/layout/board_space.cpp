#include "builder/layout/board_space.h"

#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "builder/layout/bank_layout.h"
#include "builder/layout/build_checks.h"
#include "support/text.h"

namespace bw {
namespace {

// As a build would read it, but for the data: its sizes are those of bytes 4 and 5 alone, also in
// a NES 2.0 header. A file that can't be read has PRG size 0 here, which no board takes.
MulticartItem ItemOf(const InesHeader& header) {
    MulticartItem item;
    item.valid = header.HasMagic() ? 1 : 0;
    item.mapper = header.Mapper();
    item.trainer = header.Trainer() ? 1 : 0;
    item.SetPrgCount(header.PrgLow());
    item.SetPrgUnits(header.PrgLow());
    item.SetChrCount(header.ChrLow());
    item.SetChrUnits(header.ChrLow());
    return item;
}

// The item after the rounding of a build; nothing if the board can't run the game.
std::optional<MulticartItem> FitItem(const InesHeader& header, BoardType board) {
    MulticartItem item = ItemOf(header);
    const std::span one(&item, 1);
    RoundChrUnits(one);
    if (FindGameFault(item, board) != GameFault::kNone) return std::nullopt;
    if (board != BoardType::kCoolgirl) ApplyPrgMinimum(one);
    return item;
}

uint64_t SpanOf(const MulticartItem& item) {
    return uint64_t{item.prgSpan} + item.chrSpan;
}

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
    MulticartItem item = ItemOf(header);
    RoundChrUnits({&item, 1});
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
    const BoardLimit limit = LimitOf(board);
    BoardSpace space{.limitBytes = limit.romBytes, .gameLimit = limit.games};
    std::vector<MulticartItem> items;
    for (const GameEntry& entry : games) {
        if (!entry.checked) continue;
        ++space.games;
        std::optional<MulticartItem> item = FitItem(entry.header, board);
        if (!item) {
            ++space.unfit;
            continue;
        }
        item->index = static_cast<uint32_t>(space.games);
        // Numbers that are unlike each other: no game shares its data with another one.
        item->prgCrc = 2 * item->index;
        item->chrCrc = item->chrSpan == 0 ? 0 : 2 * item->index + 1;
        space.usedBytes += SpanOf(*item);
        if (space.games <= kCheckedLimit) items.push_back(*std::move(item));
    }
    MulticartItem menu;
    menu.SetPrgUnits(settings.MenuUnits(board));
    if (space.games > kCheckedLimit) {
        space.usedBytes += menu.prgSpan;
    } else {
        space.usedBytes = Allocate(std::move(menu), std::move(items), board).romSize;
    }
    return space;
}

std::optional<uint64_t> GameSpan(const GameEntry& entry, BoardType board) {
    const std::optional<MulticartItem> item = FitItem(entry.header, board);
    return item ? std::optional(SpanOf(*item)) : std::nullopt;
}

std::u16string WhyUnfit(const GameEntry& entry, Language language) {
    if (!entry.headerRead || !entry.HasValidHeader()) {
        return LoadText(TextId::kFileUnreadableOrNoNes, language);
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
