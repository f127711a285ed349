#pragma once

#include "RecordFields.h"

// The catalogue in a grid, as the register and its search show it.
inline const std::vector<GridField>& partColumns()
{
    static const std::vector<GridField> columns{
        {0, QStringLiteral("Código"), 800},         {1, QStringLiteral("Local"), 800},
        {2, QStringLiteral("Quant"), 700},          {3, QStringLiteral("Descrição"), 4300},
        {4, QStringLiteral("Valor"), 800, asMoney},
    };
    return columns;
}
