// What a row of the game list says, column by column.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "language/language.h"
#include "list/game_list.h"

namespace bw {

enum class ListColumn : int {
    kNumber,  // position in the list, from 1; the check square stands here
    kName,
    kPrg,
    kChr,
    kMapper,
    kMirroring,
    kBattery,
    kTrainer,
    kCoolboy,
    kCoolgirl,
    kRemark,
    kPath,
    kConsole,  // the name as the menu on the console shows it
};
inline constexpr size_t kListColumns = 13;

// From left to right. The numbers above are those of stored widths and sorts.
inline constexpr std::array<ListColumn, kListColumns> kColumnOrder{
    ListColumn::kNumber,  ListColumn::kName,    ListColumn::kConsole,   ListColumn::kPrg,
    ListColumn::kChr,     ListColumn::kMapper,  ListColumn::kMirroring, ListColumn::kBattery,
    ListColumn::kTrainer, ListColumn::kCoolboy, ListColumn::kCoolgirl,  ListColumn::kPath,
    ListColumn::kRemark};

enum class ColumnAlignment { kLeft, kRight, kCentre };

struct ListColumnTraits {
    TextId titleId;
    int width;  // at first, in pixels at 96 dots per inch
    ColumnAlignment header;
    ColumnAlignment cell;
};
const ListColumnTraits& TraitsOf(ListColumn column);

// 16-bit units of a cell that are shown and edited.
inline constexpr size_t kCellTextLimit = 260;

// The cell's text, at most kCellTextLimit units; `row` counts from 0. Everything about the image is
// read out of the header here, nothing is stored. Of kConsole it knows nothing: ConsoleLineOf does.
std::u16string CellText(const GameEntry& entry, size_t row, ListColumn column, Language language);

}  // namespace bw
