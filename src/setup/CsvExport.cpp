#include "CsvExport.h"

#include "DurableFile.h"
#include "FileRights.h"
#include "RuntimeError.h"
#include "Schema.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

// The engine's own shell writes neither decimal commas nor dates of Brazil.

namespace {

QByteArray quoted(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    const bool needsQuotes = bytes.isEmpty() || bytes.front() == ' ' || bytes.back() == ' ' ||
                             std::any_of(bytes.begin(), bytes.end(), [](char c) {
                                 return c == ';' || c == '"' || c == '\n' || c == '\r';
                             });
    return needsQuotes ? '"' + bytes.replace('"', "\"\"") + '"' : bytes;
}

QByteArray tableText(const QString& path, const TableDefinition& table)
{
    // The shop gives its tables away; the passwords of its users are no part of them.
    std::vector<QString> fields;
    for (const FieldDefinition& field : table.fields)
        if (field.name != u"SENHA")
            fields.push_back(field.name);
    std::vector<Value> cells(fields.begin(), fields.end());
    QByteArray text = CsvMark + csvLine(cells);
    forEachRow(path, u"SELECT * FROM "_s + table.name, [&](Recordset& row) {
        for (size_t field = 0; field < fields.size(); ++field)
            cells[field] = row.Fields(fields[field]);
        text += csvLine(cells);
    });
    return text;
}

} // namespace

QByteArray csvLine(const std::vector<Value>& cells)
{
    QByteArray line;
    for (const Value& cell : cells) {
        if (!line.isEmpty() || &cell != &cells.front())
            line += ';';
        if (!cell.isNull())
            line += quoted(cell.text());
    }
    return line + "\r\n";
}

void writeWhole(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        refuseFolder(QFileInfo(path).absolutePath());
    setRights(file.handle(), QFileInfo(path).absolutePath(), Rights::OfOwner);
    if (file.write(bytes) != bytes.size() || !commitDurably(file))
        throw RuntimeError(RuntimeError::DiskFull);
}

QStringList exportTables(const ShopFiles& files, const QString& folder)
{
    const QDir place(folder);
    if (!place.mkpath(u"."_s))
        refuseFolder(folder);
    QStringList written;
    const auto write = [&](const QString& name, const QString& path, const TableDefinition& table) {
        writeWhole(place.filePath(name), tableText(path, table));
        written << name;
    };
    for (const TableDefinition& table : schema::mainFile())
        write(table.name + u".csv"_s, files.main, table);
    for (const TableDefinition& table : schema::saleListFile())
        write(u"Lista-da-venda.csv"_s, files.list, table);
    return written;
}
