// The main window: commands by id, menu and button; languages; closing; the tray; its place.
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <algorithm>
#include <set>

#include "language/language_table.h"
#include "list/search/name_search.h"
#include "shell/framework/messages.h"
#include "shell/list/game_list_view.h"
#include "shell/main/button_column.h"
#include "shell/main/menu_rows.h"
#include "shell/main/placement.h"
#include "shell/main_window.h"
#include "shell/qt_testing.h"

namespace bw {
namespace {

class MainDialog : public MainWindow {};

struct ListCommand {
    int id;
    const char* before;  // games with a star get checked first
    const char* after;
};
const ListCommand kListCommands[] = {
    {kCommandMoveUp, "ABC*D", "AC*BD"},
    {kCommandMoveUp, "A*BC*D", "A*BC*D"},
    {kCommandMoveDown, "A*BC*D", "BA*DC*"},
    {kCommandMoveTop, "ABC*D*", "C*D*AB"},
    {kCommandMoveBottom, "A*BC*D", "BDA*C*"},
    {kCommandSelectAll, "AB*CD", "A*B*C*D*"},
    {kCommandSelectInverse, "AB*CD", "A*BC*D*"},
    {kCommandRemove, "A*BC*D", "BD"},
    {kCommandClear, "A*BCD", ""},
};

TEST_F(MainDialog, ListCommandsWorkAndCanBeTakenBack) {
    const auto files = Images(4);
    for (const ListCommand& command : kListCommands) {
        SCOPED_TRACE(std::string(command.before) + " " + std::to_string(command.id));
        store = MakeMemoryStore();
        Store("Language", kCommandEnglish);
        Start(files);
        const std::string before = command.before;
        int row = -1;
        QAbstractItemModel& model = *Table().model();
        for (const char letter : before) {
            row += letter == '*' ? 0 : 1;
            if (letter == '*') model.setData(model.index(row, 0), Qt::Checked, Qt::CheckStateRole);
        }
        ASSERT_EQ(List(), before);
        dialogs.answers = {kEndYes};
        Widget<QPushButton>(("control_" + std::to_string(command.id)).c_str()).click();
        EXPECT_EQ(List(), command.after);
        const bool checks = command.id == kCommandSelectAll || command.id == kCommandSelectInverse;
        if (checks || List() == before) continue;
        Entry(kCommandUndo).trigger();
        EXPECT_EQ(List(), before);
        Entry(kCommandRedo).trigger();
        EXPECT_EQ(List(), command.after);
    }
}

TEST_F(MainDialog, TheRowsMenuWorksOnTheRowUnderIt) {
    Start(Images(2));
    const auto choose = [&](const char* text) {
        emit window->findChild<GameListView*>()->ContextMenuWanted({});
        for (QWidget* menu : QApplication::topLevelWidgets()) {
            if (menu->objectName() != QStringLiteral("row_menu")) continue;
            for (QAction* action : menu->actions())
                if (action->text() == QString::fromLatin1(text)) action->trigger();
        }
        return List();
    };
    EXPECT_EQ(choose("&Check"), "A*B");
    EXPECT_EQ(choose("Un&check"), "AB");
    choose("Show in &folder");
    EXPECT_EQ(dialogs.shown, std::vector{folder / "A.nes"});
    EXPECT_EQ(choose("Undo"), "");
}

TEST_F(MainDialog, CommandsOnTheListAreRefusedWhileATaskHasIt) {
    Start(Images(2));
    dialogs.meanwhile = [this] {
        dialogs.meanwhile = nullptr;
        for (const int id : {kCommandSelectAll, kCommandSelectInverse, kCommandRemove,
                             kCommandMoveUp, kCommandOpen, kCommandBuildCoolboy}) {
            dialogs.told.clear();
            Send(id);
            ASSERT_EQ(dialogs.told.size(), 1u) << id;
            EXPECT_EQ(dialogs.told[0].text, LoadText(TextId::kTaskBusy, Language::kEnglish));
        }
        Send(kCommandClear);  // doesn't look at the task
        EXPECT_EQ(dialogs.told.back().text, LoadText(TextId::kConfirmEmptying, Language::kEnglish));
    };
    Send(kCommandOpen);
    EXPECT_EQ(List(), "AB");
    Send(kCommandSelectAll);
    EXPECT_EQ(Widget<QLabel>("status_counts").text(),
              QStringLiteral("Selected: 2 item(s) All: 2 item(s)"));
}

TEST_F(MainDialog, EveryCommandThatIsSentHasOneHandler) {
    Start();
    std::set<int> sent{kCommandStopTask};
    for (size_t i = 0; i < ButtonColumn::kButtons; ++i)
        sent.insert(ButtonColumn::CommandOf(i));
    for (const MenuRow& row : MainMenuRows()) {
        if (row.kind != MenuRowKind::kLater) {
            sent.insert(row.id);
        } else {
            EXPECT_EQ(window->CountHandlers(kMessageCommand, row.id), 0U);
            EXPECT_TRUE(!Entry(row.id).isEnabled() && !Entry(row.id).toolTip().isEmpty());
        }
    }
    sent.erase(0);  // popups and the lines between entries
    for (const int id : sent)
        EXPECT_EQ(window->CountHandlers(kMessageCommand, id), 1U) << id;
}

TEST_F(MainDialog, CommandsThatAskOpenWhatTheyAreNamedAfter) {
    Start(Images(1));
    Send(kCommandSelectAll);
    for (const auto& [id, asked] : {std::pair{kCommandOpen, "images"},
                                    {kCommandLoad, "list to load"},
                                    {kCommandSave, "list to save"},
                                    {kCommandBuildCoolboy, "output"},
                                    {kCommandExportInfo, "folder"}}) {
        dialogs.asked.clear();
        Send(id);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialogs.asked.empty() && !Busy(); })) << asked;
        EXPECT_EQ(dialogs.asked, std::vector<std::string>{asked});
    }
    // A control of the dialog that opens, which no other one has.
    for (const auto& [id, control] : {std::pair{kCommandAbout, 1031},
                                      {kCommandExportSettings, 1084},
                                      {kCommandExternMenuConfig, 1092}}) {
        WhenModal([control = control](QWidget& dialog) {
            ControlOf(dialog, control);
            dialog.close();
        });
        Send(id);
    }
    dialogs.told.clear();
    Send(kCommandRomInfo);
    EXPECT_EQ(dialogs.told.at(0).text, LoadText(TextId::kSupportedMappers, Language::kEnglish));
}

