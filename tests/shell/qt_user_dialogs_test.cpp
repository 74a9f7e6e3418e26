// The file dialogs that the window asks with.
#include "shell/dialogs/qt_user_dialogs.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "qt_testing.h"
#include "shell/framework/messages.h"

namespace bw {
namespace {

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
    const auto first = dialogs_.AskOutput(folder_ / "gone");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->path, folder_ / "cart.bin");
    EXPECT_EQ(first->format, RomFormat::kBinary);
    EXPECT_EQ(start_.toStdString(), folder_.Path()) << "in place of a folder that isn't there";
    Type(QStringLiteral("other"));
    EXPECT_EQ(dialogs_.AskOutput(folder_.Path())->path, folder_ / "other.bin");
    Type(QStringLiteral("games.txt"));
    EXPECT_EQ(dialogs_.AskListToSave(folder_.Path()), folder_ / "games.txt.fcl");
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
