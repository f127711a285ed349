#include "RowsView.h"

#include "FieldValues.h"

RowsView::RowsView(RecordsetRows rows) : rows_(std::move(rows))
{
    if (!rows_.hasDeleted())
        return;
    places_.reserve(static_cast<std::size_t>(count()));
    for (std::optional<int> place = rows_.first(); place; place = rows_.atOrAfter(*place + 1))
        places_.push_back(*place);
}

Cell RowsView::cell(int row, int field) const
{
    const bool isThere = row >= 0 && row < count() && field >= 0 &&
                         field < static_cast<int>(rows_.table().fields.size());
    if (!isThere)
        return Cell::null();
    return rows_.row(places_.empty() ? row : places_[static_cast<std::size_t>(row)]).cell(field);
}

FieldKind RowsView::kind(int field) const
{
    return rows_.table().fields[static_cast<std::size_t>(field)].kind;
}

Value RowsView::value(int row, int field) const
{
    const Cell found = cell(row, field);
    return found.isNull() ? Value() : toValue(found, kind(field));
}

QString RowsView::text(int row, int field) const
{
    const Cell found = cell(row, field);
    return found.isNull() ? QString() : toDisplayText(found, kind(field));
}
