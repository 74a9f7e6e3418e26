// The small dialogs: what they store and when, how they end, what they send.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/dialogs/about_dialog.h"
#include "shell/dialogs/close_dialog.h"
#include "shell/dialogs/export_settings_dialog.h"
#include "shell/dialogs/extern_menu_dialog.h"
#include "shell/dialogs/message_dialog.h"
#include "shell/dialogs/rename_dialog.h"
#include "shell/framework/commands.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;

class SmallDialogs : public testing::Test {
  protected:
    std::optional<uint32_t> Number(const char* name) const {
        uint32_t value = 0;
        return store->RegReadDword(kMainKey, name, value) ? std::optional(value) : std::nullopt;
    }
    std::optional<std::u16string> Text(const char* name) const {
        std::u16string value;
        return store->RegReadString(kMainKey, name, value) ? std::optional(value) : std::nullopt;
    }
    void Store(const char* name, uint32_t value) {
        ASSERT_TRUE(store->RegWriteDword(kMainKey, name, value));
    }

    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
};

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
    const auto click = [](int id) { return [id](QWidget& window) { Click(window, id); }; };
    QWidget inTray;
    EXPECT_EQ(Ask(kConfirm, press(Qt::Key_Return)), kEndOk);
    EXPECT_EQ(Ask(kYesNo, click(kEndYes), &inTray), kEndYes);
    EXPECT_EQ(Ask(kYesNo, click(kEndNo)), kEndNo);
    EXPECT_EQ(Ask(kYesNo, press(Qt::Key_Escape)), kEndCancel);
    EXPECT_EQ(Ask(kConfirm, [](QWidget& window) { window.close(); }), kEndCancel);
}

TEST(MessageDialog, LongTextsScrollAndShortOnesTakeLittleRoom) {
    std::u16string lines;
    for (int i = 0; i < 300; ++i)
        lines += u"A line that is to be read to its end.\r\n";
    std::vector<QSize> sizes;
    for (const std::u16string& text : {lines, std::u16string(u"Text")}) {
        const auto look = [&](QWidget& window) {
            sizes.push_back(window.size());
            auto& edit = ControlOf<QPlainTextEdit>(window, 1083);
            EXPECT_EQ(edit.verticalScrollBar()->maximum() > 0, text == lines);
            edit.setFocus();
            QTest::keyClick(&edit, Qt::Key_Tab);
            EXPECT_NE(window.focusWidget(), &edit);
            window.close();
        };
        Ask(MessageButtons::kConfirm, look, nullptr, text);
    }
    EXPECT_LT(sizes[1].height(), sizes[0].height() / 2);
}

TEST(MessageDialog, TakesAnotherLanguageWhileItIsOpen) {
    CAboutDialog owner(Language::kEnglish);
    const auto change = [&](QWidget& window) {
        owner.PostLanguage(Language::kChinese);
        RunEvents();
        EXPECT_EQ(ControlOf<QPushButton>(window, kEndYes).text(), QStringLiteral("是"));
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Caption"));
        window.close();
    };
    Ask(MessageButtons::kYesNo, change, &owner);
}

TEST_F(SmallDialogs, TheCloseQuestionStoresItsBoxAtOnceAndTheAnswerWithIt) {
    CCloseDialog dialog(*store, Language::kEnglish);
    const auto click = [&](std::initializer_list<int> ids) {
        WhenModal([ids = std::vector(ids)](QWidget& window) {
            for (const int id : ids)
                Click(window, id);
            window.close();
        });
        return dialog.DoModal();
    };
    EXPECT_EQ(click({1027}), kEndOk);
    EXPECT_EQ(Number("CloseState"), 1u);
    EXPECT_EQ(Number("Remember"), std::nullopt);
    // Ticked and left by the frame: the tick stays, and so does the answer of before.
    EXPECT_EQ(click({1026}), kEndCancel);
    EXPECT_EQ(Number("Remember"), 1u);
    EXPECT_EQ(Number("CloseState"), 1u);
    EXPECT_EQ(click({1026, 1028}), kEndOk);
    EXPECT_EQ(Number("Remember"), 0u);
    EXPECT_EQ(Number("CloseState"), 0u);
}

TEST_F(SmallDialogs, ExportSettingsShowWhatIsStoredAndStoreEachClick) {
    Store("ExportRomType", 1);
    Store("ExportPrgSize", 2);
    CExportSettingsDialog dialog(*store, Language::kEnglish);
    const auto checked = [&](int id) { return ControlOf<QRadioButton>(dialog, id).isChecked(); };
    dialog.ShowModeless();
    EXPECT_TRUE(checked(1085) && checked(1091));
    Click(dialog, 1084);
    EXPECT_EQ(Number("ExportRomType"), 0u);
    EXPECT_TRUE(checked(1091)) << "the groups are apart";
    // The arrow keys choose as a click does.
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto& size = ControlOf<QRadioButton>(dialog, 1091);
    size.setFocus();
    QTest::keyClick(&size, Qt::Key_Left);
    EXPECT_TRUE(checked(1090));
    EXPECT_EQ(Number("ExportPrgSize"), 1u);
    Click(dialog, kEndOk);
    RunEvents();
    EXPECT_FALSE(dialog.IsOpen());
    Store("ExportPrgSize", 77);
    dialog.ShowModeless();
    EXPECT_TRUE(checked(1089));
}

