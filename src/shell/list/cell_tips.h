// What a cell tells beside its text: why a board can't run the game, how much space it takes, how
// its name stands on the console, where its file should be, what a check has found of
// it, which other rows have its data.
#pragma once

#include <QString>

#include "shell/list/game_list_model.h"

namespace bw {

// For a row inside the list; empty where there is nothing more to say. Plain text; may have several
// lines.
QString CellTip(const GameListModel& model, int viewRow, ListColumn column);
// The rows with the same data; empty if there are none.
QString SameText(const GameListModel& model, int viewRow);

}  // namespace bw
