// The window in which a game or a cart is played.
#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "settings/settings_store.h"
#include "shell/dialogs/play_keys.h"
#include "shell/dialogs/play_run.h"
#include "shell/dialogs/play_view.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/command_menu.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// The commands of its menu.
enum PlayCommand : int {
    kPlayPause = 1500,
    kPlayStep,
    kPlayFastForward,
    kPlayReset,
    kPlayPower,
    kPlaySavePicture,
    kPlayKeys,
    kPlaySound,
    kPlaySize1,
    kPlaySize2,
    kPlaySize3,
    kPlaySize4,
    kPlayClose,
};

// Beside the other windows; it pauses by itself while it is hidden, minimised or not in front,
// since a game that nobody sees or steers is lost. One game at a time.
class CPlayDialog : public CDialogBase {
  public:
    // The store and the dialogs must live longer. `find` gives the emulator, or null.
    CPlayDialog(SettingsStore& store, UserDialogs& dialogs,
                std::function<std::unique_ptr<Emulator>()> find, Language language,
                QWidget* parent = nullptr);
    // Waits until the emulators have ended.
    ~CPlayDialog() override;

    // Shows the window with this game (absolute), in place of one that was played before.
    void Play(const std::filesystem::path& rom, std::u16string_view name);
    // Why nothing can be played; empty if it can.
    const std::u16string& Problem() const { return problem_; }
    bool HasEmulator() const { return found_; }

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;
    // A key that is hit in a hurry must not end the game.
    bool EscapeCloses() const override { return false; }
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void Start();
    void TakeNews();
    void Fail(std::u16string words);
    // What the session and the words have to know of pauses and speed.
    void Follow();
    bool KeyEvent(QKeyEvent& event);
    void SendPads();
    void ReleaseKeys();
    void SetSize(int scale);
    void ShowSize();
    LiveSession* Session() { return run_ ? &run_->Session() : nullptr; }

    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);
    MessageResult OnPause(MessageParam wParam, MessageParam lParam);
    MessageResult OnStep(MessageParam wParam, MessageParam lParam);
    MessageResult OnFast(MessageParam wParam, MessageParam lParam);
    MessageResult OnReset(MessageParam wParam, MessageParam lParam);
    MessageResult OnPower(MessageParam wParam, MessageParam lParam);
    MessageResult OnSavePicture(MessageParam wParam, MessageParam lParam);
    MessageResult OnKeys(MessageParam wParam, MessageParam lParam);
    MessageResult OnSound(MessageParam wParam, MessageParam lParam);
    MessageResult OnSize(MessageParam wParam, MessageParam lParam);

    SettingsStore& store_;
    UserDialogs& dialogs_;
    std::function<std::unique_ptr<Emulator>()> find_;
    PlayKeys keys_;
    HeldKeys held_;
    CommandMenu menu_;
    QVBoxLayout layout_{this};
    PlayView view_;
    std::filesystem::path rom_;
    std::u16string name_;
    ConsolePicture shown_;
    std::u16string problem_;
    bool found_ = true;
    bool fastHeld_ = false;
    std::unique_ptr<PlayRun> run_;
    std::shared_future<void> ending_;  // of the run before
};

}  // namespace bw
