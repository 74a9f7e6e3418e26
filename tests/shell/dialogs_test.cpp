// The small dialogs: what they store and when, how they end, what they send; and the file dialogs.
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include "common/environment_variable.h"
#include "shell/dialogs/about_dialog.h"
#include "shell/dialogs/export_settings_dialog.h"
#include "shell/dialogs/extern_menu_dialog.h"
#include "shell/dialogs/message_dialog.h"
#include "shell/dialogs/qt_user_dialogs.h"
#include "shell/dialogs/rename_dialog.h"
#include "shell/main_window.h"

namespace bw {
namespace {

using testing::ElementsAre;

// Beside a main window that isn't there.
using SmallDialogs = MainWindow;

void Click(QWidget& window, int id) {
    ControlOf<QAbstractButton>(window, id).click();
}

int Ask(MessageButtons buttons, const std::function<void(QWidget&)>& act, QWidget* parent = nullptr,
        std::u16string_view text = u"Text") {
    WhenModal(act);
    return CMessageDialog::Show(parent, text, u"Caption", buttons, Language::kEnglish);
}

TEST(MessageDialog, EndsWithTheCodeOfItsButtonAndWithTwoByTheFrame) {
    using enum MessageButtons;
    const auto press = [](int key) {
        return [key](QWidget& window) { QTest::keyClick(window.focusWidget(), Qt::Key(key)); };
    };
    CAboutDialog main(Language::kEnglish);
    CAboutDialog inTray(Language::kEnglish, &main);
    const auto clickYes = [&](QWidget& window) {
        main.PostLanguage(Language::kChinese);
        EXPECT_EQ(main.UiLanguage(), Language::kEnglish) << "posted, not sent";
        RunEvents();  // it reaches all that a window owns
        EXPECT_EQ(main.UiLanguage(), Language::kChinese);
        EXPECT_EQ(ControlOf<QPushButton>(window, kEndYes).text(), QStringLiteral("是"));
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Caption"));
        Click(window, kEndYes);
    };
    EXPECT_EQ(Ask(kConfirm, press(Qt::Key_Return)), kEndOk);
    EXPECT_EQ(Ask(kYesNo, clickYes, &inTray), kEndYes);
    EXPECT_EQ(Ask(kYesNo, [](QWidget& window) { Click(window, kEndNo); }), kEndNo);
    EXPECT_EQ(Ask(kYesNo, press(Qt::Key_Escape)), kEndCancel);
    EXPECT_EQ(Ask(kConfirm, [](QWidget& window) { window.close(); }), kEndCancel);
}

TEST(MessageDialog, LongTextsScrollAndShortOnesTakeLittleRoom) {
    const QString lines = QStringLiteral("A line that is to be read to its end.\r\n").repeated(300);
    std::vector<int> heights;
    for (const QString& text : {lines, QStringLiteral("Text")}) {
        const auto look = [&](QWidget& window) {
            heights.push_back(window.height());
            auto& edit = ControlOf<QPlainTextEdit>(window, 1083);
            EXPECT_EQ(edit.verticalScrollBar()->maximum() > 0, text == lines);
            edit.setFocus();
            QTest::keyClick(&edit, Qt::Key_Tab);
            EXPECT_NE(window.focusWidget(), &edit);
            window.close();
        };
        Ask(MessageButtons::kConfirm, look, nullptr, FromQt(text));
    }
    EXPECT_LT(heights[1], heights[0] / 2);
}

TEST_F(SmallDialogs, ExportSettingsShowWhatIsStoredAndStoreEachClick) {
    Store("ExportRomType", 1);
    Store("ExportPrgSize", 2);
    CExportSettingsDialog dialog(*store, Language::kEnglish);
    const auto checked = [&](int id) { return ControlOf<QRadioButton>(dialog, id).isChecked(); };
    dialog.ShowModeless();
    EXPECT_TRUE(checked(1085) && checked(1091));
    Click(dialog, 1084);
    EXPECT_EQ(Stored("ExportRomType"), 0u);
    EXPECT_TRUE(checked(1091)) << "the groups are apart";
    // The arrow keys choose as a click does.
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto& size = ControlOf<QRadioButton>(dialog, 1091);
    size.setFocus();
    QTest::keyClick(&size, Qt::Key_Left);
    EXPECT_TRUE(checked(1090));
    EXPECT_EQ(Stored("ExportPrgSize"), 1u);
    Click(dialog, kEndOk);
    RunEvents();
    EXPECT_FALSE(dialog.IsOpen());
    Store("ExportPrgSize", 77);
    dialog.ShowModeless();
    EXPECT_TRUE(checked(1089));
}

TEST_F(SmallDialogs, TheMenuPathIsStoredByChoosingAndByClosingInAnyWay) {
    dialogs.menuFile = "/menus/\xFF/new.asm";
    store->RegWriteString(kMainKey, "ExternMenuPath", u"/old/menu.nes");
    CExtrenMenuDialog dialog(*store, dialogs, Language::kEnglish);
    auto& path = ControlOf<QLineEdit>(dialog, 1091);
    dialog.ShowModeless();
    EXPECT_EQ(path.text(), QStringLiteral("/old/menu.nes"));
    Click(dialog, 1092);
    EXPECT_THAT(dialogs.starts, ElementsAre("/old"));
    EXPECT_EQ(StoredText(*store, "ExternMenuPath"), PathText(*dialogs.menuFile))
        << "stored at once";
    dialogs.menuFile.reset();
    Click(dialog, 1092);
    EXPECT_NE(path.text(), QString()) << "the user gave up";
    path.setText(QStringLiteral("by hand"));
    Click(dialog, kEndOk);
    RunEvents();
    EXPECT_EQ(StoredText(*store, "ExternMenuPath"), u"by hand");
    dialog.ShowModeless();
    path.setText(QStringLiteral("left by Escape"));
    QTest::keyClick(&path, Qt::Key_Escape);
    RunEvents();
    EXPECT_FALSE(dialog.IsOpen());
    EXPECT_EQ(StoredText(*store, "ExternMenuPath"), u"left by Escape");
}

// Stands for the main window: keeps the records and the commands that it gets.
class Window : public MessageTarget {
  public:
    std::vector<std::string> got;

