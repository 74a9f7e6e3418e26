#include "shell/main/update_commands.h"

#include <QApplication>
#include <QDesktopServices>
#include <QScopedValueRollback>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "shell/dialogs/update_dialog.h"
#include "shell/framework/commands.h"
#include "shell/framework/messages.h"
#include "shell/framework/texts.h"
#include "support/text.h"
#include "update/network_source.h"
#include "update/program_replacement.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

// Soon after a gesture or a task, and seldom enough to cost nothing while it lasts.
constexpr auto kRetryTime = 200ms;

// Greyed where no host is named.
constexpr int kEntries[] = {kCommandCheckUpdate, kCommandUpdateChecks};

class OwnThreadTask : public UpdateTask {
  public:
    explicit OwnThreadTask(TaskControl& control) : control_(control) {}
    const std::atomic<bool>& Stop() const override { return control_.Stop(); }
    void Publish(std::function<void()> work) override { control_.Queue().Post(std::move(work)); }

  private:
    TaskControl& control_;
};

void OpenOnDesktop(const QUrl& address) {
    QDesktopServices::openUrl(address);
}

}  // namespace

UpdateCommands::UpdateCommands(ListHost& host, CDialogBase& window, CommandMenu& menu,
                               const MainDialogServices& services, Window calls)
    : host_(host),
      window_(window),
      menu_(menu),
      calls_(std::move(calls)),
      deployment_(services.deployment),
      program_(services.program ? *services.program : ProgramFile::OfThisProcess()),
      network_(services.updates ? nullptr : std::make_unique<NetworkSource>(deployment_)),
      startProgram_(services.startProgram ? services.startProgram : StartProgram),
      openAddress_(services.openAddress ? services.openAddress : OpenOnDesktop),
      flow_(*this, services.updates ? *services.updates : *network_, services.store, deployment_,
            program_),
      checkTimer_(&window),
      noticeTimer_(&window),
      tasks_(queue_) {
    for (const int id : kEntries)
        menu_.EnableMenuItem(id, deployment_.NamesHost());
    for (const UpdateTimer timer : {UpdateTimer::kCheck, UpdateTimer::kNotice}) {
        QTimer& own = TimerOf(timer);
        own.setObjectName(QStringLiteral("timer_%1").arg(static_cast<int>(timer)));
        QObject::connect(&own, &QTimer::timeout, &own, [this, timer] { flow_.OnTimer(timer); });
    }
    retryTimer_.setSingleShot(true);
    QObject::connect(&retryTimer_, &QTimer::timeout, &retryTimer_, [this] { GoOn(); });
}

void UpdateCommands::Start(bool looks) {
    tasks_.StartFreeTask(
        [&store = host_.Store()](TaskControl& control) { RemoveOldProgram(store, control.Stop()); },
        {});
    if (looks) LookByItself(true);
}

void UpdateCommands::LookByItself(bool on) {
    if (on) {
        flow_.Start();
    } else {
        flow_.Stop();
        offerWaits_ = offerWaits_ && asked_;
        if (!agreed_) flow_.ForgetReady();
    }
}

void UpdateCommands::Check() {
    if (offerOpen_ || !deployment_.NamesHost()) return;
    asked_ = true;
    host_.Tell(LoadText(TextId::kLookingForUpdate, host_.CurrentLanguage()));
    flow_.Check();
}

void UpdateCommands::SetLanguage(Language language) {
    ShowTitle(percent_);
    if (deployment_.NamesHost()) return;
    for (const int id : kEntries)
        menu_.Entry(id).setToolTip(QtText(TextId::kNoUpdateHost, language));
}

bool UpdateCommands::DialogsOpen() const {
    if (QApplication::activeModalWidget() != nullptr) return true;
    const QList<QDialog*> dialogs = window_.findChildren<QDialog*>();
    return std::ranges::any_of(dialogs, [](const QDialog* one) { return one->isVisible(); });
}

void UpdateCommands::Offer() {
    if (offerOpen_) return;
    offerWaits_ = true;
    GoOn();
}

void UpdateCommands::CloseToInstall() {
    readyWaits_ = true;
    // Not from within the handler that closes.
    retryTimer_.start(0ms);
}

bool UpdateCommands::Alone() {
    if (DialogsOpen()) {
        // Once: some have to finish something first, and are closing already.
        if (!std::exchange(closingOthers_, true)) calls_.closeDialogs();
        retryTimer_.start(kRetryTime / 10);
        return false;
    }
    if (std::exchange(closingOthers_, false)) {
        // This may still be inside the event loop of one that has just closed.
        retryTimer_.start(0ms);
        return false;
    }
    return true;
}

void UpdateCommands::GoOn() {
    if (flow_.Ready().empty()) readyWaits_ = false;  // forgotten meanwhile
    const bool waits = offerWaits_ || readyWaits_;
    if (!waits) closingOthers_ = false;
    if (!waits && toTell_.empty()) return;
    const bool mayTell = !toTell_.empty() && QApplication::activeModalWidget() == nullptr;
    if (!calls_.mayInterrupt() || (!waits && !mayTell)) {
        retryTimer_.start(kRetryTime);
    } else if (mayTell) {
        Error(std::exchange(toTell_, {}));
        GoOn();
    } else if (Alone()) {
        ShowWhatWaits();
    }
}

