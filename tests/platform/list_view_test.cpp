// The list with columns: rows from 1 fitted to the columns, a column kept out of sight, sorting
// that keeps equal rows in order and the selection on its row, and the row a click reports.
#include "platform/list_view.h"

#include <QHeaderView>
#include <QTest>
#include <gtest/gtest.h>

using namespace vt;

TEST(ListView, RowsFitTheColumnsAndCountFromOne) {
    ListView list;
    list.SetColumns({{"Index", 390}, {"Chinese", 1560}, {"Pinyin1", 0}});
    EXPECT_TRUE(list.isColumnHidden(2));
    EXPECT_EQ(list.columnWidth(1), 104); // 1560 twips
    EXPECT_EQ(list.AddRow({"1", "你好", "ni3 hao3", "dropped"}), 1);
    EXPECT_EQ(list.AddRow({"2"}), 2);
    EXPECT_EQ(list.Text(1, 2), "ni3 hao3");
    EXPECT_EQ(list.Text(2, 1), "");
    EXPECT_EQ(list.Text(1, 3), "") << "no fourth column";
    EXPECT_EQ(list.Text(3, 0), "") << "no third row";
    list.SetText(2, 1, "好");
    EXPECT_EQ(list.Text(2, 1), "好");

    list.SetColumns({{"Surname", 1000}});
    EXPECT_EQ(list.Count(), 0) << "new columns, no rows";
}

TEST(ListView, SortingKeepsEqualRowsInOrderAndTheSelectionOnItsRow) {
    ListView list;
    list.SetColumns({{"Word", 1000}, {"Lesson", 1000}});
    list.SetRows({{"c", "2"}, {"a", "1"}, {"b", "2"}, {"d", "1"}});
    list.SelectRow(3); // "b"
    list.SortByColumn(1);
    QStringList order;
    for (int r = 1; r <= list.Count(); ++r)
        order << list.Text(r, 0);
    EXPECT_EQ(order, (QStringList{"a", "d", "c", "b"}));
    EXPECT_EQ(list.Text(list.SelectedRow(), 0), "b");
    list.SortByColumn(0, false); // d, c, b, a
    EXPECT_EQ(list.Text(1, 0), "d");
    EXPECT_EQ(list.SelectedRow(), 3);
    list.SelectRow(0);
    EXPECT_EQ(list.SelectedRow(), 0);
}

TEST(ListView, AClickReportsItsRowAndAHeadingItsColumn) {
    ListView list;
    list.resize(300, 200);
    list.SetColumns({{"Index", 1500}, {"Word", 1500}});
    std::vector<QStringList> rows;
    for (int i = 1; i <= 5000; ++i)
        rows.push_back({QString::number(i), QStringLiteral("word %1").arg(i)});
    list.SetRows(std::move(rows));
    ASSERT_EQ(list.Count(), 5000);
    list.show();
    int clicked = 0, column = -1;
    QObject::connect(&list, &ListView::ItemClick, [&](int row) { clicked = row; });
    QObject::connect(&list, &ListView::ColumnClick, [&](int c) { column = c; });

    list.SelectRow(4000);
    const QRect cell = list.visualRect(list.model()->index(3999, 1));
    ASSERT_TRUE(list.viewport()->rect().contains(cell.center())) << "scrolled into view";
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(clicked, 4000);
    EXPECT_EQ(list.SelectedRow(), 4000);

    const QHeaderView* header = list.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(1) + 5, header->height() / 2));
    EXPECT_EQ(column, 1);
}
