#include "GridModel.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr quint32 NoText = 0xffffffff;

} // namespace

GridModel::GridModel(QObject* parent)
    : QAbstractTableModel(parent), starts_(static_cast<size_t>(rows_), NoText)
{
}

void GridModel::packWorkRow() const
{
    if (workRow_ < 0 || !workRowTouched_)
        return;
    workRowTouched_ = false;
    pack(workRow_, workCells_);
}

void GridModel::pack(int row, const std::vector<QString>& cells) const
{
    starts_[static_cast<size_t>(row)] = static_cast<quint32>(packed_.size());
    GridRow written(packed_);
    for (const QString& cell : cells)
        written.add(cell);
}

void GridModel::unpack(int row, std::vector<QString>& cells) const
{
    cells.assign(static_cast<size_t>(cols_), QString());
    quint32 place = starts_[static_cast<size_t>(row)];
    if (place == NoText)
        return;
    for (QString& cell : cells) {
        GridRow::Length length = 0;
        std::memcpy(&length, packed_.data() + place, sizeof length);
        place += sizeof length;
        cell = QString::fromUtf8(packed_.data() + place, length);
        place += length;
    }
}

void GridModel::work(int row) const
{
    if (workRow_ == row)
        return;
    packWorkRow();
    unpack(row, workCells_);
    workRow_ = row;
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
    const int kept = std::min(rows_, rows);
    rows_ = 1;
    for (int row = 1; row < kept; ++row) {
        setRows(row + 1);
        for (int col = 0; col < cols_; ++col)
            setText(row, col, compute(row, col));
    }
}

void GridModel::setRows(int rows)
{
    makePlain(rows);
    if (rows < rows_) {
        if (workRow_ >= rows)
            workRow_ = -1;
        // Shrunk to the heading and a spare row, the grid is about to be filled anew.
        if (rows <= 2) {
            std::vector<QString> heading;
            work(0);
            heading = workCells_;
            std::vector<QString> first;
            if (rows == 2) {
                work(1);
                first = workCells_;
            }
            packed_.clear();
            starts_.assign(static_cast<size_t>(rows), NoText);
            workRow_ = -1;
            for (int row = 0; row < rows; ++row) {
                workRow_ = row;
                workCells_ = row == 0 ? heading : first;
                workRowTouched_ = true;
                packWorkRow();
            }
        }
    }
    const bool headingAlone = rows_ == 1;
    starts_.resize(static_cast<size_t>(rows), NoText);
    rows_ = rows;
    if (headingAlone && rows > 1)
        currentRow_ = 1;
    currentRow_ = std::min(currentRow_, rows_ - 1);
    changed();
}

void GridModel::setCols(int cols)
{
    makePlain(rows_);
    std::vector<std::vector<QString>> kept(static_cast<size_t>(rows_));
    packWorkRow();
    for (int row = 0; row < rows_; ++row)
        unpack(row, kept[static_cast<size_t>(row)]);
    packed_.clear();
    cols_ = cols;
    for (int row = 0; row < rows_; ++row) {
        workRow_ = row;
        workCells_ = kept[static_cast<size_t>(row)];
        workCells_.resize(static_cast<size_t>(cols));
        workRowTouched_ = true;
        packWorkRow();
    }
    workRow_ = -1;
    changed();
}

QString GridModel::text(int row, int col) const
{
    if (lazyCell_ && row > 0)
        return lazyCell_(row, col);
    work(row);
    return workCells_[static_cast<size_t>(col)];
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
    work(row);
    workCells_[static_cast<size_t>(col)] = text;
    workRowTouched_ = true;
    changed();
}

void GridModel::fillRows(const std::function<bool(GridRow& row)>& next)
{
    makePlain(rows_);
    packWorkRow();
    workRow_ = -1;
    changed();
    for (;;) {
        const auto start = static_cast<quint32>(packed_.size());
        GridRow row(packed_);
        if (!next(row))
            return;
        while (row.count() < cols_)
            row.add(std::string_view());
        starts_.back() = start;
        starts_.push_back(NoText);
        if (rows_++ == 1)
            currentRow_ = 1;
    }
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
