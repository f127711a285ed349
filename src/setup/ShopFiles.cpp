#include "ShopFiles.h"

#include "HostPaths.h"
#include "ProfileFile.h"
#include "RuntimeError.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

ShopFiles shopFiles(const QString& folder)
{
    const QDir place(folder);
    ShopFiles files{folder, place.filePath(u"Banco.ini"_s), {}, place.filePath(u"MIRANDEL1.mdb"_s)};
    if (!QFile::exists(files.ini))
        throw RuntimeError(RuntimeError::FileNotFound,
                           u"Não há Banco.ini em %1."_s.arg(QDir::toNativeSeparators(folder)));
    constexpr int Longest = 255;
    files.main = hostPath(readProfileString(u"Local"_s, u"Caminho"_s, {}, Longest, files.ini));
    return files;
}

void refuseFolder(const QString& folder)
{
    throw RuntimeError(RuntimeError::PathFileAccess,
                       u"Não é possível gravar na pasta %1."_s.arg(
                           QDir::toNativeSeparators(QDir(folder).absolutePath())));
}

void forEachRow(const QString& path, const QString& select,
                const std::function<void(Recordset& row)>& take)
{
    const auto connection = std::make_shared<Connection>();
    connection->Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + path);
    Recordset rows;
    rows.Open(select, connection, CursorType::Static, LockType::ReadOnly);
    for (; !rows.eof(); rows.MoveNext())
        take(rows);
}
