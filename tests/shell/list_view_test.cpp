// The list of games under real mouse and key events.
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>
#include <cmath>
#include <set>

#include <gmock/gmock.h>

#include "shell/framework/texts.h"
#include "shell/list/game_list_view.h"
#include "shell/list/game_table.h"
#include "shell/list/row_painter.h"
#include "shell/qt_testing.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;

// In a window of its own, as in the program: beside the list there is something else to click on.
struct ListWindow {
    explicit ListWindow(int rows) : view(editor, "/base", Language::kEnglish) {
        QObject::connect(&view, &GameListView::EditEnded, &view, [this] { view.StoreEdit(); });
        editor.Restore(Games(rows));
        changes = 0;
        layout.addWidget(&view);
        layout.addWidget(&elsewhere);
        window.resize(1300, 300);
        window.show();
        window.activateWindow();
        table.setFocus();
        RunEvents();
    }

    // Game 0, Game 1, ...; the mapper falls as the row rises.
    static GameList Games(int rows) {
        GameList games(static_cast<size_t>(rows));
        for (int row = 0; row < rows; ++row) {
            GameEntry& entry = games[static_cast<size_t>(row)];
            const std::u16string number = FromQt(QString::number(row));
            entry.name = u"Game " + number;
            entry.path = u"roms/" + number + u".nes";
            entry.header.bytes[4] = 1;
            entry.header.bytes[6] = static_cast<uint8_t>((15 - row % 16) << 4);
        }
        return games;
    }

    QPoint Place(int row, ListColumn column) { return table.CellRect(row, column).center(); }
    QPoint Square(int row) {
        return table.CellRect(row, ListColumn::kNumber).topLeft() + QPoint(8, 8);
    }
    void Click(const QPoint& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, place);
    }
    void DoubleClick(const QPoint& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Click(place, modifiers);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, modifiers, place);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&table, key, modifiers);
    }
    std::vector<size_t> Checked() const {
        std::vector<size_t> rows;
        for (size_t row = 0; row < editor.Games().size(); ++row) {
            if (editor.Games()[row].checked) rows.push_back(row);
        }
        return rows;
    }

    QWidget window;
    QVBoxLayout layout{&window};
    ListEditor editor{[this](const ListResult& result) {
        view.Apply(result);
        ++changes;
    }};
    GameListView view;
    QLabel elsewhere;
    GameTable& table = ChildOf<GameTable>(view, "gameTable");
    QLineEdit& filter = ChildOf<QLineEdit>(view, "filterText");
    QLineEdit& cell = ChildOf<QLineEdit>(view, "cellEditor");
    int changes = 0;
};

TEST(ListView, ClicksCheckByTheirRules) {
    ListWindow list(40);
    list.Click(list.Place(4, ListColumn::kName));
    EXPECT_EQ(list.table.SelectedRow(), 4);
    EXPECT_EQ(list.changes, 0);
    list.Click(list.Square(2));
    EXPECT_THAT(list.Checked(), ElementsAre(2));
    EXPECT_EQ(list.changes, 1);
    list.Click(list.Place(6, ListColumn::kMapper), Qt::ControlModifier);
    list.Click(list.Place(0, ListColumn::kMapper), Qt::ShiftModifier);
    EXPECT_THAT(list.Checked(), ElementsAre(0, 1, 2, 6));
    EXPECT_EQ(list.editor.FindRow(), 2U);
    // Of rows that are hidden between the two none is checked.
    list.filter.setText(QStringLiteral("3"));
    list.Click(list.Place(0, ListColumn::kName));
    list.Click(list.Place(3, ListColumn::kName), Qt::ShiftModifier);
    EXPECT_THAT(list.Checked(), ElementsAre(0, 1, 2, 3, 6, 13, 23, 30));
}

