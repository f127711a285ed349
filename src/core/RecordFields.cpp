#include "RecordFields.h"

#include "Format.h"
#include "GridRow.h"
#include "RecordForms.h"
#include "RowsView.h"

using namespace Qt::Literals::StringLiterals;

QString asText(const Value& value)
{
    return value.textOrEmpty();
}

QString asMoney(const Value& value)
{
    return value.isNull() ? u"0,00"_s : Format(value, formats::Money);
}

QString asPhone(const Value& value)
{
    return Format(value, formats::Phone);
}

// The variable is asked anew for each field: a box may fire an event that replaces the recordset.
void showFields(const ObjectVariable<Recordset>& table, const std::vector<BoxField>& fields)
{
    for (const BoxField& field : fields)
        field.box.setText(field.shown(table->Fields(field.position)));
}

void storeFields(const ObjectVariable<Recordset>& table, const std::vector<BoxField>& fields)
{
    for (const BoxField& field : fields) {
        const QString text = field.box.text();
        table->Fields(field.position) = text.isEmpty() ? field.storedWhenEmpty : text;
    }
}

int firstWithText(const ControlArray<TextBox>& boxes, int index, std::initializer_list<int> among)
{
    for (const int other : among)
        if (sameText(boxes(index), boxes(other)))
            return other;
    return -1;
}

void setHeadings(FlexGrid& grid, const std::vector<GridField>& columns)
{
    int column = 0;
    for (const GridField& field : columns) {
        grid.setColWidth(column, field.twips);
        grid.setTextMatrix(0, column++, field.heading);
    }
}

void refillGrid(FlexGrid& grid, const ObjectVariable<Recordset>& table,
                const std::vector<GridField>& columns)
{
    const std::shared_ptr<const RowsView> rows = table->rowsNow();
    grid.setRows(2);
    grid.fillRows([&, row = 0](GridRow& cells) mutable {
        if (row == rows->count())
            return false;
        for (const GridField& field : columns)
            cells.add(field.shown(rows->value(row, field.position)));
        ++row;
        return true;
    });
    grid.setRows(grid.Rows() - 1);
}

void emptyGrid(FlexGrid& grid)
{
    grid.setRows(2);
    grid.setRows(1);
}
