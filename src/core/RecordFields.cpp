#include "RecordFields.h"

#include "Format.h"
#include "GridRow.h"

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

void showField(Recordset& table, const BoxField& field)
{
    field.box.setText(field.shown(table.Fields(field.position)));
}

void storeField(Recordset& table, const BoxField& field)
{
    const QString text = field.box.text();
    table.Fields(field.position) = text.isEmpty() ? field.storedWhenEmpty : text;
}

void showFields(Recordset& table, const std::vector<BoxField>& fields)
{
    for (const BoxField& field : fields)
        showField(table, field);
}

void storeFields(Recordset& table, const std::vector<BoxField>& fields)
{
    for (const BoxField& field : fields)
        storeField(table, field);
}

int firstWithText(const TextBox& box, std::initializer_list<const TextBox*> boxes)
{
    int place = 0;
    for (const TextBox* other : boxes) {
        if (other->text() == box.text())
            return place;
        ++place;
    }
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

void refillGrid(FlexGrid& grid, const Recordset& table, const std::vector<GridField>& columns)
{
    emptyGrid(grid);
    grid.setRows(2);
    grid.fillRows([&, row = 0](GridRow& cells) mutable {
        if (row == table.RecordCount())
            return false;
        for (const GridField& field : columns)
            cells.add(field.shown(table.valueAt(row, field.position)));
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
