#pragma once

#include "Schema.h"

#include <QtGlobal>

// How our files tell that they are ours, and of which making.
namespace fileformat {

// The engine's application id of our files ("VBLO"), and of those whose backup was marked as
// encrypted ("VBLE"); both open everywhere.
constexpr qint32 Plain = 0x56424C4F;
constexpr qint32 Marked = 0x56424C45;

// Files of a later making are refused: their rows may lie in another way.
constexpr int Version = 1;

// Behind the fields of each table, so that these keep their positions.
constexpr char IdColumn[] = "_id";

// Declared column types. The engine takes the affinity from the word that it knows in them.
inline const char* declaredType(FieldKind kind)
{
    switch (kind) {
    case FieldKind::Money: return "MONEY INTEGER";
    case FieldKind::Number: return "REAL";
    case FieldKind::YesNo: return "BOOLEAN INTEGER";
    case FieldKind::Date: return "DATE TEXT";
    case FieldKind::Text: break;
    }
    return "TEXT";
}

} // namespace fileformat
