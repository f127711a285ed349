#pragma once

#include <QString>

// Rows that a grid reads when it paints, instead of a copy of their texts. They stay as they are as
// long as the grid holds them. Counted from 0, without the heading.
class GridRows
{
public:
    virtual ~GridRows() = default;
    virtual int count() const = 0;
    // Called while the grid paints, too, outside the gate: it must not throw. The column may lie
    // beyond those that the rows have; that is an empty text.
    virtual QString text(int row, int column) const = 0;
};
