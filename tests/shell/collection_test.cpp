// Names, copies, missing files and the words of the filter in the window.
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "rom/image_crcs.h"
#include "shell/main_window.h"
#include "support/paths.h"

namespace bw {
namespace {

using testing::HasSubstr;

constexpr int kOk = kEndOk;
constexpr int kFirstBox = 1220;  // of the rules for names

class Collection : public MainWindow {
  protected:
    // Images of these names; those with the same seed have the same data.
    std::vector<std::filesystem::path> Named(
        const std::vector<std::pair<std::string, uint32_t>>& images) {
        std::vector<std::filesystem::path> files;
        for (const auto& [name, seed] : images) {
            files.push_back(folder / (name + ".nes"));
            test::WriteText(files.back(), test::ImageBytes({}, seed));
        }
        return files;
    }
    // The command, and what a person does in the dialog that it opens.
    void In(int command, const std::function<void(QWidget&)>& act) {
        bool opened = false;
        WhenModal([&](QWidget& dialog) {
            opened = true;
            act(dialog);
            if (dialog.isVisible()) ControlOf<QPushButton>(dialog, kOk).click();
        });
        Send(command);
        EXPECT_TRUE(QTest::qWaitFor([&] { return opened; }));
        RunEvents();
    }
    void Run(int command) {
        Send(command);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !Busy(); }));
    }
    static QAbstractItemModel& Rows(QWidget& dialog, const char* name) {
        return *ChildOf<QTableView>(dialog, name).model();
    }
    void Filter(const char* text) {
        ChildOf<QLineEdit>(*window, "filterText").setText(QString::fromLatin1(text));
    }
    std::string Told() const {
        return ChildOf<QLabel>(*window, "status_told").text().toStdString();
    }
    std::string Names() {
        std::string list;
        for (int row = 0; row < Table().model()->rowCount(); ++row)
            list += Table().model()->index(row, 1).data().toString().toStdString() + "|";
        return list;
    }
};

TEST_F(Collection, NamesAreTidiedAsAPersonChoosesInOneStep) {
    Start(Named({{"Axe_Man (USA) [!]", 1}, {"Bold, The (Rev 1)", 2}, {"Cat", 3}, {"Dog (U)", 4}}));
    const std::string before = Names();
    In(kCommandTidyNames, [](QWidget& dialog) {
        auto& table = ChildOf<QTableView>(dialog, "control_1211");
        QAbstractItemModel& rows = *table.model();
        ASSERT_EQ(rows.rowCount(), 3);
        QTest::keyClick(&table, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&table, Qt::Key_Space);
        EXPECT_FALSE(ControlOf<QPushButton>(dialog, kOk).isEnabled()) << "nothing is taken";
        QTest::keyClick(&table, Qt::Key_Space);
        rows.setData(rows.index(0, 2), QStringLiteral("Axeman"), Qt::EditRole);
        rows.setData(rows.index(2, 0), Qt::Unchecked, Qt::CheckStateRole);
        // Other rules leave alone what was chosen by hand.
        ControlOf<QCheckBox>(dialog, kFirstBox + 2).click();
        ASSERT_EQ(rows.rowCount(), 3);
    });
    EXPECT_EQ(Names(), "Axeman|The Bold (Rev 1)|Cat|Dog (U)|");
    EXPECT_THAT(Told(), HasSubstr("2 game(s) have new names"));
    Send(kCommandUndo);
    EXPECT_EQ(Names(), before);
    // Of several highlighted rows, by the rules of the last time; given up, nothing changes.
    Table().setSelectionMode(QAbstractItemView::MultiSelection);
    Table().selectRow(1);
    Table().selectRow(3);
    In(kCommandTidyNames, [this](QWidget& dialog) {
        EXPECT_FALSE(ControlOf<QCheckBox>(dialog, kFirstBox + 2).isChecked());
        QAbstractItemModel& rows = Rows(dialog, "control_1211");
        ASSERT_EQ(rows.rowCount(), 2);
        EXPECT_EQ(rows.index(0, 2).data(), QStringLiteral("The Bold (Rev 1)"));
        Send(kCommandRemove);
        EXPECT_EQ(dialogs.told.back(), kBusy) << "nothing moves behind the dialog";
        QTest::keyClick(&dialog, Qt::Key_Escape);
        RunEvents();
    });
    EXPECT_EQ(Names(), before);
}

TEST_F(Collection, ADatabaseNamesTheGamesThatItKnows) {
    const auto files = Named({{"a", 1}, {"b", 2}});
    const auto sums = ReadImageSums(files);
    const std::filesystem::path dat = folder / "names.dat";
    const auto entry = [&](const char* name, uint32_t crc) {
        return "game ( name \"" + std::string(name) + "\" rom ( name \"x.nes\" size 16384 crc " +
               QString::number(crc, 16).toUpper().rightJustified(8, u'0').toStdString() + " ) )\n";
    };
    const std::string head = "clrmamepro ( name \"Our games\" )\n";
    test::WriteText(dat, head + entry("Axe Man (USA)", sums[0]->headerless));
    Start(files);
    dialogs.files = {FileChoice{dat}, FileChoice{dat}};
    In(kCommandNamesFromDat, [](QWidget& dialog) {
        EXPECT_THAT(dialog.windowTitle().toStdString(), HasSubstr("Our games"));
        EXPECT_EQ(Rows(dialog, "control_1211").rowCount(), 1);
        EXPECT_THAT(ControlOf<QLabel>(dialog, 1217).text().toStdString(), HasSubstr("1 of 1"));
        EXPECT_THAT(ControlOf<QLabel>(dialog, 1218).text().toStdString(),
                    HasSubstr("Not in the database: 1."));
    });
    EXPECT_EQ(Names(), "Axe Man (USA)|b|");
    test::WriteText(dat, head + "game ( name \"Axe");
    Run(kCommandNamesFromDat);
    EXPECT_THAT(dialogs.told.back(), HasSubstr("2")) << "the line";
    EXPECT_EQ(dialogs.starts.back(), folder.Path());
}

