// A main window of its own store and scripted answers, for tests.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QSignalSpy>
#include <QTableView>
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "list/search/name_search.h"
#include "shell/fake_updates.h"
#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "shell/main/main_dialog.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"
#include "support/text.h"

namespace bw {

class MainWindow : public testing::Test {
  protected:
    MainWindow() { Store("Language", kCommandEnglish); }

    void Store(std::string_view name, uint32_t value, std::string_view key = kMainKey) {
        store->RegWriteDword(key, name, value);
    }
    uint32_t Stored(std::string_view name, std::string_view key = kMainKey) const {
        uint32_t value = 0xDEAD;
        store->RegReadDword(key, name, value);
        return value;
    }

    // Images named A.nes, B.nes, ...
    std::vector<std::filesystem::path> Images(size_t count) {
        std::vector<std::filesystem::path> files;
        for (size_t i = 0; i < count; ++i) {
            files.push_back(folder / (std::string(1, static_cast<char>('A' + i)) + ".nes"));
            test::WriteText(files.back(), test::ImageBytes({}, static_cast<uint32_t>(i)));
        }
        return files;
    }

    // A window with the stored list and these games, when it has them all.
    CMainDialog& Start(std::vector<std::filesystem::path> files = {}) {
        window.reset();
        window = std::make_unique<CMainDialog>(
            MainDialogServices{.store = *store,
                               .base = folder.Path(),
                               .designHistory = folder / "design_history",
                               .dialogs = &dialogs,
                               .takeProblem = takeProblem,
                               .listKept = listKept,
                               .trayAvailable = [this] { return tray; },
                               .deployment = deployment,
                               .updates = &source,
                               .program = program,
                               .startProgram = startProgram,
                               .check = check,
                               .openAddress = openAddress});
        exited = std::make_unique<QSignalSpy>(window.get(), &CMainDialog::Exited);
        const size_t added = files.size();
        window->Start(std::move(files));
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return !Busy() && static_cast<size_t>(Table().model()->rowCount()) >= added; }));
        // The first games of a list come in checked; what follows is easier to tell without.
        for (int row = 0; added > 0 && row < Table().model()->rowCount(); ++row)
            Table().model()->setData(Table().model()->index(row, 0), Qt::Unchecked,
                                     Qt::CheckStateRole);
        return *window;
    }

    void Send(int command) { window->Send(kMessageCommand, command); }
    void Close(int code) { window->Send(kMessageClose, code); }
    void ReplaceAll(const FindRecord& record) {
        window->Send(kMessageReplaceAll, 0, reinterpret_cast<MessageParam>(&record));
    }
    bool Exited() const { return !exited->isEmpty(); }
    // The newest task hasn't ended.
    bool Busy() const { return !ChildOf<QWidget>(*window, "status_progress").isHidden(); }

    QAction& Entry(int id) const {
        return ChildOf<QAction>(*window, "entry_" + std::to_string(id));
    }
    QTableView& Table() const { return *window->findChild<QTableView*>(); }
    // The names of the games, in order; checked ones with a star.
    std::string List() const {
        std::string list;
        const QAbstractItemModel& model = *Table().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            list += model.index(row, 1).data().toString().toStdString();
            if (model.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked) list += '*';
        }
        return list;
    }

    TemporaryFolder folder;
    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    ScriptedDialogs dialogs;
    std::function<std::optional<std::u16string>(Language)> takeProblem;
    std::function<bool()> listKept;
    bool tray = true;
    Deployment deployment{.version = "1.0.0.0"};  // names no host
    FakeUpdates source;
    std::optional<ProgramFile> program;
    std::function<bool(const ProgramFile&)> startProgram;
    CheckServices check;
    std::function<void(const QUrl&)> openAddress;
    std::unique_ptr<CMainDialog> window;
    std::unique_ptr<QSignalSpy> exited;
};

}  // namespace bw