TEST_F(MainDialog, ABuildTakesTheStoredDesign) {
    const auto stored = [this](const char* name, uint8_t first, size_t size) {
        std::string table(size, static_cast<char>(first));
        for (size_t i = 0; i < size; i += 3)
            table[i] = static_cast<char>(first + i % 16);
        store->RegWriteBinary(kDesignKey, name, {reinterpret_cast<uint8_t*>(table.data()), size});
        return table;
    };
    const std::string palettes = stored("BkgPalette", 0x10, 16) + stored("SpritePalette", 0x20, 16);
    const std::string attributes = stored("Attributes", 0x80, 64);
    Store("CustomEnable", 8);
    Start(Images(1));
    Send(kCommandSelectAll);
    dialogs.output = OutputChoice{folder / "design", RomFormat::kNes20};
    Send(kCommandBuildCoolgirl);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy(); }, 60'000));
    const std::string rom = test::ReadText(folder / "design.nes");
    EXPECT_NE(rom.find(palettes), std::string::npos);
    EXPECT_NE(rom.find(attributes), std::string::npos);
}

void AddTexts(const QMenu& menu, QStringList& texts) {
    for (const QAction* action : menu.actions()) {
        texts << action->text()
              << (action->toolTip() == action->iconText() ? QString() : action->toolTip());
        if (action->menu() != nullptr) AddTexts(*action->menu(), texts);
    }
}

// All that can be read in the window, always in the same order.
QStringList Texts(const CMainDialog& window) {
    QStringList texts{window.windowTitle()};
    for (const QAction* popup : window.findChild<QMenuBar*>()->actions()) {
        texts << popup->text();
        AddTexts(*popup->menu(), texts);
    }
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        // A change of language clears what the last task has told; edit boxes hold the user's text.
        if (widget->objectName() == QStringLiteral("status_told")) continue;
        if (qobject_cast<const QLineEdit*>(widget) != nullptr) continue;
        texts << widget->toolTip() << widget->accessibleName();
        for (const char* property : {"text", "title"})
            texts << widget->property(property).toString();
    }
    const QAbstractItemModel& model = *window.findChild<QTableView*>()->model();
    for (int column = 0; column < model.columnCount(); ++column) {
        texts << model.headerData(column, Qt::Horizontal).toString();
        // The others are names, paths, numbers.
        if (column >= 5 && column <= 9) texts << model.index(0, column).data().toString();
    }
    return texts;
}

