#include "shell/main/tray_icon.h"

#include "shell/framework/commands.h"
#include "shell/framework/messages.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr int kTrayEntries[] = {kCommandOpen, kCommandLoad, kCommandSave, kCommandTopmost,
                                kCommandExit};

}  // namespace

TrayIcon::TrayIcon(const CommandMenu& menu, const QIcon& icon, std::function<void(int)> event)
    : icon_(icon) {
    for (const int id : kTrayEntries)
        menu_.addAction(&menu.Entry(id));
    // Many trays show the menu by themselves, in the desktop's own form, and never ask for it.
    icon_.setContextMenu(&menu_);
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [event = std::move(event)](QSystemTrayIcon::ActivationReason reason) {
                         // Newer trays know no double clicks: what they tell as activation, mostly
                         // a single click, has to bring the window up there.
                         event(reason == QSystemTrayIcon::Context ? kTrayMenu : kTrayDoubleClick);
                     });
}

void TrayIcon::SetLanguage(Language language) {
    icon_.setToolTip(QtText(TextId::kProduct, language));
}

}  // namespace bw
