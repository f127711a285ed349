#pragma once

#include "GridRow.h"

#include <QAbstractTableModel>

#include <functional>
#include <string>
#include <vector>

// The texts of a grid. Rows count the heading; the views see the rows behind it. Views are told
// once, when the running event is through, however many cells it filled.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit GridModel(QObject* parent);

    int rows() const { return rows_; }
    void setRows(int rows);
    int cols() const { return cols_; }
    void setCols(int cols);
    QString text(int row, int col) const;
    void setText(int row, int col, const QString& text);
    bool isEmptyRow(int row) const;
    // Writes the last row and adds an empty one, as long as next() gives the row's cells.
    void fillRows(const std::function<bool(GridRow& row)>& next);
    void setLazyRows(int count, std::function<QString(int row, int col)> cell);
    void setNumberColumns(std::vector<int> columns) { numberColumns_ = std::move(columns); }

    int currentRow() const { return currentRow_; }
    void setCurrentRow(int row);
    // The user's own move in a view, which shows it already.
    void noteCurrentRow(int row) { currentRow_ = row; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Brings the views up to date at once.
    void publish();

signals:
    void published();

private:
    QVariant alignment(int col) const;
    void changed();
    void makePlain(int rows);
    void work(int row) const;
    void packWorkRow() const;
    void pack(int row, const std::vector<QString>& cells) const;
    void unpack(int row, std::vector<QString>& cells) const;

    int rows_ = 2;
    int cols_ = 2;
    int currentRow_ = 1;
    int publishedRows_ = 0;
    bool stale_ = false;
    // Where each row begins in packed_; NoText for an empty one.
    mutable std::vector<quint32> starts_;
    mutable std::string packed_;
    mutable int workRow_ = -1;
    mutable bool workRowTouched_ = false;
    mutable std::vector<QString> workCells_;
    std::function<QString(int row, int col)> lazyCell_;
    std::vector<int> numberColumns_;
};
