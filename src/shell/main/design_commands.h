// The design of the menu's screen, as far as the main window handles it: files, and the switch.
#pragma once

#include "designer/history/edit_session.h"
#include "designer/window/design_files.h"
#include "shell/tasks/list_host.h"

class QWidget;

namespace bw {

class CDesignDialog;

class DesignCommands {
  public:
    // `design` is the process's one, which `host` hands out; `window` the main one, which must live
    // longer.
    DesignCommands(ListHost& host, DesignStore& design, QWidget& window)
        : host_(host), design_(design), window_(window) {}

    // Opens the designer's window for the checked games and returns when it has closed. Nothing
    // happens if it is open.
    void Design();
    // The design as it is in an open designer's window to the settings, for an end that no window
    // can prevent.
    void StoreAll();
    // To be told of each change of the list: an open designer shows its menu.
    void ListChanged();

    // Asks for a design file and brings its design in, for this window and for the settings. False
    // if the user gave up or the file can't be read, which is told.
    bool Open() { return Open(IsEnabled()); }
    bool Open(const std::filesystem::path& file) { return Open(file, IsEnabled()); }
    void Save();
    // Whether the screen is to be switched on; asks while nothing was designed, and may bring in a
    // design.
    bool MayEnable();

  private:
    bool Open(bool shows);
    bool Open(const std::filesystem::path& file, bool shows);
    // The session as a designer's window for the checked games begins with it.
    void Prepare();
    // What the session has become is the process's design.
    void TakeOver();
    bool IsEnabled() const;

    ListHost& host_;
    DesignStore& design_;
    QWidget& window_;
    EditSession session_;  // keeps its steps from one opening to the next
    DesignFiles::LastTypes lastTypes_;
    CDesignDialog* open_ = nullptr;
};

}  // namespace bw
