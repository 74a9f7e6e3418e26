#include "builder/layout/build_checks.h"

#include <algorithm>
#include <array>
#include <utility>

#include "language/problem_text.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kGameErrorLimit = 20;
constexpr uint32_t kWhiteStyle = 1;

// A file that couldn't be read has no name yet.
std::u16string NameOf(const MulticartItem& item) {
    return VisibleText(item.name.empty() ? NameWithoutExtension(PathText(item.path)) : item.name);
}

// A file that is gone counts as no valid one; one that is there and can't be read is not to be
// taken for damaged.
std::u16string NotValidText(const MulticartItem& item, Language language) {
    const std::optional<FileProblem> unread = WhyUnread(item.path);
    if (unread && unread->kind != FileProblem::Kind::kNotFound) {
        return FormatText(u"%d.%s %s", item.row, NameOf(item), ProblemText(*unread, language));
    }
    return FormatText(LoadText(TextId::kGameNotValid, language), item.row, NameOf(item));
}

std::u16string GameError(const MulticartItem& item, BoardType board, Language language) {
    const auto text = [&](TextId id, auto... numbers) {
        return FormatText(LoadText(id, language), item.row, NameOf(item), numbers...);
    };
    switch (FindGameFault(item, board)) {
        case GameFault::kNone:
            return {};
        case GameFault::kNotValid:
            return NotValidText(item, language);
        case GameFault::kMapper:
            return text(TextId::kGameMapperNotSupported, item.mapper);
        case GameFault::kTrainer:
            return text(TextId::kGameTrainerNotSupported);
        case GameFault::kSize:
            return text(TextId::kGameSizesNotSupported, item.prgCount * 16, item.chrCount * 8);
    }
    return {};
}

Diagnostic Error(std::u16string text) {
    return {Severity::kError, std::move(text)};
}

// "7.Name", or the menu's file.
std::u16string ItemText(const MulticartItem& item) {
    return item.isMenu != 0 ? u"menu.nes" : FormatText(u"%d.%s", item.row, NameOf(item));
}

}  // namespace

BoardLimit LimitOf(BoardType board) {
    constexpr uint32_t kMegabyte = 1024 * 1024;
    return board == BoardType::kCoolgirl ? BoardLimit{128 * kMegabyte, 1024}
                                         : BoardLimit{32 * kMegabyte, 1024};
}

BankLimits BankLimitsOf(uint32_t menuPrgUnits) {
    switch (menuPrgUnits) {
        case 16:
            return {10, 8, 8};
        case 32:
            return {16, 12, 12};
        default:  // also for menus of 64 and 128 units
            return {5, 4, 4};
    }
}

std::optional<Diagnostic> CheckTableBanks(const BankLimits& used, uint32_t menuPrgUnits,
                                          Language language) {
    const BankLimits limits = BankLimitsOf(menuPrgUnits);
    if (used.names <= limits.names && used.data <= limits.data &&
        used.finalData <= limits.finalData) {
        return std::nullopt;
    }
    return Error(FormatText(LoadText(TextId::kOutputOverflow, language), used.names, limits.names,
                            used.data, limits.data, used.finalData, limits.finalData));
}

GameFault FindGameFault(const MulticartItem& item, BoardType board) {
    if (item.valid == 0) return GameFault::kNotValid;
    const MapperCapability* row = FindMapperCapability(item.mapper);
    if (row == nullptr || !BoardTakesMapper(board, item.mapper)) return GameFault::kMapper;
    if (item.trainer != 0) return GameFault::kTrainer;
    const bool sizes =
        row->prgSizes.contains(item.prgCount) && row->chrSizes.contains(item.chrUnits);
    return sizes ? GameFault::kNone : GameFault::kSize;
}

std::vector<Diagnostic> CheckGames(std::span<const MulticartItem> items, BoardType board,
                                   Language language) {
    std::vector<Diagnostic> faults;
    for (const MulticartItem& item : items) {
        const std::u16string error = GameError(item, board, language);
        if (error.empty()) continue;
        faults.push_back({Severity::kError, error, {.row = item.row, .name = NameOf(item)}});
        if (faults.size() == kGameErrorLimit) break;
    }
    return faults;
}

std::optional<Diagnostic> CheckRomLimits(const LayoutResult& layout, BoardType board,
                                         Language language) {
    const BoardLimit limit = LimitOf(board);
    const size_t games = layout.items.empty() ? 0 : layout.items.size() - 1;
    if (layout.romSize <= limit.romBytes && games <= limit.games) return std::nullopt;
    return Error(FormatText(LoadText(TextId::kRomLimits, language), BoardName(board),
                            limit.romBytes / 1048576, layout.romSize / 1048576.0, limit.games,
                            games));
}

