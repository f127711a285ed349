#include "GridModel.h"

#include "GridRows.h"

#include <algorithm>

GridModel::GridModel(int cols, std::vector<int> numberColumns, QObject* parent)
    : QAbstractTableModel(parent), cols_(cols), plain_(static_cast<size_t>(rows_)),
      numberColumns_(std::move(numberColumns))
{
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
    const std::shared_ptr<const GridRows> shown = std::move(shown_);
    if (!shown)
        return;
    plain_.resize(static_cast<size_t>(rows_));
    for (int row = 1; row < std::min(rows_, rows); ++row) {
        Cells& cells = plain_[static_cast<size_t>(row)];
        for (int col = 0; col < cols_; ++col)
            cells.push_back(shown->text(row - 1, col));
    }
}

void GridModel::setRows(int rows)
{
    makePlain(rows);
    // Cut to the heading, or to a spare row behind it, it is about to be filled anew.
    constexpr int Spare = 2;
    if (rows < rows_ && rows <= Spare)
        currentRowIsChosen_ = false;
    if (rows_ == 1 && rows > 1)
        currentRow_ = 1;
    rows_ = rows;
    plain_.resize(static_cast<size_t>(rows));
    if (currentRow_ >= rows_) {
        currentRow_ = rows_ - 1;
        currentRowIsChosen_ = false;
    }
    changed();
}

QString GridModel::text(int row, int col) const
{
    if (shown_ && row > 0)
        return shown_->text(row - 1, col);
    const Cells& cells = plain_[static_cast<size_t>(row)];
    const auto cell = static_cast<size_t>(col);
    return cell < cells.size() ? cells[cell] : QString();
}

bool GridModel::isEmptyRow(int row) const
{
    for (int col = 0; col < cols_; ++col)
        if (!text(row, col).isEmpty())
            return false;
    return true;
}

void GridModel::setText(int row, int col, const QString& text)
{
    if (row > 0)
        makePlain(rows_);
    Cells& cells = plain_[static_cast<size_t>(row)];
    const auto cell = static_cast<size_t>(col);
    if (cell >= cells.size())
        cells.resize(cell + 1);
    cells[cell] = text;
    changed();
}

void GridModel::showRows(std::shared_ptr<const GridRows> rows)
{
    shown_ = std::move(rows);
    plain_.resize(1);
    rows_ = shown_ ? shown_->count() + 1 : 1;
    currentRow_ = std::min(rows_ - 1, 1);
    currentRowIsChosen_ = false;
    changed();
}

void GridModel::setCurrentRow(int row)
{
    noteCurrentRow(row, true);
    changed();
}

void GridModel::noteCurrentRow(int row, bool isChosen)
{
    currentRow_ = row;
    currentRowIsChosen_ = isChosen;
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : publishedRows_;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : cols_;
}

QVariant GridModel::alignment(int col) const
{
    const bool isNumber =
        std::find(numberColumns_.begin(), numberColumns_.end(), col) != numberColumns_.end();
    return QVariant(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    const int row = index.row() + 1;
    if (!index.isValid() || row >= rows_ || index.column() >= cols_)
        return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return text(row, index.column());
    if (role == Qt::TextAlignmentRole)
        return alignment(index.column());
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= cols_)
        return {};
    if (role == Qt::DisplayRole)
        return text(0, section);
    if (role == Qt::TextAlignmentRole)
        return alignment(section);
    return {};
}
