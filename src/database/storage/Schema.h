#pragma once

#include <QString>

#include <span>
#include <vector>

// The tables of both files with their fields in their fixed order: the order is design, since forms
// read by position.
enum class FieldKind
{
    Text,
    Money,
    Number,
    YesNo,
    Date
};

struct FieldDefinition
{
    QString name;
    FieldKind kind = FieldKind::Text;
    bool refusesNull = false;
};

struct TableDefinition
{
    QString name;
    std::vector<FieldDefinition> fields;
};

namespace schema {
const std::vector<TableDefinition>& mainFile();     // GALTERIA1.mdb
const std::vector<TableDefinition>& saleListFile(); // MIRANDEL1.mdb

// Makes a new database file with these tables, empty. Error 58 where the file exists, 76 where its
// folder does not, -2147467259 with the engine's text for everything else.
void createFile(const QString& path, const std::vector<TableDefinition>& tables);
} // namespace schema
