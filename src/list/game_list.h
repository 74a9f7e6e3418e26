// The ordered list of games: its limits, ordinals and display names.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "list/game_entry.h"

namespace bw {

inline constexpr size_t kListLimit = 20000;    // entries
inline constexpr size_t kCheckedLimit = 3072;  // checked entries for a build command
inline constexpr size_t kMoveLimit = 100;      // entries moved in one step

using GameList = std::vector<GameEntry>;

size_t CountChecked(const GameList& list);

// For each row its ordinal (from 1) among the checked ones; for a row that isn't checked the one
// that it would have.
std::vector<uint32_t> Ordinals(const GameList& list);

// How ordinals are put before names.
struct NumberSettings {
    bool showNumberOrder = false;
    bool showNumberDot = false;
    bool showNumberFill = false;
    bool operator==(const NumberSettings&) const = default;
};

// A built ROM always has the point behind the number; the designer's preview and the export follow
// the settings. The difference is meant.
enum class NameRules { kRomBuild, kDesignerAndExport };

// The display name of the checked entry with this ordinal (from 1) among `checkedCount`.
std::u16string DisplayName(const GameEntry& entry, size_t ordinal, size_t checkedCount,
                           const NumberSettings& settings, NameRules rules);

// The names of all checked entries, in list order.
std::vector<std::u16string> DisplayNames(const GameList& list, const NumberSettings& settings,
                                         NameRules rules);

// "<count> IN 1"
std::u16string MulticartTitle(size_t checkedCount);

}  // namespace bw