std::optional<Diagnostic> CheckMenu(const MulticartItem& menu, Language language) {
    constexpr std::array<uint32_t, 5> kSizes{8, 16, 32, 64, 128};
    if (menu.valid != 0 && menu.chrCount == 0 &&
        std::find(kSizes.begin(), kSizes.end(), menu.prgCount) != kSizes.end()) {
        return std::nullopt;
    }
    return Error(FormatText(LoadText(TextId::kMenuRomError, language),
                            VisibleText(PathText(menu.path)), menu.mapper, menu.prgCount * 16,
                            menu.chrCount * 8) +
                 u"\r\n");
}

size_t PageNumberColumns(const BuildSettings& settings, size_t games) {
    const size_t pages = (games + settings.PageSize - 1) / std::max<size_t>(settings.PageSize, 1);
    return 2 * std::to_string(pages).size() + 1;
}

std::vector<MisplacedPart> FindMisplacedParts(const BuildSettings& settings,
                                              const ScreenPlaces& places, size_t games,
                                              Language language) {
    constexpr uint32_t kScreen = 0x2000;  // in video memory
    constexpr uint32_t kScreenEnd = 0x23C0;
    struct Place {
        ScreenPart part;
        TextId name;
        uint32_t address;
        size_t columns;  // taken without regard to the right edge
    };
    std::vector<Place> written{
        {ScreenPart::kCaption, TextId::kCaption, places.caption, 1},
        {ScreenPart::kList, TextId::kListOfGames, places.list, 1},
    };
    if (settings.PageNumber) {
        written.push_back({ScreenPart::kPageNumber, TextId::kPageNumber, places.pageNumber,
                           PageNumberColumns(settings, games)});
    }
    std::vector<MisplacedPart> faults;
    for (const Place& place : written) {
        const bool inside = place.address >= kScreen && place.address < kScreenEnd &&
                            place.address + place.columns <= kScreenEnd;
        if (inside) continue;
        faults.push_back(
            {place.part, Error(FormatText(LoadText(TextId::kPlaceOutsideScreen, language),
                                          LoadText(place.name, language), place.address))});
    }
    return faults;
}

std::optional<Diagnostic> CheckScreenPlaces(const BuildSettings& settings,
                                            const DesignStore& design, size_t games,
                                            Language language) {
    if (!settings.CustomEnable) return std::nullopt;
    const ScreenPlaces places{design.CaptionPpuAddr, design.ItemPpuAddr, design.PageNumberPpuAddr};
    std::vector<MisplacedPart> faults = FindMisplacedParts(settings, places, games, language);
    return faults.empty() ? std::nullopt : std::optional(std::move(faults.front().fault));
}

uint32_t RoomForNames(const BuildSettings& settings, uint32_t itemPpuAddr) {
    constexpr uint32_t kRows = 30;
    uint32_t firstRow = settings.ShowStyle == kWhiteStyle || settings.PageSize <= 10 ? 6 : 5;
    if (settings.CustomEnable) firstRow = (itemPpuAddr & 0x03FF) / 32;
    const uint32_t step = settings.NameInsertRow ? 2 : 1;
    return firstRow < kRows ? (kRows - firstRow + step - 1) / step : 0;
}

std::optional<Diagnostic> CheckScreenRows(const BuildSettings& settings, uint32_t itemPpuAddr,
                                          size_t games, Language language) {
    if (!settings.CustomEnable && settings.ShowStyle == kWhiteStyle && settings.PageSize != 10 &&
        settings.PageSize != 20) {
        return Error(LoadText(TextId::kWhiteStylePageSizes, language));
    }
    const auto names = static_cast<uint32_t>(std::min<size_t>(settings.PageSize, games));
    const uint32_t room = RoomForNames(settings, itemPpuAddr);
    if (names <= room) return std::nullopt;
    return Error(FormatText(LoadText(TextId::kMoreNamesThanRows, language), room, names));
}

std::optional<Diagnostic> CheckConflicts(const LayoutResult& layout, Language language) {
    const std::optional<LayoutConflict> conflict = FindLayoutConflict(layout);
    if (!conflict) return std::nullopt;
    return Error(FormatText(LoadText(TextId::kDataConflict, language), ItemText(*conflict->first),
                            ItemText(*conflict->second)));
}

}  // namespace bw