bool SameInBothLanguages(const QString& text) {
    const auto says = [&](const TextRow& row) {
        return std::ranges::all_of(row.texts, [&](auto own) { return ToQt(own) == text; });
    };
    return std::ranges::none_of(text, [](QChar unit) { return unit.isLetter(); }) ||
           std::ranges::any_of(FixedTexts(), says) || std::ranges::any_of(OwnTexts(), says);
}

TEST_F(MainDialog, AChangeOfLanguageLeavesNothingInTheOther) {
    Start(Images(2));
    Send(kCommandFindReplace);
    const auto settled = [&] {
        QTest::qWait(300);  // the space on the boards follows a moment later
        return Texts(*window);
    };
    const QStringList english = settled();
    Send(kCommandChinese);
    const QStringList chinese = settled();
    ASSERT_EQ(english.size(), chinese.size());
    for (qsizetype i = 0; i < english.size(); ++i) {
        EXPECT_TRUE(english[i] != chinese[i] || SameInBothLanguages(english[i]))
            << english[i].toStdString();
    }
    EXPECT_EQ(Stored("Language"), 40022u);
    EXPECT_TRUE(Entry(kCommandChinese).isChecked() && !Entry(kCommandEnglish).isChecked());
    Send(kCommandEnglish);
    EXPECT_EQ(settled(), english);
}

enum class After { kShown, kHidden, kMinimised, kExited };
struct Closing {
    uint32_t remember;
    uint32_t closeState;
    int code;
    const char* click;  // in the question; null where none is asked
    bool tray;
    After after;
};
constexpr const char* kMinimise = "control_1028";
constexpr const char* kExit = "control_1027";
constexpr const char* kCloseBox = "";
const Closing kClosings[] = {
    {0, 0, kCloseByFrame, kMinimise, true, After::kHidden},
    {0, 1, kCloseByFrame, kMinimise, true, After::kHidden},  // the answer is the new state
    {0, 0, kCloseByFrame, kExit, true, After::kExited},
    {0, 1, kCloseByFrame, kCloseBox, true, After::kShown},
    {0, 0, kCloseByFrame, kMinimise, false, After::kMinimised},
    {1, 0, kCloseByFrame, nullptr, true, After::kHidden},
    {1, 0, kCloseByFrame, nullptr, false, After::kMinimised},
    {1, 1, kCloseByFrame, nullptr, true, After::kExited},
    {0, 0, kCloseByExit, nullptr, true, After::kExited},
    {1, 0, kCloseByExit, nullptr, true, After::kExited},
    {0, 0, kCloseForUpdate, nullptr, true, After::kExited},
};

TEST_F(MainDialog, ClosesAsTheCodeTheAnswersAndTheTrayHaveIt) {
    for (const Closing& closing : kClosings) {
        SCOPED_TRACE(&closing - kClosings);
        Store("Remember", closing.remember);
        Store("CloseState", closing.closeState);
        tray = closing.tray;
        Start();
        if (closing.click != nullptr) ClickLater(closing.click);
        Close(closing.code);
        EXPECT_EQ(Exited(), closing.after == After::kExited);
        EXPECT_EQ(window->isMinimized(), closing.after == After::kMinimised);
        EXPECT_EQ(window->isVisible(),
                  closing.after == After::kShown || closing.after == After::kMinimised);
        if (closing.after == After::kExited || closing.after == After::kShown) continue;
        window->Send(kMessageTray, 0, kTrayDoubleClick);
        EXPECT_TRUE(window->isVisible() && !window->isMinimized());
    }
}

TEST_F(MainDialog, AHiddenWindowComesBackWhenTheTrayGoes) {
    Store("Remember", 1);
    Start();
    Close(kCloseByFrame);
    ASSERT_FALSE(window->isVisible());
    tray = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->isVisible(); }, 10000));
}

