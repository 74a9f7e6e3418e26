// The program in the desktop's tray, where the window can hide.
#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>

#include "shell/framework/command_menu.h"

namespace bw {

class TrayIcon {
  public:
    // `event` gets kTrayDoubleClick or kTrayMenu. The menu shows entries of `menu`, which must live
    // longer: their texts and marks are always those of the window's own menu.
    TrayIcon(const CommandMenu& menu, const QIcon& icon, std::function<void(int)> event);

    void SetLanguage(Language language);
    void Show() { icon_.show(); }
    void Hide() { icon_.hide(); }
    void ShowMenu(const QPoint& place) { menu_.popup(place); }
    const QMenu& Menu() const { return menu_; }

  private:
    QMenu menu_;
    QSystemTrayIcon icon_;
};

}  // namespace bw
