// The menu of a window. Its entries are found by the ids of their commands.
#pragma once

#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "language/language.h"

namespace bw {

enum class MenuRowKind {
    kPopup,  // opens, until its kEnd
    kEnd,
    kSeparator,
    kEntry,
    kToggle,  // an entry with a mark
    kRadio,   // one of the neighbouring kRadio rows has the mark
    kNamed,   // entries that don't show until SetEntryText has named them
};

struct MenuRow {
    MenuRowKind kind;
    int id = 0;
    TextId text = {};       // of popups and entries
    const char* keys = "";  // as QKeySequence reads them; several are parted by "; "
    bool greyed = false;
    int count = 1;  // kNamed: so many entries, with ids from `id` on
};

class CommandMenu {
  public:
    // `chosen` gets the id of each entry that the user chooses, by mouse, letter or key. `window`
    // and the rows must live longer; the keys work in the window.
    CommandMenu(QWidget& window, std::span<const MenuRow> rows, std::function<void(int)> chosen);

    QMenuBar& Bar() { return bar_; }
    // The entry of a command; throws std::out_of_range for a command that isn't in the menu.
    QAction& Entry(int id) const { return *entries_.at(id).action; }

    // The mark of an entry.
    bool GetMenuState(int id) const { return Entry(id).isChecked(); }
    void CheckMenuItem(int id, bool marked) { Entry(id).setChecked(marked); }
    void EnableMenuItem(int id, bool enabled) { Entry(id).setEnabled(enabled); }

    void SetLanguage(Language language);
    // In place of the text that its row has, until the next SetLanguage. A named entry keeps it,
    // and goes with an empty one.
    void SetEntryText(int id, const QString& text);
    // The menu that has the entry.
    QMenu& PopupOf(int id) const { return *entries_.at(id).popup; }

  private:
    void AddEntry(QMenu& popup, const MenuRow& row, int id);
    void Choose(int id);

    QWidget& window_;
    std::span<const MenuRow> rows_;
    std::function<void(int)> chosen_;
    QMenuBar bar_;
    std::vector<std::unique_ptr<QMenu>> popups_;  // in the order of their rows
    struct Placed {
        std::unique_ptr<QAction> action;
        QMenu* popup = nullptr;
        bool named = false;
    };
    std::map<int, Placed> entries_;
    std::vector<std::unique_ptr<QActionGroup>> groups_;
};

}  // namespace bw
