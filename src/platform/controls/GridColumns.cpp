#include "GridColumns.h"

#include <QEvent>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>
#include <numeric>

namespace {

constexpr int Widest = 4000; // pixels

} // namespace

GridColumns::GridColumns(QTableView& grid) : QObject(&grid), grid_(grid)
{
    const QHeaderView& header = *grid.horizontalHeader();
    for (int column = 0; column < header.count(); ++column)
        widths_.push_back(header.sectionSize(column));
    grid.viewport()->installEventFilter(this);
    connect(&header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (fitting_ || column >= static_cast<int>(widths_.size()))
            return;
        widths_[static_cast<size_t>(column)] = width;
        changed_ = true;
    });
}

void GridColumns::keep(QTableView& grid, const QStringList& kept)
{
    if (!grid.model())
        return;
    auto* const columns = new GridColumns(grid);
    columns->take(kept);
    columns->fit();
}

std::optional<QStringList> GridColumns::changed(const QTableView& grid)
{
    for (const QObject* child : grid.children()) {
        const auto* columns = dynamic_cast<const GridColumns*>(child);
        if (!columns || !columns->changed_)
            continue;
        QStringList widths;
        for (const int width : columns->widths_)
            widths += QString::number(width);
        return widths;
    }
    return std::nullopt;
}

bool GridColumns::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        fit();
    return false;
}

void GridColumns::take(const QStringList& kept)
{
    std::vector<int> widths;
    for (const QString& text : kept) {
        bool isNumber = false;
        const int width = text.toInt(&isNumber);
        if (isNumber && width >= 0 && width <= Widest)
            widths.push_back(width);
    }
    if (widths.empty() || widths.size() != widths_.size())
        return;
    widths_ = std::move(widths);
    changed_ = true;
}

void GridColumns::fit()
{
    if (widths_.empty())
        return;
    const int total = std::accumulate(widths_.begin(), widths_.end(), 0);
    const int room = std::max(0, grid_.viewport()->width() - total);
    const auto widest = std::max_element(widths_.begin(), widths_.end());
    fitting_ = true;
    for (auto width = widths_.begin(); width != widths_.end(); ++width)
        grid_.horizontalHeader()->resizeSection(static_cast<int>(width - widths_.begin()),
                                                *width + (width == widest ? room : 0));
    fitting_ = false;
}
