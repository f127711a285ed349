#pragma once

#include "PackedRow.h"
#include "Schema.h"

#include <string>

// The place of a cell in the order of its field, as bytes that compare as the order goes: Null
// first, then numbers, yes/no and dates by their value, then texts by Portuguese.
std::string orderKey(const Cell& cell, FieldKind kind);

// A cell's text in the form in which it is searched, in UTF-8; nothing for Null.
void appendFolded(std::string& target, const Cell& cell, FieldKind kind);

// Whether the cell contains the text, which is folded and in UTF-8. A Null contains none.
bool cellContains(const Cell& cell, FieldKind kind, const std::string& needle);
