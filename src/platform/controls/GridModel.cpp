#include "GridModel.h"

#include <algorithm>

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent)
{
    cells_.resize(4);
}

void GridModel::changed()
{
    if (stale_)
        return;
    stale_ = true;
    QMetaObject::invokeMethod(this, &GridModel::publish, Qt::QueuedConnection);
}

void GridModel::publish()
{
    stale_ = false;
    beginResetModel();
    publishedRows_ = rows_ - 1;
    endResetModel();
    emit published();
}

void GridModel::makePlain(int rows)
{
    if (!lazyCell_)
        return;
    const auto compute = std::move(lazyCell_);
    lazyCell_ = nullptr;
    rows_ = std::min(rows_, rows);
    cells_.resize(static_cast<size_t>(rows_) * cols_);
    for (int row = 1; row < rows_; ++row)
        for (int col = 0; col < cols_; ++col)
            cells_[cell(row, col)] = compute(row, col);
}

void GridModel::setRows(int rows)
{
    makePlain(rows);
    const bool headingAlone = rows_ == 1;
    cells_.resize(static_cast<size_t>(rows) * cols_);
    rows_ = rows;
    if (headingAlone && rows > 1)
        currentRow_ = 1;
    currentRow_ = std::min(currentRow_, rows_ - 1);
    changed();
}

void GridModel::setCols(int cols)
{
    makePlain(rows_);
    std::vector<QString> kept(static_cast<size_t>(rows_) * cols);
    for (int row = 0; row < rows_; ++row)
        for (int col = 0; col < std::min(cols, cols_); ++col)
            kept[static_cast<size_t>(row) * cols + col] = cells_[cell(row, col)];
    cells_ = std::move(kept);
    cols_ = cols;
    changed();
}

QString GridModel::text(int row, int col) const
{
    return lazyCell_ && row > 0 ? lazyCell_(row, col) : cells_[cell(row, col)];
}

void GridModel::setText(int row, int col, const QString& text)
{
    if (row > 0)
        makePlain(rows_);
    cells_[cell(row, col)] = text;
    changed();
}

void GridModel::setLazyRows(int count, std::function<QString(int row, int col)> cell)
{
    setRows(1);
    rows_ = count + 1;
    lazyCell_ = std::move(cell);
    if (count > 0)
        currentRow_ = 1;
    changed();
}

void GridModel::setCurrentRow(int row)
{
    currentRow_ = row;
    changed();
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : publishedRows_;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : cols_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    const int row = index.row() + 1;
    if (!index.isValid() || row >= rows_ || index.column() >= cols_)
        return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return text(row, index.column());
    if (role == Qt::TextAlignmentRole) {
        const bool isNumber = std::find(numberColumns_.begin(), numberColumns_.end(),
                                        index.column()) != numberColumns_.end();
        return QVariant(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= cols_)
        return {};
    if (role == Qt::DisplayRole)
        return cells_[cell(0, section)];
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | Qt::AlignLeft);
    return {};
}
