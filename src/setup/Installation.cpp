#include "Installation.h"

#include "BulkInsert.h"
#include "Database.h"
#include "DurableFile.h"
#include "FileRights.h"
#include "RuntimeError.h"
#include "SampleData.h"
#include "Schema.h"
#include "ShopFiles.h"
#include "Windows1252.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

namespace {

QString iniText(const QString& mainFile, bool withExamples)
{
    QString text = u"[Local]\r\nCaminho=%1\r\nCaminho2=%1\r\n"
                   "[Opcao]\r\nMarque2=1\r\n"
                   "[Configurar]\r\n"_s.arg(mainFile);
    if (withExamples)
        for (const auto& [key, value] : sampleSettings())
            text += key + u'=' + value + u"\r\n"_s;
    return text;
}

// Western European, as profile files are; a folder whose name goes beyond that asks for marked
// UTF-8, or the path would lead nowhere.
QByteArray iniBytes(const QString& text)
{
    QByteArray narrow = toWindows1252(text);
    if (fromWindows1252(narrow) == text)
        return narrow;
    return (QChar(QChar::ByteOrderMark) + text).toUtf8();
}

void writeIni(const QString& path, const QString& text)
{
    QSaveFile file(path);
    const QByteArray bytes = iniBytes(text);
    if (!file.open(QIODevice::WriteOnly))
        throw RuntimeError(RuntimeError::PathFileAccess);
    setRights(file.handle(), QFileInfo(path).absolutePath(), Rights::OfGroup);
    if (file.write(bytes) != bytes.size() || !commitDurably(file))
        throw RuntimeError(RuntimeError::PathFileAccess);
}

// A journal left alone would be taken for that of the next file of its name.
void removeJournal(const QString& path)
{
    Database::dropIdle();
    QFile::remove(path + u"-journal"_s);
}

void removeDatabase(const QString& path)
{
    removeJournal(path);
    QFile::remove(path);
}

// The file gets its name only when it is whole: a main file without its first user lets nobody in,
// and one that exists is never touched again.
void makeDatabase(const QString& path, const std::vector<TableDefinition>& tables,
                  const std::vector<TableRows>& rows)
{
    const QString partial = path + u".parcial"_s;
    removeDatabase(partial);
    try {
        schema::createFile(partial, tables);
        if (!rows.empty())
            insertRows(partial, rows);
        removeJournal(path);
        if (!QFile::rename(partial, path))
            throw RuntimeError(RuntimeError::PathFileAccess);
    } catch (const RuntimeError&) {
        removeDatabase(partial);
        throw;
    }
}

TableRows firstUser()
{
    std::vector<Value> row{u"Administrador"_s, u"1234"_s};
    row.resize(10, Value(true));
    return {u"VALIDAR"_s, {row}};
}

QStringList missingIn(const QDir& place)
{
    QStringList missing;
    for (const QString& name : {u"GALTERIA1.mdb"_s, u"MIRANDEL1.mdb"_s, u"Banco.ini"_s})
        if (!QFile::exists(place.filePath(name)))
            missing += name;
    return missing;
}

} // namespace

QStringList layDownInstallation(const QString& folder, bool withExamples)
{
    const QDir place(folder);
    if (!place.mkpath(u"."_s))
        refuseFolder(folder);
    if (missingIn(place).isEmpty())
        return {};

    // A second one that was started meanwhile waits, and finds what the first one made.
    constexpr int LongestWait = 60'000; // milliseconds
    QLockFile alone(place.filePath(u".vorbelo-setup.lock"_s));
    if (!alone.tryLock(LongestWait))
        refuseFolder(folder);
    QStringList missing = missingIn(place);
    const QString mainFile = place.absoluteFilePath(u"GALTERIA1.mdb"_s);
    if (missing.contains(u"GALTERIA1.mdb"_s)) {
        std::vector<TableRows> rows{firstUser()};
        if (withExamples)
            for (TableRows& group : sampleRows())
                rows.push_back(std::move(group));
        makeDatabase(mainFile, schema::mainFile(), rows);
    }
    if (missing.contains(u"MIRANDEL1.mdb"_s))
        makeDatabase(place.filePath(u"MIRANDEL1.mdb"_s), schema::saleListFile(), {});
    if (missing.contains(u"Banco.ini"_s))
        writeIni(place.filePath(u"Banco.ini"_s),
                 iniText(QDir::toNativeSeparators(mainFile), withExamples));
    return missing;
}
