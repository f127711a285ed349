#pragma once

#include "RecordsetRows.h"
#include "Value.h"

// The rows that a recordset showed at one moment, in its order: own changes of stored rows
// included, a pending new row and a pending edit left out. It never changes and asks nothing of the
// file, so that a grid may read it while it paints. Outside of the rows and fields there is Null,
// and no text.
class RowsView
{
public:
    explicit RowsView(RecordsetRows rows);

    int count() const { return rows_.count(); }
    Value value(int row, int field) const;
    // As Field::textOrEmpty.
    QString text(int row, int field) const;

private:
    // Null outside of the rows and fields.
    Cell cell(int row, int field) const;
    FieldKind kind(int field) const;

    RecordsetRows rows_;
    std::vector<int> places_; // of the rows, where one among them is deleted
};