  protected:
    const MessageTable& Table() const override { return table_; }

  private:
    MessageEntry Keep(int message, std::string name) {
        const auto keep = [this, name](MessageTarget&, MessageParam, MessageParam lParam) {
            const auto& record = *reinterpret_cast<const FindRecord*>(lParam);
            got.push_back(name + ": " + ToUtf8(record.find) + "|" + ToUtf8(record.replace) +
                          (record.regex ? "|regex" : "") + (record.onlyChecked ? "|checked" : ""));
            return 1;
        };
        return {keep, message};
    }
    MessageResult Stop(MessageParam, MessageParam) {
        got.emplace_back("stop");
        return 1;
    }

    const MessageEntry entries_[4] = {
        Keep(kMessageFindNext, "find"), Keep(kMessageReplace, "replace"),
        Keep(kMessageReplaceAll, "replace all"), OnCommand(kCommandStopTask, &Window::Stop)};
    const MessageTable table_{entries_};
};

TEST_F(SmallDialogs, FindAndReplaceSendsItsFieldsAndKeepsThem) {
    Window main;
    CRenameDialog dialog(*store, main, Language::kEnglish);
    dialog.ShowModeless();
    auto& find = ControlOf<QLineEdit>(dialog, 1032);
    QTest::keyClick(&find, Qt::Key_Return);
    find.setText(QStringLiteral("a b "));
    ControlOf<QLineEdit>(dialog, 1033).setText(QStringLiteral("$1中"));
    for (const int id : {1035, 1045, 1042, 1043, 40031})
        Click(dialog, id);
    const std::string fields = "a b |$1中|regex|checked";
    EXPECT_THAT(main.got, ElementsAre("replace all: ^\\d+\\.|", "find: " + fields,
                                      "replace: " + fields, "replace all: " + fields));
    EXPECT_EQ(StoredText(*store, "Search"), std::nullopt) << "stored at closing only";
    QTest::keyClick(&find, Qt::Key_Escape);
    RunEvents();
    CRenameDialog next(*store, main, Language::kChinese);
    next.ShowModeless();
    Click(next, 1042);
    EXPECT_EQ(main.got.back(), "find: " + fields);
}

TEST_F(SmallDialogs, FindAndReplaceTellsOfProblemsAndOfASearchThatTakesTime) {
    Window main;
    CRenameDialog dialog(*store, main, Language::kEnglish);
    dialog.ShowModeless();
    auto& findNext = ControlOf<QPushButton>(dialog, 1042);
    auto& stop = ControlOf<QPushButton>(dialog, kCommandStopTask);
    auto& problem = ControlOf<QLabel>(dialog, 41031);
    dialog.ShowProblem(u"<b>unfinished");
    EXPECT_EQ(problem.text(), QStringLiteral("<b>unfinished"));
    QTest::keyClicks(&ControlOf<QLineEdit>(dialog, 1032), QStringLiteral("x"));
    EXPECT_EQ(problem.text(), QString());
    findNext.setFocus();
    dialog.SetBusy(true);
    Click(dialog, 1042);
    EXPECT_TRUE(main.got.empty()) << "one search at a time";
    EXPECT_FALSE(stop.isVisible()) << "most are over before anybody sees it";
    EXPECT_TRUE(QTest::qWaitFor([&] { return stop.isVisible(); }));
    EXPECT_EQ(dialog.focusWidget(), &stop);
    QTest::keyClick(&stop, Qt::Key_Space);
    EXPECT_THAT(main.got, ElementsAre("stop"));
    dialog.SetBusy(false);
    EXPECT_FALSE(stop.isVisible());
    EXPECT_EQ(dialog.focusWidget(), &findNext);
    Click(dialog, 1042);
    EXPECT_EQ(main.got.size(), 2u);
}

class FileDialogs : public testing::Test {
  protected:
    // Types a name into the file dialog that opens next, and answers the question whether to
    // replace the file that it leads to.
    void Type(const QString& name, int typesDown = 0, std::optional<int> answer = {},
              const std::function<void()>& then = {}) {
        WhenModal([=, this](QWidget& modal) {
            if (answer) {
                WhenModal([=](QWidget& question) {
                    if (then) then();
                    dynamic_cast<QDialog&>(question).done(*answer);
                });
            }
            start_ = dynamic_cast<QFileDialog&>(modal).directory().absolutePath();
            auto* types = modal.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            for (int i = 0; i < typesDown; ++i)
                QTest::keyClick(types, Qt::Key_Down);
            modal.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
            dynamic_cast<QDialog&>(modal).accept();
        });
    }

