#pragma once

#include "Value.h"

#include <QString>

#include <vector>

// Rows for one table, values in the order of its fields; missing ones at the end are Null.
struct TableRows
{
    QString table;
    std::vector<std::vector<Value>> rows;
};

// Adds all the rows in one transaction, or none. Errors as Connection::Open and Recordset::Update.
void insertRows(const QString& path, const std::vector<TableRows>& tables);