TEST(ListView, DoubleClicksGoByTheColumn) {
    ListWindow list(10);
    QSignalSpy folders(&list.view, &GameListView::FolderWanted);
    list.DoubleClick(list.Place(1, ListColumn::kNumber));
    EXPECT_THAT(list.Checked(), ElementsAre(1));
    list.DoubleClick(list.Square(1));  // the second of the two clicks is lost
    EXPECT_THAT(list.Checked(), ElementsAre());
    list.DoubleClick(list.Place(2, ListColumn::kMapper));
    list.DoubleClick(list.Place(2, ListColumn::kName), Qt::ControlModifier);
    EXPECT_FALSE(list.view.EditActive());
    list.table.RevealColumn(ListColumn::kPath);
    list.DoubleClick(list.Place(3, ListColumn::kPath));
    list.DoubleClick(list.Place(4, ListColumn::kPath), Qt::ControlModifier);
    EXPECT_THAT(folders, ElementsAre(QVariantList{QStringLiteral("/base/roms/3.nes"), false},
                                     QVariantList{QStringLiteral("/base/roms/4.nes"), true}));
}

TEST(ListView, EveryWayOutOfTheEditorTakesTheTextAndTitlesSort) {
    ListWindow list(10);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Escape, Qt::Key_Return}) {
        list.DoubleClick(list.Place(1, ListColumn::kName));
        ASSERT_TRUE(list.view.EditActive() && list.cell.isVisible() && list.cell.hasFocus());
        const QString text = QString::number(key);
        QTest::keyClicks(&list.cell, text);  // in place of the old text, which is selected
        QTest::keyClick(&list.cell, key);
        EXPECT_FALSE(list.view.EditActive() || list.cell.isVisible());
        EXPECT_TRUE(list.table.hasFocus());
        EXPECT_EQ(list.editor.Games()[1].name, FromQt(text));
    }
    list.Key(Qt::Key_F2, Qt::ShiftModifier);
    QTest::keyClicks(&list.cell, QString(300, QLatin1Char('r')));
    QTest::mouseClick(&list.elsewhere, Qt::LeftButton);
    EXPECT_EQ(list.editor.Games()[1].remark, std::u16string(kCellTextLimit, u'r'));
    // A press on a title sorts, after the text is in its row.
    list.Key(Qt::Key_F2);
    QTest::keyClicks(&list.cell, QStringLiteral("moved"));
    QWidget* titles = list.table.horizontalHeader()->viewport();
    const QPoint mapper(list.Place(0, ListColumn::kMapper).x(), 5);
    QTest::mouseClick(titles, Qt::LeftButton, {}, mapper);
    EXPECT_EQ(list.editor.Games()[8].name, u"moved");
    // So does the second press of a quick pair.
    QTest::mouseDClick(titles, Qt::LeftButton, {}, mapper);
    EXPECT_EQ(list.editor.Games()[1].name, u"moved");
}

TEST(ListView, EditingFollowsItsRow) {
    ListWindow list(200);
    list.Click(list.Place(3, ListColumn::kName));
    list.Key(Qt::Key_F2);
    QScrollBar& bar = *list.table.verticalScrollBar();
    bar.setValue(bar.maximum());
    EXPECT_TRUE(list.view.EditActive() && !list.cell.isVisible());
    bar.setValue(10);
    EXPECT_TRUE(list.cell.isVisible() && list.cell.hasFocus());
    EXPECT_EQ(list.cell.geometry(), list.table.CellRect(3, ListColumn::kName));
    // Rows that move under it end it.
    list.cell.setText(QStringLiteral("new"));
    list.editor.SetChecked(3, true);
    list.editor.MoveTop();
    EXPECT_FALSE(list.view.EditActive());
    EXPECT_EQ(list.editor.Games()[0].name, u"new");
    list.view.EditSelected(ListColumn::kName);
    list.editor.Clear();
    EXPECT_FALSE(list.view.EditActive() || list.cell.isVisible());
}

TEST(ListView, KeysMoveCheckAndFind) {
    ListWindow list(100);
    list.Key(Qt::Key_Down);
    list.Key(Qt::Key_Down);
    list.Key(Qt::Key_Space);
    EXPECT_THAT(list.Checked(), ElementsAre(1));
    list.Key(Qt::Key_Down, Qt::ShiftModifier);
    list.Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(list.Checked(), ElementsAre(1, 2, 3));
    list.editor.SelectAll();
    list.editor.SelectInverse();
    list.Key(Qt::Key_Down, Qt::ControlModifier);
    list.Key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_THAT(list.Checked(), ElementsAre(1, 2, 3, 4));
    list.Key(Qt::Key_End);
    EXPECT_EQ(list.editor.FindRow(), 99U);
    EXPECT_TRUE(list.table.viewport()->rect().contains(list.Place(99, ListColumn::kNumber)));

    list.Key(Qt::Key_Home);
    const auto typed = [&](const char* text) {
        QTest::keyClicks(&list.table, QString::fromLatin1(text));
        return list.table.SelectedRow();
    };
    EXPECT_EQ(typed("game 7"), 7);
    EXPECT_EQ(typed("0"), 70);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    EXPECT_EQ(typed("game 3"), 71) << "there is one above only";
    list.Key(Qt::Key_Right);
    list.Key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(list.editor.SortColumn(), static_cast<int>(ListColumn::kName));
    QSignalSpy menus(&list.view, &GameListView::ContextMenuWanted);
    list.Key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(menus.size(), 1);
}