    TemporaryFolder folder_;
    QWidget window_;
    QtUserDialogs dialogs_{window_, folder_.Path(), [] { return Language::kEnglish; }};
    QString start_;
};

TEST_F(FileDialogs, CompleteTheNameByTheTypeAndRememberIt) {
    Type(QStringLiteral("cart"), 2);
    const auto first = dialogs_.AskOutput(folder_ / "gone", u"proposed");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->path, folder_ / "cart.bin");
    EXPECT_EQ(first->format, RomFormat::kBinary);
    EXPECT_EQ(start_.toStdString(), folder_.Path()) << "in place of a folder that isn't there";
    Type(QStringLiteral("other"));
    EXPECT_EQ(dialogs_.AskOutput(folder_.Path(), u"x")->path, folder_ / "other.bin");
    Type(QStringLiteral("games.txt"));
    EXPECT_EQ(dialogs_.AskListToSave(folder_.Path()), folder_ / "games.txt.fcl");
}

TEST_F(FileDialogs, TellTheChosenType) {
    test::WriteText(folder_ / "tiles.bin", "1");
    const FileQuestion question{u"Title", folder_.Path(), {{u"chr", "chr"}, {u"bin", "bin"}}, 0};
    Type(QStringLiteral("tiles.bin"), 1);
    EXPECT_EQ(dialogs_.AskFileToOpen(question)->type, 1U);
    Type(QStringLiteral("new.bin"));
    EXPECT_EQ(dialogs_.AskFileToSave(question)->path, folder_ / "new.bin.chr");
}

TEST_F(FileDialogs, StartWhereTheUserMayWrite) {
    std::filesystem::create_directories(folder_ / "Documents");
    std::filesystem::create_directories(folder_ / "out");
    const EnvironmentVariable home("HOME", folder_.Path().c_str());
    const EnvironmentVariable settings("XDG_CONFIG_HOME", nullptr);
    QtUserDialogs installed(window_, folder_ / "gone", [] { return Language::kEnglish; });
    const auto start = [&](const std::filesystem::path& wanted) {
        Type(QStringLiteral("name"));
        installed.AskListToSave(wanted);
        return PathFromQt(start_);
    };
    EXPECT_EQ(start({}), folder_ / "Documents");
    std::filesystem::remove(folder_ / "Documents");
    EXPECT_EQ(start(folder_ / "gone"), folder_.Path());
    const std::string out = (folder_ / "out").string();
    const EnvironmentVariable known("BANKWEAVER_FILES", out.c_str());
    EXPECT_EQ(start({}), out);
}

TEST_F(FileDialogs, QuestionsStandBeforeTheDialogThatIsOpen) {
    QDialog open(&window_);
    QWidget* before = nullptr;
    WhenModal([&](QWidget&) {
        WhenModal([&](QWidget& question) {
            before = question.parentWidget();
            question.close();
        });
        const std::u16string answers[] = {u"One", u"Two"};
        EXPECT_EQ(dialogs_.Choose(u"Which?", u"Question", answers), std::nullopt);
        WhenModal([](QWidget& question) { ControlOf<QPushButton>(question, 1102).click(); });
        EXPECT_EQ(dialogs_.Choose(u"Which?", u"Question", answers), 1U);
        open.close();
    });
    open.exec();
    EXPECT_EQ(before, &open);
}

TEST_F(FileDialogs, ReplaceNothingUnasked) {
    test::WriteText(folder_ / "my.list.fcl", "");
    Type(QStringLiteral("my.list"), 0, kEndNo, [&] { Type(QStringLiteral("next")); });
    EXPECT_EQ(dialogs_.AskListToSave(folder_.Path()), folder_ / "next.fcl");
    Type(QStringLiteral("my.list"), 0, kEndYes);
    EXPECT_EQ(dialogs_.AskListToSave(folder_.Path()), folder_ / "my.list.fcl");
}

}  // namespace
}  // namespace bw
