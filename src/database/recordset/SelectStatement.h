#pragma once

#include <QString>

#include <optional>

// The three shapes of SELECT that the system uses: a whole table, a table ordered by one field, the
// rows of which one field is Like a pattern. This is the only place where such text is read, and it
// never reaches the engine.
struct SelectStatement
{
    QString table;
    std::optional<QString> orderField;
    std::optional<QString> likeField;
    QString pattern;
};

// Error -2147217900 for anything else.
SelectStatement parseSelect(const QString& sql);
