#include "designer/window/history_page.h"

#include <QListView>

#include <gtest/gtest.h>

#include "designer/tools/tile_tools.h"
#include "shell/qt_testing.h"

namespace bw {
namespace {

// Of a host the page asks no more than this.
class Host final : public DesignHost {
  public:
    const EditSession& Session() const override { return session; }
    void GoToStep(size_t state) override {
        asked.push_back(state);
        session.GoTo(state);
    }
    Language CurrentLanguage() const override { return Language::kEnglish; }
    const GestureMachine& Gestures() const override { std::abort(); }
    void Run(Command) override {}
    void RunWithoutStep(Command) override {}
    void WhenIdle(std::function<void()>) override {}
    void Reveal(Control, const Rect&) override {}
    void Tell(std::u16string_view) override {}
    UserDialogs& Dialogs() override { std::abort(); }
    SettingsStore& Store() override { std::abort(); }
    BackgroundTasks& Tasks() override { std::abort(); }
    QWidget& Window() override { std::abort(); }

    EditSession session;
    std::vector<size_t> asked;
};

class HistoryPageTest : public testing::Test {
  protected:
    HistoryPageTest() {
        page.resize(240, 200);
        page.show();
    }
    void Paint(int count) {
        for (int step = 0; step < count; ++step) {
            host.session.Run([&](WorkingCopy& copy) {
                copy.BkgTilePos = {step % 16, step / 16 % 16};
                copy.BkgPalettePos = {1 + (step / 256 + step) % 3, 0};
                return PaintPixel(copy, PatternTable::kBackground, {step / 4096 % 8, step / 512});
            });
        }
        Tell();
    }
    void Tell() {
        page.Changed(Views::All());
        QTest::qWait(60);  // it follows a moment later
    }
    std::string Text(int row, int role = Qt::DisplayRole) {
        return list.model()->index(row, 0).data(role).toString().toStdString();
    }
    bool InSight(int row) {
        return list.viewport()->rect().intersects(list.visualRect(list.model()->index(row, 0)));
    }

    Host host;
    HistoryPage page{host};
    QListView& list = ChildOf<QListView>(page, "design_history");
};

TEST_F(HistoryPageTest, ShowsEachStateAndGoesThere) {
    EXPECT_TRUE(list.model()->rowCount() == 1 && Text(0) == "Start");
    Paint(40);
    ASSERT_EQ(list.model()->rowCount(), 41);
    EXPECT_EQ(Text(40, Qt::AccessibleTextRole), "Tile $27 painted, present state");
    EXPECT_TRUE(InSight(40) && !InSight(0));
    EXPECT_TRUE(list.model()->index(40, 0).data(Qt::FontRole).value<QFont>().bold());

    list.scrollToTop();
    const QRect first = list.visualRect(list.model()->index(2, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, first.center());
    EXPECT_EQ(host.asked, std::vector<size_t>{2});
    Tell();
    EXPECT_EQ(Text(2, Qt::AccessibleTextRole), "Tile $01 painted, present state");
    EXPECT_EQ(Text(3, Qt::AccessibleTextRole), "Tile $02 painted, undone");
    EXPECT_TRUE(list.model()->index(3, 0).data(Qt::ForegroundRole).isValid());
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(host.asked, (std::vector<size_t>{2, 3}));
    Tell();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.currentIndex()).center());
    EXPECT_EQ(host.asked.size(), 2u) << "that state is the present one";

    // A step drops those ahead; a page that was hidden meanwhile is right when it shows.
    page.hide();
    Paint(1);
    page.show();
    EXPECT_EQ(list.model()->rowCount(), 5);
    EXPECT_EQ(list.currentIndex().row(), 4);
    page.SetLanguage(Language::kChinese);
    EXPECT_NE(Text(0), "Start");
}

}  // namespace
}  // namespace bw
