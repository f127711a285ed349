#pragma once

#include <QAbstractTableModel>

#include <memory>
#include <vector>

class GridRows;

// The texts of a grid: plain ones, or behind the heading rows that are read as they are shown. Rows
// count the heading; the views see the rows behind it. Views are told once, when the running event
// is through, however many cells it filled.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    GridModel(int cols, std::vector<int> numberColumns, QObject* parent);

    int rows() const { return rows_; }
    void setRows(int rows);
    int cols() const { return cols_; }
    QString text(int row, int col) const;
    void setText(int row, int col, const QString& text);
    bool isEmptyRow(int row) const;
    void showRows(std::shared_ptr<const GridRows> rows);

    int currentRow() const { return currentRow_; }
    // Whether someone chose the current row; else it came about by filling.
    bool currentRowIsChosen() const { return currentRowIsChosen_; }
    void setCurrentRow(int row);
    // The user's own moves in a view, which shows them already: there, and chosen or not.
    void noteCurrentRow(int row, bool isChosen);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Brings the views up to date at once.
    void publish();

signals:
    void published();

private:
    using Cells = std::vector<QString>; // those that were written; the others are empty

    QVariant alignment(int col) const;
    void changed();
    // Copies so many of the rows that are shown, the heading counted.
    void makePlain(int rows);

    int rows_ = 2;
    const int cols_;
    int currentRow_ = 1;
    bool currentRowIsChosen_ = false;
    int publishedRows_ = 0;
    bool stale_ = false;
    std::vector<Cells> plain_; // the heading alone while rows are shown
    std::shared_ptr<const GridRows> shown_;
    const std::vector<int> numberColumns_;
};