TEST(ListView, FilterKeepsNumbersAndSelection) {
    ListWindow list(120);
    list.editor.SetFindRow(117);
    list.view.ShowFindRow();
    list.view.FocusFilter();
    QTest::keyClicks(&list.filter, QStringLiteral("GAME 11"));
    EXPECT_EQ(list.table.model()->rowCount(), 11);
    EXPECT_EQ(list.table.currentIndex().data().toString(), QStringLiteral("118"));
    EXPECT_TRUE(
        ChildOf<QLabel>(list.view, "filterNote").text().startsWith(QStringLiteral("11 of 120")));
    EXPECT_EQ(list.view.ShownRows()->size(), 11U);
    // What leaves the filter's words leaves the view.
    list.editor.SetName(11, u"Other");
    EXPECT_EQ(list.table.model()->rowCount(), 10);
    // A row that was found shows.
    list.editor.SetFindRow(50);
    list.view.ShowFindRow();
    EXPECT_FALSE(list.view.ShownRows());
    EXPECT_EQ(list.table.SelectedRow(), 50);
    list.filter.setText(QStringLiteral("0"));
    QTest::keyClick(&list.filter, Qt::Key_Escape);
    EXPECT_TRUE(list.filter.text().isEmpty() && list.table.hasFocus());
    list.editor.SetFindRow(120);
    list.view.ShowFindRow();
    EXPECT_FALSE(list.table.SelectedRow());
}

TEST(ListView, TheConsolesColumnFollowsChecksAndSettings) {
    ListWindow list(20);
    list.editor.SetName(4, u"\u6E38 Four");
    const auto shown = [&](int row) {
        const int column = static_cast<int>(ListColumn::kConsole);
        return list.table.model()->index(row, column).data().toString().toStdString();
    };
    EXPECT_EQ(shown(4), "? FOUR");
    for (int row = 1; row < 12; ++row)
        list.editor.SetChecked(static_cast<size_t>(row), true);
    list.view.SetConsoleMenu({{true, false, true}, 20});
    EXPECT_EQ(shown(4), "04.? FOUR");
    EXPECT_EQ(shown(0), "01.GAME 0") << "as if it was checked";
    list.editor.SetChecked(2, false);
    EXPECT_EQ(shown(4), "03.? FOUR");
    list.filter.setText(QStringLiteral("four"));
    EXPECT_EQ(shown(0), "03.? FOUR");
    // The keyboard goes by what is seen.
    list.Click(list.Place(0, ListColumn::kName));
    for (int step = 0; step < 2; ++step)
        list.Key(Qt::Key_Right);
    EXPECT_EQ(list.table.FocusColumn(), ListColumn::kConsole);
}

TEST(ListView, EmptyListsSayWhatToDo) {
    ListWindow list(2);
    list.filter.setText(QStringLiteral("stars"));
    EXPECT_TRUE(list.table.accessibleDescription().contains(QStringLiteral("\"stars\"")));
    list.editor.Clear();
    EXPECT_TRUE(list.table.accessibleDescription().contains(QStringLiteral("Ctrl+O")));
    const QImage empty = list.table.viewport()->grab().toImage();
    std::set<QRgb> colors;
    for (int i = 0; i < empty.width() * empty.height(); ++i)
        colors.insert(empty.pixel(i % empty.width(), i / empty.width()));
    EXPECT_GT(colors.size(), 1U) << "nothing is written";
}

