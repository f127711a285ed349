#include "SiteAddress.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Site = u"http://www.vorbelo.example"_s;

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
    return Site + path;
}
