// What a tooltip says of a cell.
#pragma once

#include <QString>

#include "rom/list_columns.h"
#include "support/language.h"

namespace bw {

// On the board columns why a game doesn't run on both; on the size columns what a checked game
// adds to each. Empty if there is nothing to say.
QString CellTip(const GameEntry& entry, ListColumn column, Language language);

}  // namespace bw
