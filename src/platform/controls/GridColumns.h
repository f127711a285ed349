#pragma once

#include <QObject>
#include <QStringList>

#include <optional>
#include <vector>

class QTableView;

// The widths of a grid's columns: those that the form gives, or the user's own. Where the grid is
// wider than all of them, the widest takes the room.
class GridColumns : public QObject
{
public:
    // From now on, beginning with the widths kept earlier; what does not fit the grid is passed
    // over.
    static void keep(QTableView& grid, const QStringList& kept);
    // The widths to keep, where the user has changed one, now or earlier.
    static std::optional<QStringList> changed(const QTableView& grid);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit GridColumns(QTableView& grid);
    void take(const QStringList& kept);
    void fit();

    QTableView& grid_;
    std::vector<int> widths_; // without the room that the widest takes
    bool fitting_ = false;
    bool changed_ = false;
};