TEST_F(SmallDialogs, TheMenuPathIsStoredByChoosingAndByClosingInAnyWay) {
    ScriptedDialogs files;
    files.menuFile = "/menus/\xFF/new.asm";
    store->RegWriteString(kMainKey, "ExternMenuPath", u"/old/menu.nes");
    CExtrenMenuDialog dialog(*store, files, Language::kEnglish);
    auto& path = ControlOf<QLineEdit>(dialog, 1091);
    dialog.ShowModeless();
    EXPECT_EQ(path.text(), QStringLiteral("/old/menu.nes"));
    Click(dialog, 1092);
    EXPECT_THAT(files.starts, ElementsAre("/old"));
    EXPECT_EQ(Text("ExternMenuPath"), PathText(*files.menuFile)) << "stored at once";
    files.menuFile.reset();
    Click(dialog, 1092);
    EXPECT_NE(path.text(), QString()) << "the user gave up";
    path.setText(QStringLiteral("by hand"));
    Click(dialog, kEndOk);
    RunEvents();
    EXPECT_EQ(Text("ExternMenuPath"), u"by hand");
    dialog.ShowModeless();
    path.setText(QStringLiteral("left by Escape"));
    QTest::keyClick(&path, Qt::Key_Escape);
    RunEvents();
    EXPECT_FALSE(dialog.IsOpen());
    EXPECT_EQ(Text("ExternMenuPath"), u"left by Escape");
}

// Stands for the main window: keeps the records and the commands that it gets.
class Window : public MessageTarget {
  public:
    struct Got {
        int message;
        FindRecord record;
    };
    std::vector<Got> got;
    int stops = 0;

  protected:
    const MessageTable& Table() const override {
        static const MessageEntry entries[] = {
            OnMessage(kMessageFindNext, &Window::Keep<kMessageFindNext>),
            OnMessage(kMessageReplace, &Window::Keep<kMessageReplace>),
            OnMessage(kMessageReplaceAll, &Window::Keep<kMessageReplaceAll>),
            OnCommand(kCommandStopTask, &Window::Stop),
        };
        static const MessageTable table{entries};
        return table;
    }

  private:
    template <int kMessage>
    MessageResult Keep(MessageParam wParam, MessageParam lParam) {
        EXPECT_EQ(wParam, 0);
        got.push_back({kMessage, *reinterpret_cast<const FindRecord*>(lParam)});
        return 1;
    }
    MessageResult Stop(MessageParam, MessageParam) { return ++stops; }
};

TEST_F(SmallDialogs, FindAndReplaceSendsItsFieldsAndKeepsThem) {
    Window window;
    CRenameDialog dialog(*store, window, Language::kEnglish);
    dialog.ShowModeless();
    auto& find = ControlOf<QLineEdit>(dialog, 1032);
    EXPECT_EQ(find.text(), QStringLiteral("^\\d+\\."));
    QTest::keyClick(&find, Qt::Key_Return);
    ASSERT_EQ(window.got.size(), 1u);
    EXPECT_EQ(window.got[0].message, kMessageReplaceAll);
    EXPECT_FALSE(window.got[0].record.regex || window.got[0].record.onlyChecked);

    find.setText(QStringLiteral("a b "));
    ControlOf<QLineEdit>(dialog, 1033).setText(QStringLiteral("$1中"));
    for (const int id : {1035, 1045, 1042, 1043})  // expression, checked ones, find, replace
        Click(dialog, id);
    ASSERT_EQ(window.got.size(), 3u);
    EXPECT_EQ(window.got[1].message, kMessageFindNext);
    EXPECT_EQ(window.got[2].message, kMessageReplace);
    const FindRecord& record = window.got[2].record;
    EXPECT_EQ(record.find, u"a b ");
    EXPECT_EQ(record.replace, u"$1中");
    EXPECT_TRUE(record.regex && record.onlyChecked);

    EXPECT_EQ(Text("Search"), std::nullopt) << "stored at closing only";
    QTest::keyClick(&find, Qt::Key_Escape);
    RunEvents();
    CRenameDialog next(*store, window, Language::kChinese);
    next.ShowModeless();
    EXPECT_EQ(ControlOf<QLineEdit>(next, 1032).text(), QStringLiteral("a b "));
    EXPECT_EQ(ControlOf<QLineEdit>(next, 1033).text(), QStringLiteral("$1中"));
    EXPECT_TRUE(ControlOf<QRadioButton>(next, 1035).isChecked());
    EXPECT_TRUE(ControlOf<QCheckBox>(next, 1045).isChecked());
}

TEST_F(SmallDialogs, FindAndReplaceTellsOfProblemsAndOfASearchThatTakesTime) {
    Window window;
    CRenameDialog dialog(*store, window, Language::kEnglish);
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
    EXPECT_TRUE(window.got.empty()) << "one search at a time";
    EXPECT_FALSE(stop.isVisible()) << "most are over before anybody sees it";
    EXPECT_TRUE(QTest::qWaitFor([&] { return stop.isVisible(); }));
    EXPECT_EQ(dialog.focusWidget(), &stop);
    QTest::keyClick(&stop, Qt::Key_Space);
    EXPECT_EQ(window.stops, 1);
    dialog.SetBusy(false);
    EXPECT_FALSE(stop.isVisible());
    EXPECT_EQ(dialog.focusWidget(), &findNext);
    Click(dialog, 1042);
    EXPECT_EQ(window.got.size(), 1u);
}

}  // namespace
}  // namespace bw
