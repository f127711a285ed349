#include "SiteAddress.h"

#include "RuntimeError.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace {

QString pageOf(const QString& path)
{
    return path == u"/eeprom.asp" ? u"eeprom.html"_s : u"index.html"_s;
}

} // namespace

QString siteAddress(const QString& path)
{
    return siteAddress(path, QCoreApplication::applicationDirPath());
}

QString siteAddress(const QString& path, const QString& programFolder)
{
    for (const QString& manual : {u"/manual/"_s, u"/../share/doc/vorbelo/manual/"_s}) {
        const QFileInfo page(programFolder + manual + pageOf(path));
        if (page.isFile() && page.isReadable())
            return QUrl::fromLocalFile(page.canonicalFilePath()).toString(QUrl::FullyEncoded);
    }
    throw RuntimeError(
        RuntimeError::FileNotFound,
        u"Falta a página %1 do manual, que acompanha o programa. Instale o programa de novo."_s.arg(
            pageOf(path)));
}