TEST(ListView, NumbersAreNeverCutAndTheViewComesBackFromARemark) {
    ListWindow list(static_cast<int>(kListLimit));
    const auto fits = [&] {
        // The square, five digits and what the menu needs.
        const int digit = list.table.fontMetrics().horizontalAdvance(QLatin1Char('0'));
        const size_t menu = CountChecked(list.editor.Games()) == 0 ? 0 : 5;
        return list.table.columnWidth(0) >= list.table.rowHeight(0) + digit * int(5 + menu);
    };
    list.view.SetWidths({20});
    EXPECT_TRUE(fits());
    list.editor.SelectAll();
    EXPECT_TRUE(fits());
    list.window.resize(500, 300);
    RunEvents();
    list.Click(list.Place(0, ListColumn::kName));
    list.Key(Qt::Key_F2, Qt::ShiftModifier);
    QScrollBar& bar = *list.table.horizontalScrollBar();
    EXPECT_GT(bar.value(), 0);
    QTest::keyClick(&list.cell, Qt::Key_Return);
    EXPECT_EQ(bar.value(), 0);
}

TEST(ListView, RowsAreHighlightedPulledAndTakenOut) {
    ListWindow list(40);
    QObject::connect(&list.view, &GameListView::PlaceWanted, &list.view, [&](size_t before) {
        list.editor.PlaceRows(list.view.HighlightedRows(), before);
    });
    QSignalSpy removals(&list.view, &GameListView::RemoveWanted);
    const auto names = [&] {
        std::string all;
        for (const GameEntry& entry : std::span(list.editor.Games()).first(6))
            all += ToUtf8(entry.name).substr(5) + " ";
        return all;
    };
    const auto pull = [&](const QPoint& from, const QPoint& to, bool cancel = false) {
        QWidget* viewport = list.table.viewport();
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        // Not QTest::mouseMove, whose events have no button.
        QMouseEvent move(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &move);
        if (cancel) list.Key(Qt::Key_Escape);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, to);
    };
    const QPoint above(0, -8);
    pull(list.Place(3, ListColumn::kName), list.Place(1, ListColumn::kName) + above);
    EXPECT_EQ(names(), "0 3 1 2 4 5 ");
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(1));
    pull(list.Place(0, ListColumn::kName), list.Place(4, ListColumn::kName), true);
    EXPECT_EQ(names(), "0 3 1 2 4 5 ") << "Escape leaves them";
    pull(list.Place(4, ListColumn::kNumber), list.Place(5, ListColumn::kNumber));
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(4, 5));
    pull(list.Place(5, ListColumn::kMapper), list.Place(0, ListColumn::kMapper) + above);
    EXPECT_EQ(names(), "4 5 0 3 1 2 ");
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(0, 1));
    EXPECT_THAT(list.Checked(), ElementsAre());
    // In a filtered view they go beside a row that shows.
    list.filter.setText(QStringLiteral("3"));  // 3, 13, 23, 30 to 39
    pull(list.Place(2, ListColumn::kName), list.Place(0, ListColumn::kName) + above);
    list.view.ClearFilter();
    EXPECT_EQ(names(), "4 5 0 23 3 1 ");

    pull(list.Place(3, ListColumn::kNumber), list.Place(2, ListColumn::kNumber));
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(2, 3));
    list.Key(Qt::Key_Space);
    EXPECT_THAT(list.Checked(), ElementsAre(2, 3));
    list.Click(list.Place(5, ListColumn::kName), Qt::ControlModifier);
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(2, 3, 5));
    list.Key(Qt::Key_Delete);
    EXPECT_EQ(removals.size(), 1);
    list.editor.RemoveRows(list.view.HighlightedRows());
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(2)) << "and not three others";
    list.Click(list.Place(0, ListColumn::kName));
    EXPECT_THAT(list.view.HighlightedRows(), ElementsAre(0));
    list.view.Deselect();
    list.Key(Qt::Key_Delete);
    EXPECT_EQ(removals.size(), 1) << "the key is the window's";
}

