#include "app/window_program.h"

#include <QApplication>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/appearance.h"
#include "app/end_signals.h"
#include "app/list_rescue.h"
#include "app/lost_display.h"
#include "app/program_icon.h"
#include "app/program_output.h"
#include "app/window_arguments.h"
#include "designer/history/history_file.h"
#include "settings/guarded_store.h"
#include "shell/dialogs/play_dialog.h"
#include "shell/dialogs/qt_user_dialogs.h"
#include "shell/framework/texts.h"
#include "shell/main/main_dialog.h"
#include "shell/main/qt_texts.h"
#include "shell/main/settings_start.h"
#include "support/crash_file.h"
#include "support/paths.h"
#include "support/program_words.h"
#include "support/text.h"
#include "support/version.h"

namespace bw {
namespace {

constexpr int kEndedBySignal = 128;  // plus its number, as shells have it
constexpr int kNoEmulator = 3;
constexpr int kNoDisplay = 3;  // ./run goes on without a window then

void SetUpApplication() {
    // Qt takes all of the user's locale; numbers in files have a point everywhere.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("bankweaver"));
    QApplication::setApplicationVersion(ToQt(ToWide(ProgramVersion())));
    QApplication::setDesktopFileName(QStringLiteral("bankweaver"));
    QApplication::setWindowIcon(ProgramIcon());
}

void TellOfRescuedList(const std::filesystem::path& file) {
    NoteProblem("The settings could not take the list; it was saved as " +
                WideToBytes(PathText(file)));
}

// A display that can't be reached is no crash.
void EndIfFatal(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) return NoteProblem(text.toStdString());
    Answer(NoWindowText(text.toStdString()), true);
    std::_Exit(kNoDisplay);
}

// The play window alone.
int Play(const std::filesystem::path& rom) {
    const std::unique_ptr<GuardedStore> store = MakeGuardedUserStore();
    const Language language = StartLanguage(*store);
    QtTexts qtTexts;
    qtTexts.SetLanguage(language);
    QWidget front;
    QtUserDialogs dialogs(front, ExecutableFolder(), [=] { return language; });
    CPlayDialog window(*store, dialogs, &FindEmulator, language);
    const EndSignals endSignals([](int signal) { QApplication::exit(kEndedBySignal + signal); });
    QObject::connect(&window, &QDialog::finished, qApp, &QApplication::quit);
    window.Play(rom, PathText(rom.stem()));
    const int code = QApplication::exec();
    if (code != 0) return code;
    if (!window.HasEmulator()) return kNoEmulator;
    return window.Problem().empty() ? 0 : 1;
}

int Run(std::vector<std::filesystem::path> files, const Deployment& deployment) {
    const std::unique_ptr<GuardedStore> store = MakeGuardedUserStore();
    CMainDialog window(
        {.store = *store,
         .base = ExecutableFolder(),
         .designHistory = DesignHistoryFile(),
         .keptLists = UserDataFolder() / "lists",
         .takeProblem = [&](Language language) { return store->TakeProblem(language); },
         .listKept =
             [&] {
                 store->Flush();
                 return !store->InMemoryOnly(kHistoryKey, kHistoryValue);
             },
         .deployment = deployment});
    // Nobody can be asked for a list file at these ends.
    const auto storeUnasked = [&] {
        window.StoreAll();
        if (const auto file = RescueList(*store)) TellOfRescuedList(*file);
    };
    const LostDisplay lostDisplay(storeUnasked);
    const EndSignals endSignals([&](int signal) {
        storeUnasked();
        QApplication::exit(kEndedBySignal + signal);
    });
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, &window, [&] { window.StoreAll(); },
        Qt::DirectConnection);
    QObject::connect(&window, &CMainDialog::Exited, qApp, &QApplication::quit);
    window.Start(std::move(files));
    return QApplication::exec();
}

}  // namespace

int RunWindowProgram(int count, char** values, const Deployment& deployment) {
    InstallCrashHandler();
    WindowArguments arguments = ParseWindowArguments(ProgramWords(count, values));
    if (!arguments.files) {
        Answer(arguments.text, arguments.exitCode != 0);
        return arguments.exitCode;
    }
    ChooseAppearance();
    qInstallMessageHandler(&EndIfFatal);
    const QApplication application(count, values);
    qInstallMessageHandler(nullptr);
    SetUpApplication();
    if (arguments.play) return Play(*arguments.play);
    return Run(std::move(*arguments.files), deployment);
}

}  // namespace bw
