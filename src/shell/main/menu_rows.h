// What the main menu holds: popups and entries, from top to bottom.
#pragma once

#include <span>

#include "language/text_id.h"

namespace bw {

enum class MenuRowKind {
    kPopup,  // opens, until its kEnd
    kEnd,
    kSeparator,
    kEntry,
    kToggle,  // an entry with a mark
    kRadio,   // one of the neighbouring kRadio rows has the mark
    kLater,   // an entry that is there but has no function yet; greyed
};

struct MenuRow {
    MenuRowKind kind;
    int id = 0;
    TextId text = {};       // of popups and entries
    const char* keys = "";  // as QKeySequence reads them; several are parted by "; "
    bool greyed = false;
};

std::span<const MenuRow> MainMenuRows();

}  // namespace bw
