#pragma once
// A list with columns, shown as a report: column 0 is each row's text and the further columns its
// sub-items. Rows count from 1, as the course counts them; columns from 0. The rows live in a
// model of the list's own, so a list of thousands of rows (dictionary hits, the sentence finder)
// fills in one step and paints only what is in sight.

#include <QStringList>
#include <QTreeView>
#include <vector>

namespace vt {

class ListRows;

class ListView : public QTreeView {
    Q_OBJECT
public:
    struct Column {
        QString caption;
        int widthTwips = 1440; // 0 keeps the column out of sight
    };

    explicit ListView(QWidget* parent = nullptr);

    // The columns, left to right; the rows are emptied.
    void SetColumns(const std::vector<Column>& columns);
    int ColumnCount() const;

    // Adds a row at the end and returns its number. Cells beyond the columns are dropped; missing
    // ones are empty.
    int AddRow(const QStringList& cells);
    // Replaces every row at once.
    void SetRows(std::vector<QStringList> rows);
    void Clear();
    int Count() const;

    // The text of a cell; empty outside the list.
    QString Text(int row, int column = 0) const;
    void SetText(int row, int column, const QString& text);

    // The selected row, 0 for none.
    int SelectedRow() const;
    // Selects a row and scrolls it into view; 0 or a row outside the list clears the selection.
    void SelectRow(int row);

    // Sorts the rows by the text of a column; rows of equal text keep their order.
    void SortByColumn(int column, bool ascending = true);

Q_SIGNALS:
    // A row clicked by the learner.
    void ItemClick(int row);
    // A column's heading clicked.
    void ColumnClick(int column);

private:
    ListRows* rows_;
};

} // namespace vt
