// A cart that was built, opened again in the window.
#include <QPlainTextEdit>
#include <QPushButton>

#include "settings/recent_files.h"
#include "shell/dialogs/cart_dialog.h"
#include "shell/main_window.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr int kTakeOut = 1321;
constexpr int kCompare = 1322;
constexpr int kResult = 1326;

class CartWindow : public MainWindow {
  protected:
    CartWindow() {
        Start(Images(3));
        Send(kCommandSelectAll);
        dialogs.output = OutputChoice{cart, RomFormat::kNes20};
        Send(kCommandBuildCoolboy);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !Busy() && exists(cart); }, 60'000));
    }
    CCartDialog& Dialog() {
        auto* dialog = window->findChild<CCartDialog*>();
        EXPECT_TRUE(dialog != nullptr && dialog->isVisible());
        return *dialog;
    }
    std::string Result() {
        return ControlOf<QPlainTextEdit>(Dialog(), kResult).toPlainText().toStdString();
    }
    void Click(int id) { ControlOf<QPushButton>(Dialog(), id).click(); }

    std::filesystem::path cart = folder / "cart.nes";
};

TEST_F(CartWindow, OpensFromTheGamesDialogAndGivesItsGamesBackAsTheList) {
    EXPECT_THAT(RecentFiles(*store, RecentKind::kCarts), ElementsAre(cart));
    dialogs.images = {cart};
    Send(kCommandOpen);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->findChild<CCartDialog*>() != nullptr; }));
    EXPECT_EQ(ChildOf<QTableView>(Dialog(), "cart_table").model()->rowCount(), 3);
    EXPECT_EQ(List(), "A*B*C*") << "a cart is no game";
    Send(kCommandMoveBottom);
    Table().model()->setData(Table().model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    const std::string before = List();
    dialogs.folder = folder / "out";
    dialogs.answers = {kEndYes};
    Click(kTakeOut);
    ASSERT_TRUE(QTest::qWaitFor([&] { return List() == "A*B*C*"; })) << List() << Result();
    EXPECT_EQ(test::ReadText(folder / "out" / "002 B.nes"), test::ReadText(folder / "B.nes"));
    Send(kCommandUndo);
    EXPECT_EQ(List(), before);
    Click(kTakeOut);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy(); }));
    EXPECT_THAT(Result(), HasSubstr("3 of 3 game(s)")) << "what is there already is as good";
}

TEST_F(CartWindow, TellsWhatDiffersFromADumpByGameAndSector) {
    std::string bytes = test::ReadText(cart);
    const auto second = bytes.find(test::ReadText(folder / "B.nes").substr(16, 64));
    ASSERT_NE(second, std::string::npos);
    bytes[second] = static_cast<char>(~bytes[second]);
    test::WriteText(folder / "dump.bin", bytes.substr(16) + std::string(4096, '\xFF'));
    Send(kCommandRecentCarts);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->findChild<CCartDialog*>() != nullptr; }));
    dialogs.files = {FileChoice{folder / "dump.bin", 0}};
    Click(kCompare);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Result().empty(); }));
    EXPECT_THAT(Result(), AllOf(HasSubstr("1 byte(s) differ, in 1 of"), HasSubstr("2 B: 1"),
                                HasSubstr("erased flash")));
    // Neither a game nor anything else that is no cart.
    dialogs.told.clear();
    dialogs.files = {FileChoice{folder / "A.nes", 0}};
    Send(kCommandOpenCart);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialogs.told.empty(); }));
    EXPECT_THAT(dialogs.told.back(), HasSubstr("A.nes"));
}

}  // namespace
}  // namespace bw
