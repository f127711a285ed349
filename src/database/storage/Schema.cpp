#include "Schema.h"

#include "Database.h"
#include "FileFormat.h"
#include "FileRights.h"
#include "RuntimeError.h"
#include "SqliteHandle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

using namespace Qt::Literals::StringLiterals;

namespace {

QString columns(const TableDefinition& table)
{
    QString sql;
    for (const FieldDefinition& field : table.fields) {
        sql += u"\""_s + field.name + u"\" "_s +
               QString::fromLatin1(fileformat::declaredType(field.kind));
        sql += field.refusesNull ? u" NOT NULL, "_s : u", "_s;
    }
    // An id is never given out twice: a recordset that still shows a deleted row must not meet
    // another one under its id.
    return sql + QLatin1StringView(fileformat::IdColumn) + u" INTEGER PRIMARY KEY AUTOINCREMENT"_s;
}

bool isSaleList(const std::vector<TableDefinition>& tables)
{
    return tables.size() == 1 && tables.front().name == schema::saleListFile().front().name;
}

} // namespace

void schema::createFile(const QString& path, const std::vector<TableDefinition>& tables)
{
    const QFileInfo info(path);
    if (info.exists())
        throw RuntimeError(RuntimeError::FileAlreadyExists);
    if (!info.dir().exists())
        throw RuntimeError(RuntimeError::PathNotFound);

    // Closed to others from its first byte on; the engine gives its journal the same rights.
    QFile empty(path);
    if (!empty.open(QIODevice::NewOnly))
        throw RuntimeError(RuntimeError::PathFileAccess);
    setRights(empty.handle(), info.absolutePath(), Rights::OfGroup);
    empty.close();
    try {
        SqliteHandle handle(path, SqliteHandle::Mode::Create, Database::vfs());
        QString sql = u"PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA; BEGIN IMMEDIATE; "
                      "PRAGMA application_id=%1; PRAGMA user_version=%2;"_s.arg(fileformat::Plain)
                          .arg(fileformat::Version);
        for (const TableDefinition& table : tables)
            sql += u"CREATE TABLE \"%1\" (%2);"_s.arg(table.name, columns(table));
        if (isSaleList(tables)) {
            sql += u"CREATE TABLE _lista (id TEXT NOT NULL, geracao INTEGER NOT NULL);"
                   "INSERT INTO _lista VALUES('%1', 0);"_s.arg(
                       QUuid::createUuid().toString(QUuid::WithoutBraces));
        } else {
            sql += u"CREATE TABLE _lista_concluida (lista TEXT PRIMARY KEY, "
                   "geracao INTEGER NOT NULL);"_s;
        }
        sql += u"COMMIT"_s;
        handle.execute(sql.toUtf8().constData());
    } catch (const RuntimeError&) {
        // No half file stays behind; the handle is closed by now.
        QFile::remove(path);
        throw;
    }
}
