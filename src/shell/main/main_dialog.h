// The program's window: menu, list, buttons, status line, tray.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "shell/framework/dialog_base.h"
#include "shell/tasks/user_dialogs.h"
#include "support/settings_store.h"

namespace bw {

// What the window stands on. The store must live longer than the window.
struct MainDialogServices {
    SettingsStore& store;
    // The folder that relative paths count from: the program's.
    std::filesystem::path base;
    // Null for dialogs on the screen.
    UserDialogs* dialogs = nullptr;
};

class CMainDialog : public CDialogBase {
    Q_OBJECT
  public:
    explicit CMainDialog(const MainDialogServices& services);
    ~CMainDialog() override;

    // Applies the settings, shows the window at its place, starts loading the remembered list and
    // then adds `files` (absolute paths: images and list files).
    void Start(std::vector<std::filesystem::path> files);

    // Stores list, placement and widths as at an exit, without asking or telling anything; for an
    // end that the window can't prevent. Callable once or more, on the window's thread.
    void StoreAll();

  signals:
    // The window has closed for good: the program ends.
    void Exited();

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace bw
