// Newer versions and notices, as far as the main window handles them.
#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "shell/framework/background_tasks.h"
#include "shell/framework/command_menu.h"
#include "shell/framework/dialog_base.h"
#include "shell/main/main_dialog.h"
#include "shell/tasks/list_host.h"
#include "update/update_flow.h"
#include "update/update_host.h"

namespace bw {

// Nothing here interrupts anybody: what is to be shown waits for a moment in which the user isn't
// in the middle of something.
class UpdateCommands final : public UpdateHost {
  public:
    struct Window {
        std::function<bool()> mayInterrupt;
        std::function<void()> closeDialogs;
    };
    // All must live longer.
    UpdateCommands(ListHost& host, CDialogBase& window, CommandMenu& menu,
                   const MainDialogServices& services, Window calls);
    // Ends what is under way; as soon as the source of updates has it.
    ~UpdateCommands() override = default;

    // Removes what an earlier update has left, and looks for a newer version from now on if
    // `looks`.
    void Start(bool looks);
    void LookByItself(bool on);
    // By the user's wish.
    void Check();
    void SetLanguage(Language language);

    // The window's messages.
    void Offer();
    void CloseToInstall();
    void ShowNotice();

    // For a window that closes: everything that uses the network is asked to stop.
    void StopTasks();
    // It can't close now, and so the new version isn't installed.
    void PutOff();
    // Puts the fetched program in this one's place and starts it. False, after telling the user, if
    // it can't be done: the window stays. True also if none was fetched.
    bool Replace();
    // What was fetched and not installed goes.
    void ForgetReady() { flow_.ForgetReady(); }
    // The window has closed: nothing comes any more.
    void End();

    // UpdateHost
    void StartTask(std::function<void(UpdateTask&)> work, std::function<void()> finish) override;
    void SetTimer(UpdateTimer timer, std::chrono::milliseconds interval) override;
    void KillTimer(UpdateTimer timer) override;
    std::chrono::milliseconds Since1970() const override;
    void PostOffer() override;
    void PostReady() override;
    void PostNotice() override;
    void TellNoAnswer() override;
    void ShowTitle(std::optional<double> percent) override;
    void TellOutcome(const UpdateOutcome& outcome, bool asked) override;

  private:
    QTimer& TimerOf(UpdateTimer timer);
    bool DialogsOpen() const;
    // Goes on with what waits, now or as soon as it may.
    void GoOn();
    void ShowWhatWaits();
    // False if other dialogs are still open; they close then.
    bool Alone();
    void ShowOffer();
    void Install();
    void Error(std::u16string_view text);

    ListHost& host_;
    CDialogBase& window_;
    CommandMenu& menu_;
    Window calls_;
    Deployment deployment_;
    ProgramFile program_;
    std::unique_ptr<UpdateSource> network_;
    std::function<bool(const ProgramFile&)> startProgram_;
    std::function<void(const QUrl&)> openAddress_;
    UpdateFlow flow_;

    QTimer checkTimer_;
    QTimer noticeTimer_;
    QTimer retryTimer_;
    std::optional<double> percent_;  // in the title
    // What waits for its moment.
    bool offerWaits_ = false;
    bool readyWaits_ = false;
    std::u16string toTell_;
    // The other dialogs have been told to close.
    bool closingOthers_ = false;
    bool offerOpen_ = false;
    bool noticeOpen_ = false;
    // The user waits for an answer; only then an offer is more than news.
    bool asked_ = false;
    // The user has agreed to install something in this run.
    bool agreed_ = false;

    UiQueue queue_;
    // Of its own: the window neither shows nor asks about what goes on here. Last, so that its
    // threads have ended when the rest goes.
    BackgroundTasks tasks_;
};

}  // namespace bw
