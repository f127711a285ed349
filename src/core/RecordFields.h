#pragma once

#include "Controls.h"
#include "Recordset.h"

#include <QString>

#include <vector>

// The tables of a record form: which field stands in which box, and which in which column of its
// grid. A field with a story of its own is written out in the form's routine.

// How a field's value reads on the screen.
using Shown = QString (*)(const Value& value);
QString asText(const Value& value);  // Null is empty
QString asMoney(const Value& value); // "#,##0.00;($#,##0.00)", Null is "0,00"
QString asPhone(const Value& value); // "(00)0000-0000", Null is empty

// One field of a row, its box, and what is stored where the box is empty: a filler is real content
// of the row from then on.
struct BoxField
{
    int position;
    TextBox& box;
    Shown shown = asText;
    QString storedWhenEmpty = QString();
};

// In the order of the table. A Null never reaches a box.
void showFields(Recordset& table, const std::vector<BoxField>& fields);
void storeFields(Recordset& table, const std::vector<BoxField>& fields);
// The same for one of them.
void showField(Recordset& table, const BoxField& field);
void storeField(Recordset& table, const BoxField& field);

// The first of these boxes that has the same text as this one, by its place in the list; -1 where
// none has. The forms tell boxes apart so: two boxes with one text are taken for the first.
int firstWithText(const TextBox& box, std::initializer_list<const TextBox*> boxes);

// One column of a grid.
struct GridField
{
    int position;
    QString heading;
    int twips;
    Shown shown = asText;
};

// Widths and heading row.
void setHeadings(FlexGrid& grid, const std::vector<GridField>& columns);
// All rows of the table, in its order, as they are when this is called; the current row stays.
void refillGrid(FlexGrid& grid, const Recordset& table, const std::vector<GridField>& columns);
// The heading alone.
void emptyGrid(FlexGrid& grid);
