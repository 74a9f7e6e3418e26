// What a build refuses, and the words for it: whole sentences that name what they are about.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "builder/input/build_settings.h"
#include "builder/layout/bank_layout.h"
#include "designer/model/design_store.h"
#include "language/language.h"
#include "support/diagnostic.h"

namespace bw {

// What a board can hold.
struct BoardLimit {
    uint32_t romBytes;
    uint32_t games;
};
BoardLimit LimitOf(BoardType board);

// How many 8 KB banks the menu has for each of the generated tables.
struct BankLimits {
    uint32_t names;
    uint32_t data;
    uint32_t finalData;
};
BankLimits BankLimitsOf(uint32_t menuPrgUnits);

// Tables that don't fit the menu.
std::optional<Diagnostic> CheckTableBanks(const BankLimits& used, uint32_t menuPrgUnits,
                                          Language language);

// Why a board can't run a game. The build's own rule, stricter than what the list's columns show.
enum class GameFault : uint8_t { kNone, kNotValid, kMapper, kTrainer, kSize };
// PRG by the count of the file, CHR by the rounded units.
GameFault FindGameFault(const MulticartItem& item, BoardType board);

// Games that the board can't run, 20 at most. The row is that of the list.
std::vector<Diagnostic> CheckGames(std::span<const MulticartItem> items, BoardType board,
                                   Language language);

// A ROM that is too big, or too many games.
std::optional<Diagnostic> CheckRomLimits(const LayoutResult& layout, BoardType board,
                                         Language language);

// A menu program that no board starts: not valid, with CHR ROM, or of a wrong size.
std::optional<Diagnostic> CheckMenu(const MulticartItem& menu, Language language);

// What a designed menu writes while it runs, and its places as video memory addresses.
enum class ScreenPart : uint8_t { kCaption, kList, kPageNumber };
struct ScreenPlaces {
    uint32_t caption;
    uint32_t list;
    uint32_t pageNumber;
};
// A part that the console would write outside the screen's part of the video memory, over tiles or
// colours.
struct MisplacedPart {
    ScreenPart part;
    Diagnostic fault;
};
std::vector<MisplacedPart> FindMisplacedParts(const BuildSettings& settings,
                                              const ScreenPlaces& places, size_t games,
                                              Language language);
// The first of them in a design that is to be built.
std::optional<Diagnostic> CheckScreenPlaces(const BuildSettings& settings,
                                            const DesignStore& design, size_t games,
                                            Language language);

// The columns that the page number takes: this page, a slash, the number of pages.
size_t PageNumberColumns(const BuildSettings& settings, size_t games);

// How many names of a page have rows on the screen.
uint32_t RoomForNames(const BuildSettings& settings, uint32_t itemPpuAddr);

// Names that would be drawn below the screen's last row, and looks that have no place for them.
std::optional<Diagnostic> CheckScreenRows(const BuildSettings& settings, uint32_t itemPpuAddr,
                                          size_t games, Language language);

// Games whose shared data can't serve both; see FindLayoutConflict.
std::optional<Diagnostic> CheckConflicts(const LayoutResult& layout, Language language);

}  // namespace bw
