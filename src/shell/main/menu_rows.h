// What the main menu holds: popups and entries, from top to bottom.
#pragma once

#include <span>
#include <string_view>

namespace bw {

// A text of the language table, or with id 0 one of our own.
struct MenuText {
    int id = 0;
    std::u16string_view chinese = {};
    std::u16string_view english = {};
};

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
    MenuText text = {};
    const char* keys = "";  // as QKeySequence reads them; several are parted by "; "
    bool greyed = false;
};

std::span<const MenuRow> MainMenuRows();

}  // namespace bw
