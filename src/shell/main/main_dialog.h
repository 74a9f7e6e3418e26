// The program's window: menu, list, buttons, status line, tray.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "settings/settings_store.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/dialog_base.h"
#include "shell/tasks/check_commands.h"
#include "update/deployment.h"
#include "update/program_file.h"

class QUrl;

namespace bw {

class UpdateSource;

// What the window stands on. The store must live longer than the window.
struct MainDialogServices {
    SettingsStore& store;
    // The folder that relative paths count from: the program's.
    std::filesystem::path base;
    // Of the design's undo history; empty keeps it in the store.
    std::filesystem::path designHistory = {};
    // Where the list lies while the program runs, so that a kill doesn't take it along; empty keeps
    // it nowhere.
    std::filesystem::path keptLists = {};
    // Null for dialogs on the screen.
    UserDialogs* dialogs = nullptr;
    // What is wrong with the store, in words for the user, once it is known and only once; asked
    // every few seconds. Null for a store that never tells.
    std::function<std::optional<std::u16string>(Language)> takeProblem = nullptr;
    // Whether the list, just written, has reached more than the memory of this run; null for a
    // store that tells by its result.
    std::function<bool()> listKept = nullptr;
    // Whether the desktop has a tray; null asks it.
    std::function<bool()> trayAvailable = nullptr;
    // Where newer versions are looked for; without a host nowhere, and nothing uses the network.
    Deployment deployment = {};
    // Null for the network.
    UpdateSource* updates = nullptr;
    // What an update replaces; none for the program of this process.
    std::optional<ProgramFile> program = std::nullopt;
    // Starts what has come into its place, without waiting; null starts it as a process.
    std::function<bool(const ProgramFile&)> startProgram = nullptr;
    // What runs carts.
    CheckServices check = {};
    // Shows a page of the web, http or https; null asks the desktop.
    std::function<void(const QUrl&)> openAddress = nullptr;
};

class CMainDialog : public CDialogBase {
    Q_OBJECT
  public:
    explicit CMainDialog(const MainDialogServices& services);
    ~CMainDialog() override;

    // Applies the settings, shows the window at its place, starts loading the remembered list and
    // then adds `files` (absolute paths: images and list files). The application no longer ends
    // with its last window then, since this one can hide; it ends at Exited().
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
    void Place() override;
    // Escape ends the in-place editor and the filter, never the window.
    bool EscapeCloses() const override { return false; }

  private:
    class Parts;
    struct Commands;

    static std::vector<MessageEntry> CommandEntries();
    MessageResult OnInitDialog(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);
    MessageResult OnTray(MessageParam wParam, MessageParam lParam);
    MessageResult OnFind(MessageParam wParam, MessageParam lParam);
    MessageResult OnReplace(MessageParam wParam, MessageParam lParam);
    MessageResult OnReplaceAll(MessageParam wParam, MessageParam lParam);
    MessageResult OnEndEdit(MessageParam wParam, MessageParam lParam);
    MessageResult OnUpdateOffer(MessageParam wParam, MessageParam lParam);
    MessageResult OnUpdateReady(MessageParam wParam, MessageParam lParam);
    MessageResult OnNotice(MessageParam wParam, MessageParam lParam);

    std::unique_ptr<Parts> parts_;
};

}  // namespace bw
