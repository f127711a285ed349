#pragma once

#include "Controls.h"
#include "ObjectVariable.h"
#include "Recordset.h"
#include "RowsView.h"

#include <QString>

#include <functional>
#include <initializer_list>
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

// In the order of the list. A Null never reaches a box.
void showFields(const ObjectVariable<Recordset>& table, const std::vector<BoxField>& fields);
// A box that still reads as it was filled stores no filler and no other form of its text over what
// another station wrote there meanwhile.
void storeFields(const ObjectVariable<Recordset>& table, const std::vector<BoxField>& fields);

// The first of these members that has the same text as this one; -1 where none has. The forms tell
// their boxes apart so: two boxes with one text are taken for the first.
int firstWithText(const ControlArray<TextBox>& boxes, int index, std::initializer_list<int> among);

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
// All rows of the table, in its order, as they are when this is called, or those that are meant;
// the current row stays. The grid reads them when it paints. The answer is how many they are.
using IsMeant = std::function<bool(const RowsView& rows, int row)>;
int refillGrid(FlexGrid& grid, const ObjectVariable<Recordset>& table,
               const std::vector<GridField>& columns, const IsMeant& isMeant = {});
// The heading alone.
void emptyGrid(FlexGrid& grid);