TEST(ListView, CellsTellMoreThanTheyShow) {
    ListWindow list(3);
    const auto tip = [&](int row, ListColumn column) {
        const QPoint place = list.Place(row, column);
        QHelpEvent event(QEvent::ToolTip, place, list.table.viewport()->mapToGlobal(place));
        QApplication::sendEvent(list.table.viewport(), &event);
        return QToolTip::text().toStdString();
    };
    list.editor.SetName(0, std::u16string(100, u'<'));
    EXPECT_EQ(tip(1, ListColumn::kRemark) + tip(1, ListColumn::kPrg), "");
    EXPECT_THAT(tip(1, ListColumn::kName), testing::HasSubstr("missing"));
    EXPECT_THAT(tip(0, ListColumn::kConsole), testing::HasSubstr("no room"));
    EXPECT_THAT(tip(0, ListColumn::kConsole), testing::HasSubstr("&lt;&lt;"));
    list.Click(list.Square(1));
    EXPECT_THAT(tip(1, ListColumn::kPrg), testing::HasSubstr("COOLGIRL: "));
    EXPECT_NE(tip(1, ListColumn::kCoolboy), "") << "such a mapper, without a file, runs nowhere";
    QAbstractItemModel& model = *list.table.model();
    EXPECT_TRUE(model.setData(model.index(2, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_THAT(list.Checked(), ElementsAre(1, 2));
    EXPECT_EQ(list.changes, 3);
    EXPECT_EQ(model.index(2, 0).data(Qt::AccessibleTextRole),
              QStringLiteral("Number: 3, checked, number 2 in the menu, the file is missing"));
}

// Of WCAG 2: at 4.5 to 1 small letters can be read.
double Contrast(const QColor& a, const QColor& b) {
    const auto light = [](const QColor& color) {
        const auto part = [](float value) {
            return value <= 0.04045F ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) +
               0.0722 * part(color.blueF()) + 0.05;
    };
    return std::max(light(a), light(b)) / std::min(light(a), light(b));
}

TEST(ListView, RowsCanBeReadInBothThemes) {
    ListWindow list(6);
    list.editor.SetChecked(0, true);
    list.Click(list.Place(2, ListColumn::kName));
    list.elsewhere.setFocusPolicy(Qt::StrongFocus);
    list.elsewhere.setFocus();  // the selection stays in sight
    const QPalette before = QApplication::palette();
    for (const bool dark : {false, true}) {
        if (dark) QApplication::setPalette(QPalette(QColor(40, 40, 44)));
        RunEvents();  // a view that is open follows
        const QImage image = list.table.viewport()->grab().toImage();
        std::set<QRgb> colors;
        for (const int row : {0, 1, 2, 4}) {
            const QRgb color = image.pixel(list.Place(row, ListColumn::kRemark));
            colors.insert(color);
            EXPECT_EQ(qGray(color) < 128, dark) << row;
        }
        EXPECT_EQ(colors.size(), 4U) << "checked, odd, selected, even";
        const RowColors rows;
        EXPECT_GE(Contrast(rows.MarkText(), rows.Mark()), 4.5);
        EXPECT_GE(Contrast(rows.NoText(), rows.NoGround()), 4.5);
        for (unsigned bits = 0; bits < 8; ++bits) {
            const RowState state{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0};
            for (const QColor& ink : {rows.Text(state), rows.FaintText(state)})
                EXPECT_GE(Contrast(ink, rows.Background(state)), 4.5) << dark << bits;
        }
    }
    QApplication::setPalette(before);
}

TEST(ListView, FullListsKeepTheirPlaceAndWidthsTheirBounds) {
    ListWindow list(static_cast<int>(kListLimit));
    QSignalSpy resets(list.table.model(), &QAbstractItemModel::modelReset);
    QScrollBar& bar = *list.table.verticalScrollBar();
    bar.setValue(54321);
    list.editor.Sort(ListColumn::kMapper);
    list.editor.SelectAll();
    RunEvents();
    EXPECT_EQ(bar.value(), 54321);
    list.editor.Clear();
    EXPECT_EQ(list.table.model()->rowCount(), 0);
    list.editor.Undo();
    list.view.Apply({ListChange::kNothing, kListLimit - 1});
    EXPECT_EQ(bar.value(), bar.maximum());
    EXPECT_EQ(resets.size(), 0);
    // Widths that make no sense are cut.
    list.view.SetWidths({0, 123, 1'000'000, 1});
    const ColumnWidths after = list.view.Widths();
    EXPECT_TRUE(after[0] >= 64 && after[1] == 123 && after[2] <= 2000 && after[3] >= 8);
}

}  // namespace
}  // namespace bw
