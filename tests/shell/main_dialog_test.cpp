// The main window: commands by id, menu and button; languages; closing; the tray; its place.
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <algorithm>

#include "language/language_table.h"
#include "shell/framework/messages.h"
#include "shell/framework/placement.h"
#include "shell/list/game_list_view.h"
#include "shell/main/button_column.h"
#include "shell/main/menu_rows.h"
#include "shell/main_window.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::EndsWith;

class MainDialog : public MainWindow {};

// Before and after it; games with a star get checked first.
const std::tuple<int, std::string, std::string> kListCommands[] = {
    {kCommandMoveUp, "ABC*D", "AC*BD"},       {kCommandMoveDown, "A*BC*D", "BA*DC*"},
    {kCommandMoveTop, "ABC*D*", "C*D*AB"},    {kCommandMoveBottom, "A*BC*D", "BDA*C*"},
    {kCommandSelectAll, "AB*CD", "A*B*C*D*"}, {kCommandSelectInverse, "AB*CD", "A*BC*D*"},
    {kCommandRemove, "A*BC*D", "BD"},         {kCommandClear, "A*BCD", ""},
};

TEST_F(MainDialog, ListCommandsWorkAndCanBeTakenBack) {
    const auto files = Images(4);
    for (const auto& [id, before, after] : kListCommands) {
        SCOPED_TRACE(before + " " + std::to_string(id));
        Start(files);
        int row = -1;
        QAbstractItemModel& model = *Table().model();
        for (const char letter : before) {
            row += letter == '*' ? 0 : 1;
            if (letter == '*') model.setData(model.index(row, 0), Qt::Checked, Qt::CheckStateRole);
        }
        ASSERT_EQ(List(), before);
        dialogs.answers = {kEndYes};
        ControlOf<QPushButton>(*window, id).click();
        EXPECT_EQ(List(), after);
        Entry(kCommandUndo).trigger();
        EXPECT_EQ(List(), before);
        Entry(kCommandRedo).trigger();
        EXPECT_EQ(List(), after);
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
    EXPECT_EQ(choose("Undo"), "A*B");
}

TEST_F(MainDialog, CommandsOnTheListAreRefusedWhileATaskHasIt) {
    Start(Images(2));
    dialogs.meanwhile = [this] {
        dialogs.meanwhile = nullptr;
        for (const int id : {kCommandSelectAll, kCommandSelectInverse, kCommandRemove,
                             kCommandMoveUp, kCommandOpen, kCommandBuildCoolboy}) {
            dialogs.told.clear();
            Send(id);
            EXPECT_THAT(dialogs.told, ElementsAre(kBusy)) << id;
        }
        Send(kCommandClear);  // doesn't look at the task
        EXPECT_NE(dialogs.told.back(), kBusy);
    };
    Send(kCommandOpen);
    EXPECT_EQ(List(), "AB");
    Send(kCommandSelectAll);
    EXPECT_EQ(ChildOf<QLabel>(*window, "status_counts").text(),
              QStringLiteral("Selected: 2 item(s) All: 2 item(s)"));
}

TEST_F(MainDialog, EveryCommandThatIsSentHasOneHandler) {
    Start();
    const auto handlers = [&](int id) { return window->CountHandlers(kMessageCommand, id); };
    for (size_t i = 0; i < ButtonColumn::kButtons; ++i)
        EXPECT_EQ(handlers(ButtonColumn::CommandOf(i)), 1U) << i;
    for (const MenuRow& row : MainMenuRows()) {
        if (row.id == 0) continue;  // popups and the lines between entries
        EXPECT_EQ(handlers(row.id), 1U) << row.id;
    }
}

TEST_F(MainDialog, CommandsThatAskOpenWhatTheyAreNamedAfter) {
    Start(Images(1));
    Send(kCommandSelectAll);
    for (const auto& [id, asked] : {std::pair{kCommandOpen, "images"},
                                    {kCommandLoad, "load"},
                                    {kCommandSave, "save"},
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
    EXPECT_THAT(
        dialogs.told,
        ElementsAre("Tips: " + ToUtf8(LoadText(TextId::kSupportedMappers, Language::kEnglish))));
}

TEST_F(MainDialog, NewsGoWithTheNextCommandAndTheQuestionComesBack) {
    Start(Images(2));
    auto& told = ChildOf<QLabel>(*window, "status_told");
    Store("Remember", 1);
    Send(kCommandAskAtClosing);
    EXPECT_EQ(Stored("Remember"), 0u);
    EXPECT_NE(told.text(), QString());
    Send(kCommandFilter);
    EXPECT_EQ(told.text(), QString());
    Send(kCommandAskAtClosing);
    Table().model()->setData(Table().model()->index(0, 0), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(told.text(), QString());
}

TEST_F(MainDialog, ABuildTakesTheStoredDesign) {
    const auto stored = [this](const char* name, std::string table) {
        store->RegWriteBinary(kDesignKey, name,
                              {reinterpret_cast<uint8_t*>(table.data()), table.size()});
        return table;
    };
    const std::string attributes = stored("Attributes", test::Noise(64, 1));
    const std::string palettes = stored("BkgPalette", std::string(16, 0x11)) +
                                 stored("SpritePalette", std::string(16, 0x22));
    Store("CustomEnable", 8);
    Start(Images(1));
    Send(kCommandSelectAll);
    dialogs.output = OutputChoice{folder / "design", RomFormat::kNes20};
    Send(kCommandBuildCoolgirl);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy(); }, 60'000));
    const std::string rom = test::ReadText(folder / "design.nes");
    EXPECT_NE(rom.find(attributes), std::string::npos);
    EXPECT_NE(rom.find(palettes), std::string::npos);
}

// All that can be read in the window, always in the same order.
QStringList Texts(const CMainDialog& window) {
    QStringList texts{window.windowTitle()};
    for (const QAction* action : window.findChildren<QAction*>())
        texts << action->text()
              << (action->toolTip() == action->iconText() ? QString() : action->toolTip());
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        // A change of language clears what the last task has told; edit boxes hold the user's text.
        if (widget->objectName() == QStringLiteral("status_told")) continue;
        if (qobject_cast<const QLineEdit*>(widget) != nullptr) continue;
        texts << widget->toolTip() << widget->accessibleName()
              << widget->property("text").toString() << widget->property("title").toString();
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
    EXPECT_TRUE(Entry(kCommandChinese).isChecked() && !Entry(kCommandEnglish).isChecked());
    Send(kCommandEnglish);
    EXPECT_EQ(settled(), english);
}

enum class After { kShown, kHidden, kMinimised, kExited };
using State = std::pair<uint32_t, uint32_t>;  // what is remembered, and what closing does
using Clicks = std::vector<int>;              // in the question, before its frame is closed
struct Closing {
    State stored;
    int code;
    std::optional<Clicks> clicks;  // none where nothing is asked
    bool tray;
    After after;
    State storedAfter;
};
enum Question { kRemember = 1026, kExit, kMinimise };  // its controls
const Closing kClosings[] = {
    {{0, 1}, kCloseByFrame, Clicks{kMinimise}, true, After::kHidden, {0, 0}},
    {{0, 0}, kCloseByFrame, Clicks{kExit}, true, After::kExited, {0, 1}},
    {{0, 1}, kCloseByFrame, Clicks{}, true, After::kShown, {0, 1}},
    {{0, 1}, kCloseByFrame, Clicks{kRemember}, true, After::kShown, {1, 1}},
    {{0, 0}, kCloseByFrame, Clicks{kRemember, kRemember, kExit}, true, After::kExited, {0, 1}},
    {{0, 0}, kCloseByFrame, Clicks{kMinimise}, false, After::kMinimised, {0, 0}},
    {{1, 0}, kCloseByFrame, {}, true, After::kHidden, {1, 0}},
    {{1, 0}, kCloseByFrame, {}, false, After::kMinimised, {1, 0}},
    {{1, 1}, kCloseByFrame, {}, true, After::kExited, {1, 1}},
    {{0, 0}, kCloseByExit, {}, true, After::kExited, {0, 0}},
    {{0, 0}, kCloseForUpdate, {}, true, After::kExited, {0, 0}},
};

TEST_F(MainDialog, ClosesAsTheCodeTheAnswersAndTheTrayHaveIt) {
    for (const Closing& closing : kClosings) {
        SCOPED_TRACE(&closing - kClosings);
        Store("Remember", closing.stored.first);
        Store("CloseState", closing.stored.second);
        tray = closing.tray;
        Start();
        const auto click = [&](QWidget& question) {
            for (const int id : *closing.clicks)
                ControlOf<QAbstractButton>(question, id).click();
            question.close();
        };
        if (closing.clicks) WhenModal(click);
        Close(closing.code);
        EXPECT_EQ(State(Stored("Remember"), Stored("CloseState")), closing.storedAfter);
        const After shown = window->isMinimized() ? After::kMinimised : After::kShown;
        const After gone = Exited() ? After::kExited : After::kHidden;
        EXPECT_EQ(window->isVisible() ? shown : gone, closing.after);
        if (closing.after == After::kExited || closing.after == After::kShown) continue;
        window->Send(kMessageTray, 0, kTrayDoubleClick);
        EXPECT_TRUE(window->isVisible() && !window->isMinimized());
    }
}

TEST_F(MainDialog, ComesBackWhenTheTrayGoesAndTellsAProblemOfTheStoreOnce) {
    takeProblem = [](Language) { return std::u16string(u"The disk is full"); };
    Store("Remember", 1);
    Start();
    Close(kCloseByFrame);
    tray = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->isVisible(); }, 10000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialogs.told.empty(); }, 10000));
    QTest::qWait(2500);
    EXPECT_THAT(dialogs.told, ElementsAre(EndsWith(": The disk is full")));
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
    Start();
    Close(kCloseByExit);
    EXPECT_TRUE(Exited() && dialogs.told.empty()) << "there is none";
    Start(Images(2));
    for (const int answer : {kEndCancel, kEndYes}) {  // and no file is chosen
        dialogs.answers = {answer};
        Close(kCloseByExit);
        EXPECT_FALSE(Exited());
    }
    dialogs.answers = {kEndYes, kEndOk, kEndYes};
    dialogs.listToSave = folder / "no such folder" / "kept";
    dialogs.meanwhile = [this] {
        if (dialogs.told.back().starts_with("Error: The operation failed"))
            dialogs.listToSave = folder / "kept";
    };
    Close(kCloseByExit);
    EXPECT_TRUE(Exited());
    EXPECT_NE(test::ReadText(folder / "kept.fcl").find("B.nes"), std::string::npos);
}

TEST_F(MainDialog, AnExitAsksAboutARunningTaskAndWaitsForItsEnd) {
    Start(Images(1));
    const std::u16string name = std::u16string(40, u'a') + u"!";
    ReplaceAll({u"A", name, false, false});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy() && List() == ToUtf8(name); }));
    const FindRecord endless{u"^(a+)+$", u"", true, false};
    ReplaceAll(endless);
    ASSERT_TRUE(Busy());
    ChildOf<QAbstractButton>(*window, "status_stop").click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Busy(); }));
    ReplaceAll(endless);
    dialogs.told.clear();
    Close(kCloseByExit);  // answered with No
    QTest::qWait(50);
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
        {{100, 100, 2900, 800}, {100, 100, 2900, 800}},  // on both
        {{100, 100, 2240, 1280}, {0, 32, 1920, 1008}},   // of a screen with more pixels
    };
    for (const auto& [stored, place] : cases)
        EXPECT_EQ(OntoScreen(stored, screens), place);
}

}  // namespace
}  // namespace bw
