#include "ShopFolder.h"

#include "Installation.h"
#include "RuntimeError.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

bool hasSettings(const QString& folder)
{
    return QFileInfo::exists(folder + u"/Banco.ini"_s);
}

// Of a link whose target is away, too.
QString linkedFolder()
{
    for (const QString& place :
         QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation)) {
        const QFileInfo link(place + u"/vorbelo/pasta"_s);
        if (link.isSymLink())
            return link.symLinkTarget();
    }
    return {};
}

} // namespace

ShopFolder chooseShopFolder(const QString& named, const QString& programFolder)
{
    // Settings that were lost are told, and are no reason to open an empty shop elsewhere.
    if (named.isEmpty() &&
        (hasSettings(programFolder) || QFileInfo::exists(programFolder + u"/MIRANDEL1.mdb"_s)))
        return {programFolder};
    const QString given = named.isEmpty() ? linkedFolder() : QDir(named).absolutePath();
    if (!given.isEmpty()) {
        if (!hasSettings(given))
            throw RuntimeError(RuntimeError::PathNotFound, u"Não há Banco.ini na pasta %1."_s.arg(
                                                               QDir::toNativeSeparators(given)));
        return {QDir(given).absolutePath()};
    }
    const QString own = QDir::home().filePath(u"Vorbelo"_s);
    const bool isNew = !hasSettings(own);
    layDownInstallation(own, false);
    return {own, isNew};
}