void UpdateCommands::ShowWhatWaits() {
    if (std::exchange(readyWaits_, false)) {
        window_.Send(kMessageClose, kCloseForUpdate);
        GoOn();  // it may have stayed
    } else {
        offerWaits_ = false;
        ShowOffer();
    }
}

void UpdateCommands::ShowOffer() {
    const bool asked = std::exchange(asked_, false);
    CUpdateDialog dialog({.record = flow_.Record(),
                          .running = ToWide(deployment_.version),
                          .newer = flow_.IsNewer(),
                          .replaceable = program_.Replaceable(),
                          .asked = asked,
                          .openAddress = openAddress_},
                         host_.CurrentLanguage(), &window_);
    if (asked) host_.Tell({});
    const QScopedValueRollback<bool> open(offerOpen_, true);
    if (dialog.DoModal() == kEndOk) Install();
}

void UpdateCommands::Install() {
    agreed_ = true;
    // One that was put off is there already.
    if (flow_.Ready().empty()) {
        host_.Tell(FormatText(LoadText(TextId::kFetchingUpdate, host_.CurrentLanguage()),
                              ShownVersion(flow_.Record().version)));
    }
    flow_.Install();
}

void UpdateCommands::ShowNotice() {
    if (noticeOpen_) return;
    if (!calls_.mayInterrupt() || QApplication::activeModalWidget() != nullptr ||
        !window_.isEnabled()) {
        flow_.Notices().NotShown();
        return;
    }
    const QScopedValueRollback<bool> open(noticeOpen_, true);
    const Language language = host_.CurrentLanguage();
    host_.Dialogs().Message(flow_.Notices().Text(language),
                            LoadText(TextId::kNotifyMessage, language), MessageButtons::kConfirm);
    flow_.Notices().Shown();
}

void UpdateCommands::StopTasks() {
    tasks_.StopAll();
}

void UpdateCommands::PutOff() {
    ShowTitle(std::nullopt);
    host_.Tell(LoadText(TextId::kUpdatePutOff, host_.CurrentLanguage()));
}

bool UpdateCommands::Replace() {
    if (flow_.Ready().empty()) return true;
    const Language language = host_.CurrentLanguage();
    const UpdateOutcome outcome = ReplaceProgram(program_, flow_.Ready(), host_.Store());
    if (!outcome) {
        ShowTitle(std::nullopt);
        Error(UpdateOutcomeText(outcome, language));
        return false;
    }
    if (!startProgram_(program_)) Error(LoadText(TextId::kUpdateStartByHand, language));
    return true;
}

void UpdateCommands::End() {
    flow_.ForgetReady();
    flow_.Stop();
    offerWaits_ = readyWaits_ = false;
    toTell_.clear();
    retryTimer_.stop();
    queue_.Close();
}

void UpdateCommands::Error(std::u16string_view text) {
    host_.Dialogs().Message(text, LoadText(TextId::kErrorTitle, host_.CurrentLanguage()),
                            MessageButtons::kConfirm);
}

void UpdateCommands::StartTask(std::function<void(UpdateTask&)> work,
                               std::function<void()> finish) {
    const auto run = [work = std::move(work)](TaskControl& control) {
        OwnThreadTask task(control);
        work(task);
    };
    tasks_.StartFreeTask(run, std::move(finish));
}

void UpdateCommands::TellNoAnswer() {
    asked_ = false;
    host_.Tell(LoadText(TextId::kNoUpdateAnswer, host_.CurrentLanguage()));
}

QTimer& UpdateCommands::TimerOf(UpdateTimer timer) {
    return timer == UpdateTimer::kCheck ? checkTimer_ : noticeTimer_;
}

void UpdateCommands::SetTimer(UpdateTimer timer, std::chrono::milliseconds interval) {
    TimerOf(timer).start(interval);
}

void UpdateCommands::KillTimer(UpdateTimer timer) {
    TimerOf(timer).stop();
}

std::chrono::milliseconds UpdateCommands::Since1970() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::system_clock::now().time_since_epoch());
}

void UpdateCommands::PostOffer() {
    window_.Post(kMessageUpdateOffer);
}

void UpdateCommands::PostReady() {
    window_.Post(kMessageUpdateReady);
}

void UpdateCommands::PostNotice() {
    window_.Post(kMessageNotice);
}

void UpdateCommands::ShowTitle(std::optional<double> percent) {
    percent_ = percent;
    const Language language = host_.CurrentLanguage();
    window_.setWindowTitle(
        percent ? ToQt(FormatText(LoadText(TextId::kUpdatingPercent, language), *percent))
                : QtText(TextId::kProduct, language));
}

void UpdateCommands::TellOutcome(const UpdateOutcome& outcome, bool asked) {
    const std::u16string text = UpdateOutcomeText(outcome, host_.CurrentLanguage());
    // A network that fails is tried again every minute, and no news worth a window.
    const bool network = outcome.kind == UpdateOutcome::Kind::kNetwork;
    if (text.empty() || (network && !asked)) return;
    host_.Tell(text);
    if (!asked || network) return;
    toTell_ = text;
    // Not from within the flow: a dialog runs the window's events.
    retryTimer_.start(0ms);
}

}  // namespace bw
