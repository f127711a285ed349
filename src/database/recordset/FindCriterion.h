#pragma once

#include <QString>

// "field LIKE '*text*'": only the two outer asterisks are wildcards, all else is literal.
struct FindCriterion
{
    QString field;
    QString text;
};

// Error 3001 for another shape, and for an apostrophe in the text.
FindCriterion parseFind(const QString& criterion);
