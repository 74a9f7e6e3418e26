// The main window's commands, where they are more than what lies below them.
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <array>

#include "shell/main_window.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

class MainCommands : public MainWindow {};

TEST_F(MainCommands, WhatIsTakenOutIsToldAndAFilterKeepsTheRest) {
    Start(Images(5));
    const QLabel& told = ChildOf<QLabel>(*window, "status_told");
    const auto sent = [&](int command) {
        Send(command);
        return List() + " " + told.text().toStdString();
    };
    const auto filter = [&](const char* text) {
        ChildOf<QLineEdit>(*window, "filterText").setText(QString::fromLatin1(text));
    };
    EXPECT_THAT(sent(kCommandRemove), testing::StartsWith("ABCDE Nothing was removed"));
    Table().selectRow(1);
    EXPECT_EQ(sent(kCommandRowsDown), "ACBDE ") << "old news have gone";
    EXPECT_EQ(sent(kCommandRowsRemove), R"(ACDE Removed "B". Ctrl+Z brings it back.)");
    Send(kCommandSelectAll);
    filter("C.nes");
    EXPECT_EQ(sent(kCommandRemove),
              R"( Removed "C". Ctrl+Z brings it back. 3 hidden checked one(s) stay.)");
    filter("D.nes");
    dialogs.answers = {kEndYes};
    EXPECT_EQ(sent(kCommandClear), R"( Removed "D". Ctrl+Z brings it back.)");
    EXPECT_THAT(dialogs.told.back(), EndsWith("The other 2 stay in the list."));
    filter("");
    EXPECT_EQ(List(), "A*E*");
    Send(kCommandSelectInverse);
    Send(kCommandFitCoolgirl);
    EXPECT_EQ(List() + told.text().toStdString(),
              "A*E*Checked 2 game(s) that COOLGIRL runs; 0 that it can't run are not checked.");
}

TEST_F(MainCommands, FilesMayBeDroppedAnywhere) {
    const auto files = Images(2);
    Start();
    size_t rows = 0;
    for (QWidget* on : {static_cast<QWidget*>(window.get()),
                        static_cast<QWidget*>(&ChildOf<QLineEdit>(*window, "filterText"))}) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(PathToQt(files[rows]))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(on, &enter);
        QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(on, &drop);
        // Files that were moved by a drop would be lost.
        EXPECT_TRUE(enter.isAccepted() && drop.dropAction() == Qt::CopyAction);
        ++rows;
        EXPECT_TRUE(QTest::qWaitFor([&] { return Table().model()->rowCount() == int(rows); }));
    }
    QMimeData web;
    web.setUrls({QUrl(QStringLiteral("http://localhost/a.nes"))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &web, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(MainCommands, ARefusedBuildLeadsToTheGame) {
    auto files = Images(3);
    std::string image = test::ReadText(files[1]);
    image[6] = static_cast<char>(0x50);  // mapper 5
    test::WriteText(files[1], image);
    Start(files);
    Send(kCommandMindkids);
    EXPECT_EQ(ControlOf<QPushButton>(*window, kCommandBuildCoolboy).text(),
              QStringLiteral("MINDKIDS"));
    EXPECT_THAT(Entry(kCommandBuildCoolboy).text().toStdString(), HasSubstr("MINDKIDS"));
    Table().model()->setData(Table().model()->index(1, 0), Qt::Checked, Qt::CheckStateRole);
    Send(kCommandBuildCoolboy);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy() && !dialogs.told.empty(); }));
    EXPECT_THAT(dialogs.told.back(), HasSubstr("2.B Mapper5"));
    EXPECT_EQ(Table().currentIndex().row(), 1);
    EXPECT_THAT(ChildOf<QLabel>(*window, "status_told").text().toStdString(),
                HasSubstr("Row 2 can't run on MINDKIDS"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return ChildOf<QLabel>(*window, "status_space_0")
            .text()
            .endsWith(QStringLiteral(", 1 can't run"));
    }));
    Send(kCommandFitCoolboy);
    EXPECT_EQ(List(), "A*BC*");
}

TEST_F(MainCommands, DesignsComeAndGoByFiles) {
    Start(Images(1));
    Send(kCommandCustomEnable);
    EXPECT_THAT(dialogs.told, ElementsAre(HasSubstr("No screen has been designed yet")));
    EXPECT_FALSE(Entry(kCommandCustomEnable).isChecked());
    // A design that differs from the default in one byte, saved, and brought back by the question.
    std::string attributes(64, '\x1B');
    const auto storeAttributes = [&] {
        store->RegWriteBinary(kDesignKey, "Attributes",
                              {reinterpret_cast<uint8_t*>(attributes.data()), attributes.size()});
    };
    storeAttributes();
    store->RegWriteString(kDesignKey, "CaptionText", u"MINE");
    Start();
    dialogs.design = folder / "mine.fcm";
    Send(kCommandDesignSave);
    store->RegDeleteValue(kDesignKey, "Attributes");
    store->RegWriteString(kDesignKey, "CaptionText", u"ANOTHER");
    Start();
    dialogs.choice = 0;  // the designer, which closes as it opened
    WhenModal([](QWidget& designer) { dynamic_cast<CDialogBase&>(designer).Send(kMessageClose); });
    Send(kCommandCustomEnable);
    EXPECT_FALSE(Entry(kCommandCustomEnable).isChecked());
    dialogs.choice = 1;  // a file
    Send(kCommandCustomEnable);
    EXPECT_TRUE(Entry(kCommandCustomEnable).isChecked());
    EXPECT_EQ(dialogs.starts.back(), folder.Path());
    std::array<uint8_t, 64> stored{};
    size_t size = stored.size();
    ASSERT_TRUE(store->RegReadBinary(kDesignKey, "Attributes", stored.data(), size));
    EXPECT_EQ(stored[5], 0x1B);
    std::u16string caption;
    store->RegReadString(kDesignKey, "CaptionText", caption);
    EXPECT_EQ(caption, u"MINE");
    EXPECT_TRUE(std::filesystem::exists(folder / "design_history")) << "it can be undone";
    const size_t told = dialogs.told.size();
    Start();
    Send(kCommandCustomEnable);
    Send(kCommandCustomEnable);
    EXPECT_EQ(dialogs.told.size(), told) << "neither at a start nor with a design";
    // What is drawn in the designer's window is the process's design when it has closed.
    WhenModal([](QWidget& designer) {
        ControlOf<QAbstractButton>(designer, 1105).click();  // the attributes' reset
        dynamic_cast<CDialogBase&>(designer).Send(kMessageClose);
    });
    Send(kCommandMenuDesign);
    ASSERT_TRUE(store->RegReadBinary(kDesignKey, "Attributes", stored.data(), size));
    EXPECT_EQ(stored[5], 0);
}

}  // namespace
}  // namespace bw
