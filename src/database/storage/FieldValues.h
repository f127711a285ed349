#pragma once

#include "PackedRow.h"
#include "Schema.h"
#include "Value.h"

#include <string>

// Between what forms read and write and what lies in the file. Money is stored as whole
// ten-thousandths, a number as such, yes/no as 0 or 1, a date as ISO text. A text that does not
// read as its field's kind by the regional settings is stored as it stands; an apostrophe is put in
// front of one that the engine, or the reader of a date, could take for a value.

// A cell to store; the text, where there is one, belongs to it.
struct OwnedCell
{
    Cell cell;
    std::string text;

    Cell view() const { return cell.type == Cell::Type::Text ? Cell::ofText(text) : cell; }
};

OwnedCell toCell(const Value& value, FieldKind kind);
Value toValue(const Cell& cell, FieldKind kind);

// The same as toValue(...).textOrEmpty(), without the way round for plain text.
QString toDisplayText(const Cell& cell, FieldKind kind);
