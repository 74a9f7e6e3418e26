#include "designer/window/problems_page.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "designer_window/problems_host.h"

namespace bw {
namespace {

class ProblemsPageTest : public testing::Test {
  protected:
    ProblemsPageTest() {
        page_.resize(300, 200);
        page_.show();
    }
    // A change, and the moment in which the window has nothing else to do.
    void Change(const std::function<void(WorkingCopy&)>& change) {
        host_.Run([&](WorkingCopy& copy) {
            change(copy);
            return Views();
        });
        page_.Changed(View::kNameTable);
        QTest::qWait(1);
    }
    void AddSprites(int32_t count) {  // each blank
        Change([&](WorkingCopy& copy) {
            for (int32_t i = 0; i < count; ++i)
                copy.Store().SpriteTileList.push_back({.X = i * 9, .Y = 10 + i * 9, .Tile = 0x80});
        });
    }
    QString Row(int row) { return list_.model()->index(row, 0).data().toString(); }
    QString Heading() { return page_.findChild<QLabel*>()->text(); }
    int Rows() { return list_.model()->rowCount(); }

    ProblemsHost host_;
    ProblemsPage page_{host_};
    QListView& list_ = *page_.findChild<QListView*>(QStringLiteral("problems"));
};

TEST_F(ProblemsPageTest, FollowsTheDesign) {
    QSignalSpy counts(&page_, &ProblemsPage::CountChanged);
    EXPECT_EQ(Heading(), QStringLiteral("No problems"));
    AddSprites(3);
    EXPECT_EQ(Heading(), QStringLiteral("3 problem(s)"));
    EXPECT_TRUE(Row(0).startsWith(QStringLiteral("warning: Sprite 1 shows nothing")));
    page_.SetLanguage(Language::kChinese);
    EXPECT_TRUE(Row(0).startsWith(QStringLiteral("警告")));
    // In sight or not, the count is right; the rows come with the page.
    page_.hide();
    AddSprites(2);
    EXPECT_EQ(page_.Count(), 5u);
    EXPECT_EQ(Rows(), 3);
    page_.show();
    EXPECT_EQ(Rows(), 5);
    EXPECT_EQ(counts.count(), 2);
}

TEST_F(ProblemsPageTest, LeadsToThePlaceByMouseAndKey) {
    AddSprites(3);
    QTest::mouseClick(list_.viewport(), Qt::LeftButton, {},
                      list_.visualRect(list_.model()->index(1, 0)).center());
    EXPECT_TRUE(host_.Session().Copy().Store().SpriteTileList[1].IsSelected());
    ASSERT_EQ(host_.revealed.size(), 1u);
    EXPECT_EQ(host_.revealed[0].part.at, (Point{18, 40}));
    QTest::keyClick(&list_, Qt::Key_Down);
    QTest::keyClick(&list_, Qt::Key_Return);
    EXPECT_TRUE(host_.Session().Copy().Store().SpriteTileList[2].IsSelected());
    EXPECT_EQ(host_.revealed.size(), 2u);
    EXPECT_EQ(host_.Session().Steps().Count(), 2u) << "the first state and the sprites";
}

TEST_F(ProblemsPageTest, KeepsItsPlaceOverAChange) {
    AddSprites(15);
    list_.setCurrentIndex(list_.model()->index(12, 0));
    QTest::qWait(1);
    const int scrolled = list_.verticalScrollBar()->value();
    EXPECT_GT(scrolled, 0);
    const QString row = Row(12);
    EXPECT_GT(list_.visualRect(list_.model()->index(0, 0)).height(),
              list_.fontMetrics().height() * 2)
        << "wrapped";
    Change([](WorkingCopy& copy) { copy.Store().SpriteTileList.pop_back(); });
    EXPECT_EQ(Rows(), 14);
    EXPECT_EQ(list_.currentIndex().data().toString(), row);
    EXPECT_EQ(list_.verticalScrollBar()->value(), scrolled);
    Change([](WorkingCopy& copy) { copy.document.ItemPos.Y = 29; });
    EXPECT_EQ(list_.currentIndex().data().toString(), row) << "an error came above it";
}

}  // namespace
}  // namespace bw
