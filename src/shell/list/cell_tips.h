// What a tooltip says of a cell.
#pragma once

#include <QString>

#include "language/language.h"
#include "list/list_columns.h"

namespace bw {

// On the board columns why a game doesn't run on both; on the size columns what a checked game
// adds to each. Empty if there is nothing to say.
QString CellTip(const GameEntry& entry, ListColumn column, Language language);

}  // namespace bw