TEST_F(MainDialog, TheListAndThePlaceComeBackAtTheNextStart) {
    Start(Images(3));
    Send(kCommandSelectAll);
    window->setGeometry(60, 70, 700, 500);
    window->showMaximized();
    Close(kCloseByExit);
    ASSERT_TRUE(Exited());
    Start();
    EXPECT_EQ(List(), "A*B*C*");
    EXPECT_EQ(window->geometry(), QRect(60, 70, 700, 500));
    Send(kCommandClear);  // answered with No
    window->StoreAll();   // and an end without a close
    Start();
    EXPECT_EQ(List(), "A*B*C*");
}

TEST_F(MainDialog, AListThatCannotBeStoredIsOfferedAFile) {
    listKept = [] { return false; };
    Start(Images(2));
    for (const int answer : {kEndCancel, kEndYes}) {  // and no file is chosen
        dialogs.answers = {answer};
        Close(kCloseByExit);
        EXPECT_FALSE(Exited());
    }
    dialogs.answers = {kEndYes, kEndOk, kEndYes};
    dialogs.listToSave = folder / "no such folder" / "kept";
    dialogs.meanwhile = [this] {
        const std::u16string failed = LoadText(TextId::kOperationFailed, Language::kEnglish);
        if (dialogs.told.back().text.starts_with(failed)) dialogs.listToSave = folder / "kept";
    };
    Close(kCloseByExit);
    EXPECT_TRUE(Exited());
    EXPECT_NE(test::ReadText(folder / "kept.fcl").find("B.nes"), std::string::npos);
}

TEST_F(MainDialog, AnExitAsksAboutARunningTaskAndWaitsForItsEnd) {
    Start(Images(1));
    const std::u16string name = std::u16string(40, u'a') + u"!";
    const FindRecord rename{u"A", name, false, false};
    window->Send(kMessageReplaceAll, 0, reinterpret_cast<MessageParam>(&rename));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy() && List() == ToUtf8(name); }));
    const FindRecord endless{u"^(a+)+$", u"", true, false};
    const auto search = [&] {
        window->Send(kMessageReplaceAll, 0, reinterpret_cast<MessageParam>(&endless));
    };
    search();
    ASSERT_TRUE(Busy());
    Widget<QAbstractButton>("status_stop").click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Busy(); }));
    search();
    dialogs.told.clear();
    Close(kCloseByExit);  // answered with No
    EXPECT_EQ(dialogs.told.size(), 1u);
    EXPECT_TRUE(!Exited() && Busy());
    dialogs.answers = {kEndYes};
    Close(kCloseByExit);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Exited(); }));
    Start();
    EXPECT_EQ(List(), ToUtf8(name));
}

TEST_F(MainDialog, StaysOnTopInItsPlace) {
    Start();
    window->setGeometry(50, 60, 640, 480);
    for (const bool on : {true, false}) {
        Send(kCommandTopmost);
        EXPECT_EQ(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint), on);
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(window->geometry(), QRect(50, 60, 640, 480));
    }
}

TEST_F(MainDialog, TellsAProblemOfTheStoreOnce) {
    takeProblem = [](Language) { return std::u16string(u"The disk is full"); };
    Start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialogs.told.empty(); }, 10000));
    QTest::qWait(2500);
    EXPECT_EQ(dialogs.told.size(), 1u);
}

TEST(Placement, BringsAWindowBackOntoAScreen) {
    const QRect screens[] = {{0, 0, 1920, 1040}, {1920, 0, 1280, 1024}};
    const std::pair<QRect, QRect> cases[] = {
        // stored, and where the window stands
        {{100, 100, 800, 600}, {100, 100, 800, 600}},
        {{2000, 100, 800, 600}, {2000, 100, 800, 600}},   // on the second one
        {{-700, 100, 800, 600}, {-700, 100, 800, 600}},   // enough is seen
        {{-790, 100, 800, 600}, {0, 100, 800, 600}},      // too little is
        {{5000, 5000, 800, 600}, {1120, 440, 800, 600}},  // a screen that is gone
        {{100, -500, 800, 600}, {100, 32, 800, 600}},     // the title bar is out of reach
        {{9000, 9000, 90000, 90000}, {0, 32, 1920, 1008}},
    };
    for (const auto& [stored, place] : cases)
        EXPECT_EQ(OntoScreen(stored, screens), place);
}

}  // namespace
}  // namespace bw
