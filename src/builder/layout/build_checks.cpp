#include "builder/layout/build_checks.h"

#include <algorithm>
#include <array>

#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kGameErrorLimit = 20;

std::u16string GameError(const MulticartItem& item, BoardType board, Language language) {
    const auto text = [&](TextId id, auto... numbers) {
        // A file that couldn't be read has no name yet.
        const std::u16string name =
            item.name.empty() ? NameWithoutExtension(PathText(item.path)) : item.name;
        return FormatText(LoadText(id, language), item.index + 1, name, numbers...);
    };
    switch (FindGameFault(item, board)) {
        case GameFault::kNone:
            return {};
        case GameFault::kNotValid:
            return text(TextId::kGameNotValid);
        case GameFault::kMapper:
            return text(TextId::kGameMapperNotSupported, item.mapper);
        case GameFault::kTrainer:
            return text(TextId::kGameTrainerNotSupported);
        case GameFault::kSize:
            return text(TextId::kGameSizesNotSupported, item.prgCount * 16, item.chrCount * 8);
    }
    return {};
}

// "7.Name", or the menu's file.
std::u16string ItemText(const MulticartItem& item) {
    return item.isMenu != 0 ? u"menu.nes" : FormatText(u"%d.%s", item.index + 1, item.name);
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

CheckText CheckTableBanks(const BankLimits& used, uint32_t menuPrgUnits, Language language) {
    const BankLimits limits = BankLimitsOf(menuPrgUnits);
    if (used.names <= limits.names && used.data <= limits.data &&
        used.finalData <= limits.finalData) {
        return std::nullopt;
    }
    return FormatText(LoadText(TextId::kOutputOverflow, language), used.names, limits.names,
                      used.data, limits.data, used.finalData, limits.finalData);
}

GameFault FindGameFault(const MulticartItem& item, BoardType board) {
    if (item.valid == 0) {
        return GameFault::kNotValid;
    }
    const MapperCapability* row = FindMapperCapability(item.mapper);
    if (row == nullptr || !BoardTakesMapper(board, item.mapper)) {
        return GameFault::kMapper;
    }
    if (item.trainer != 0) {
        return GameFault::kTrainer;
    }
    const bool sizes =
        row->prgSizes.contains(item.prgCount) && row->chrSizes.contains(item.chrUnits);
    return sizes ? GameFault::kNone : GameFault::kSize;
}

CheckText CheckGames(std::span<const MulticartItem> items, BoardType board, Language language) {
    std::u16string text;
    int errors = 0;
    for (const MulticartItem& item : items) {
        const std::u16string error = GameError(item, board, language);
        if (!error.empty()) {
            text += error + u"\r\n";
            if (++errors == kGameErrorLimit) {
                break;
            }
        }
    }
    return errors == 0 ? std::nullopt : CheckText(std::move(text));
}

CheckText CheckRomLimits(const LayoutResult& layout, BoardType board, Language language) {
    const BoardLimit limit = LimitOf(board);
    const size_t games = layout.items.empty() ? 0 : layout.items.size() - 1;
    if (layout.romSize <= limit.romBytes && games <= limit.games) {
        return std::nullopt;
    }
    return FormatText(LoadText(TextId::kRomLimits, language), BoardName(board),
                      limit.romBytes / 1048576, layout.romSize / 1048576.0, limit.games, games);
}

CheckText CheckMenu(const MulticartItem& menu, Language language) {
    constexpr std::array<uint32_t, 5> kSizes{8, 16, 32, 64, 128};
    if (menu.valid != 0 && menu.chrCount == 0 &&
        std::find(kSizes.begin(), kSizes.end(), menu.prgCount) != kSizes.end()) {
        return std::nullopt;
    }
    return FormatText(LoadText(TextId::kMenuRomError, language), PathText(menu.path), menu.mapper,
                      menu.prgCount * 16, menu.chrCount * 8) +
           u"\r\n";
}

CheckText CheckScreenPlaces(const BuildSettings& settings, const DesignStore& design, size_t games,
                            Language language) {
    constexpr uint32_t kScreen = 0x2000;  // in video memory
    constexpr uint32_t kScreenEnd = 0x23C0;
    if (!settings.CustomEnable) {
        return std::nullopt;
    }
    const size_t pages = (games + settings.PageSize - 1) / std::max<size_t>(settings.PageSize, 1);
    const size_t digits = std::to_string(pages).size();
    struct Place {
        TextId name;
        uint32_t address;
        size_t columns;  // taken without regard to the right edge
        bool shown;
    };
    const std::array places{
        Place{TextId::kCaption, design.CaptionPpuAddr, 1, true},
        Place{TextId::kListOfGames, design.ItemPpuAddr, 1, true},
        // This page, a slash, the number of pages.
        Place{TextId::kPageNumber, design.PageNumberPpuAddr, 2 * digits + 1, settings.PageNumber},
    };
    for (const Place& place : places) {
        const bool inside = place.address >= kScreen && place.address < kScreenEnd &&
                            place.address + place.columns <= kScreenEnd;
        if (place.shown && !inside) {
            return FormatText(LoadText(TextId::kPlaceOutsideScreen, language),
                              LoadText(place.name, language), place.address);
        }
    }
    return std::nullopt;
}

CheckText CheckScreenRows(const BuildSettings& settings, uint32_t itemPpuAddr, size_t games,
                          Language language) {
    constexpr uint32_t kWhite = 1;
    constexpr uint32_t kRows = 30;
    if (!settings.CustomEnable && settings.ShowStyle == kWhite && settings.PageSize != 10 &&
        settings.PageSize != 20) {
        return LoadText(TextId::kWhiteStylePageSizes, language);
    }
    uint32_t firstRow = settings.ShowStyle == kWhite || settings.PageSize <= 10 ? 6 : 5;
    if (settings.CustomEnable) {
        firstRow = (itemPpuAddr & 0x03FF) / 32;
    }
    const auto names = static_cast<uint32_t>(std::min<size_t>(settings.PageSize, games));
    const uint32_t step = settings.NameInsertRow ? 2 : 1;
    const uint32_t room = firstRow < kRows ? (kRows - firstRow + step - 1) / step : 0;
    if (names <= room) {
        return std::nullopt;
    }
    return FormatText(LoadText(TextId::kMoreNamesThanRows, language), room, names);
}

CheckText CheckConflicts(const LayoutResult& layout, Language language) {
    const std::optional<LayoutConflict> conflict = FindLayoutConflict(layout);
    if (!conflict) {
        return std::nullopt;
    }
    return FormatText(LoadText(TextId::kDataConflict, language), ItemText(*conflict->first),
                      ItemText(*conflict->second));
}

}  // namespace bw
