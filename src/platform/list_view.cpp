#include "platform/list_view.h"

#include "platform/screen.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <algorithm>
#include <numeric>

namespace vt {

// The rows of a list, each a list of cell texts as long as the columns.
class ListRows final : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(headers.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole || !index.isValid()) return {};
        return rows[static_cast<size_t>(index.row())][index.column()];
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section >= headers.size())
            return {};
        return headers[section];
    }

    void setHeaders(const QStringList& h) {
        beginResetModel();
        headers = h;
        rows.clear();
        endResetModel();
    }
    void setRows(std::vector<QStringList> r) {
        beginResetModel();
        rows = std::move(r);
        for (QStringList& row : rows)
            fit(row);
        endResetModel();
    }
    int append(QStringList cells) {
        fit(cells);
        const int at = static_cast<int>(rows.size());
        beginInsertRows({}, at, at);
        rows.push_back(std::move(cells));
        endInsertRows();
        return at + 1;
    }
    void set(int row, int column, const QString& text) {
        rows[static_cast<size_t>(row)][column] = text;
        const QModelIndex i = index(row, column);
        Q_EMIT dataChanged(i, i);
    }
    // Sorts the rows by one column's text; the selection stays with its row.
    void sortBy(int column, bool ascending) {
        Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
        std::vector<size_t> order(rows.size());
        std::iota(order.begin(), order.end(), size_t{0});
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
            return ascending ? rows[a][column] < rows[b][column]
                             : rows[b][column] < rows[a][column];
        });
        std::vector<QStringList> sorted;
        sorted.reserve(rows.size());
        std::vector<int> placeOf(rows.size());
        for (size_t k = 0; k < order.size(); ++k) {
            sorted.push_back(std::move(rows[order[k]]));
            placeOf[order[k]] = static_cast<int>(k);
        }
        rows = std::move(sorted);
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex& i : before)
            after << index(placeOf[static_cast<size_t>(i.row())], i.column());
        changePersistentIndexList(before, after);
        Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    }

    QStringList headers;
    std::vector<QStringList> rows;

private:
    void fit(QStringList& cells) const { cells.resize(headers.size()); }
};

ListView::ListView(QWidget* parent) : QTreeView(parent), rows_(new ListRows(this)) {
    setModel(rows_);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(true);
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& i) { Q_EMIT ItemClick(i.row() + 1); });
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int column) { Q_EMIT ColumnClick(column); });
}

void ListView::SetColumns(const std::vector<Column>& columns) {
    QStringList captions;
    for (const Column& c : columns)
        captions << c.caption;
    rows_->setHeaders(captions);
    for (size_t i = 0; i < columns.size(); ++i) {
        const int column = static_cast<int>(i);
        setColumnHidden(column, columns[i].widthTwips <= 0);
        if (columns[i].widthTwips > 0) setColumnWidth(column, TwipsToPx(columns[i].widthTwips));
    }
}

int ListView::ColumnCount() const {
    return rows_->columnCount();
}

int ListView::AddRow(const QStringList& cells) {
    return rows_->append(cells);
}

void ListView::SetRows(std::vector<QStringList> rows) {
    rows_->setRows(std::move(rows));
}

void ListView::Clear() {
    rows_->setRows({});
}

int ListView::Count() const {
    return rows_->rowCount();
}

QString ListView::Text(int row, int column) const {
    if (row < 1 || row > Count() || column < 0 || column >= ColumnCount()) return {};
    return rows_->rows[static_cast<size_t>(row - 1)][column];
}

void ListView::SetText(int row, int column, const QString& text) {
    if (row < 1 || row > Count() || column < 0 || column >= ColumnCount()) return;
    rows_->set(row - 1, column, text);
}

int ListView::SelectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? 0 : rows.first().row() + 1;
}

void ListView::SelectRow(int row) {
    if (row < 1 || row > Count()) {
        clearSelection();
        return;
    }
    const QModelIndex i = rows_->index(row - 1, 0);
    setCurrentIndex(i);
    selectionModel()->select(i, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(i);
}

void ListView::SortByColumn(int column, bool ascending) {
    if (column < 0 || column >= ColumnCount()) return;
    rows_->sortBy(column, ascending);
}

} // namespace vt