TEST_F(Collection, TheBestOfEachStaysChecked) {
    Start(Named({{"Axe (Europe)", 1}, {"Axe (USA)", 2}, {"Bold (USA)", 3}, {"Axe (Japan)", 4}}));
    Filter("Axe (");
    Send(kCommandCheckOnlyShown);
    Filter("Japan");
    Send(kCommandUncheckShown);
    Filter("");
    const std::string checked = List();
    In(kCommandKeepBest, [](QWidget& dialog) {
        QAbstractItemModel& rows = Rows(dialog, "control_1238");
        ASSERT_EQ(rows.rowCount(), 2) << "of what is checked";
        EXPECT_EQ(rows.index(1, 0).data(Qt::CheckStateRole), Qt::Checked);
        auto& order = ControlOf<QListWidget>(dialog, 1232);
        for (int i = 0; i < 4; ++i) {
            order.setCurrentRow(3);
            ControlOf<QPushButton>(dialog, 1233).click();  // up
            if (order.item(2)->text() == QStringLiteral("The first in the list")) break;
        }
        order.setCurrentRow(2);
        for (int i = 0; i < 2; ++i)
            ControlOf<QPushButton>(dialog, 1233).click();
        EXPECT_EQ(rows.index(0, 0).data(Qt::CheckStateRole), Qt::Checked) << "the first";
        rows.setData(rows.index(1, 0), Qt::Checked, Qt::CheckStateRole);
        ControlOf<QCheckBox>(dialog, 1236 + 1).click();
        EXPECT_EQ(rows.rowCount(), 0) << "no two have the same data";
        ControlOf<QCheckBox>(dialog, 1236 + 1).click();
        EXPECT_EQ(rows.index(0, 0).data(Qt::CheckStateRole), Qt::Unchecked) << "chosen by hand";
    });
    EXPECT_EQ(List(), "Axe (Europe)Axe (USA)*Bold (USA)Axe (Japan)");
    Send(kCommandUndo);
    EXPECT_EQ(List(), checked);
    In(kCommandKeepBest, [](QWidget& dialog) {
        EXPECT_EQ(ControlOf<QListWidget>(dialog, 1232).item(0)->text().toStdString(),
                  "The first in the list");
    });
}

TEST_F(Collection, WhatIsTheSameIsMarkedAndTheFilterFollowsTheChecks) {
    Start(Named({{"A", 1}, {"B", 2}, {"C", 1}}));
    Run(kCommandFindSame);
    EXPECT_THAT(Told(), HasSubstr("2 games share their data with another one, in 1 groups"));
    const auto spoken = [this](int row) {
        return Table().model()->index(row, 0).data(Qt::AccessibleTextRole).toString().toStdString();
    };
    EXPECT_THAT(spoken(0), HasSubstr("3: C"));
    EXPECT_THAT(spoken(1), testing::Not(HasSubstr("same data")));
    Send(kCommandSelectAll);
    Filter("checked:");
    Table().model()->setData(Table().model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_EQ(List(), "B*C*");
    EXPECT_THAT(ChildOf<QLabel>(*window, "filterNote").text().toStdString(), HasSubstr("2 of 3"));
    Send(kCommandUncheckShown);
    EXPECT_EQ(List(), "");
    Send(kCommandUndo);
    EXPECT_EQ(List(), "B*C*");
    // Without one of them nothing is there twice.
    Filter("");
    Send(kCommandRemove);
    EXPECT_THAT(spoken(0), testing::Not(HasSubstr("same data")));
}

TEST_F(Collection, MissingFilesAreMarkedAndFoundInAFolder) {
    const auto files = Named({{"A", 1}, {"B", 2}});
    Start(files);
    Run(kCommandLookForMissing);
    EXPECT_EQ(Told(), "No file of the list is missing.");
    Run(kCommandFindSame);  // notes sizes and sums
    Close(kCloseByExit);
    std::filesystem::create_directory(folder / "moved");
    std::filesystem::rename(files[0], folder / "moved" / "Other.nes");
    std::filesystem::remove(files[1]);
    Start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return List() == "AB"; }));
    const auto spoken = [this](int row) {
        return Table().model()->index(row, 0).data(Qt::AccessibleTextRole).toString().toStdString();
    };
    EXPECT_THAT(spoken(0), HasSubstr("the file is missing"));
    dialogs.folder = folder / "moved";
    Run(kCommandLookForMissing);
    EXPECT_THAT(Told(), testing::EndsWith("moved: 1 of 2"));
    EXPECT_THAT(spoken(0), testing::Not(HasSubstr("missing")));
    EXPECT_THAT(spoken(1), HasSubstr("missing"));
    EXPECT_EQ(List(), "AB");
    Send(kCommandUndo);
    EXPECT_THAT(spoken(0), HasSubstr("missing"));
}

}  // namespace
}  // namespace bw
