#include "HostPaths.h"

#include "RuntimeError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

QString& chosenFolder()
{
    static QString folder;
    return folder;
}

// The user's own mapping goes before the one of the installation.
QStringList mappingFolders()
{
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::AppConfigLocation);
    folders +=
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/vorbelo"_s;
    folders += applicationFolder();
    return folders;
}

bool isDriveLetter(QChar character)
{
    const QChar lower = character.toLower();
    return lower >= u'a' && lower <= u'z';
}

// Empty where the letter is not mapped, or to what is away.
QString mappedFolder(QChar letter)
{
    const QStringList folders = mappingFolders();
    for (const QString& folder : folders) {
        for (const QChar spelling : {letter.toLower(), letter.toUpper()}) {
            const QFileInfo link(folder + u"/unidades/"_s + spelling + u':');
            if (link.isDir())
                return link.canonicalFilePath();
        }
    }
    return {};
}

} // namespace

QString hostPath(const QString& path)
{
    QString slashed = path;
    slashed.replace(u'\\', u'/');
    // A letter left out is no path either; the toolkit would look among its own resources.
    if (slashed.startsWith(u':'))
        throw RuntimeError(RuntimeError::PathNotFound);
    if (slashed.size() < 2 || slashed[1] != u':' || !isDriveLetter(slashed[0]))
        return slashed;

    QString folder = mappedFolder(slashed[0]);
    if (folder.isEmpty())
        throw RuntimeError(RuntimeError::PathNotFound);
    QString rest = slashed.mid(2);
    if (rest.startsWith(u'/'))
        rest.remove(0, 1);
    if (rest.isEmpty())
        return folder;
    return folder + (folder.endsWith(u'/') ? u""_s : u"/"_s) + rest;
}

QStringList mappedDrives()
{
    QStringList drives;
    const QStringList folders = mappingFolders();
    for (const QString& folder : folders) {
        const QStringList names =
            QDir(folder + u"/unidades"_s)
                .entryList(QDir::AllDirs | QDir::System | QDir::NoDotAndDotDot);
        for (const QString& name : names)
            if (name.size() == 2 && name[1] == u':' && isDriveLetter(name[0]))
                drives += name.toLower();
    }
    drives.sort();
    drives.removeDuplicates();
    return drives;
}

QString driveFolder(const QString& drive)
{
    QString folder;
    if (!drive.isEmpty() && isDriveLetter(drive[0]))
        folder = mappedFolder(drive[0]);
    if (folder.isEmpty())
        throw RuntimeError(RuntimeError::DeviceUnavailable);
    return folder;
}

QString applicationFolder()
{
    return chosenFolder().isEmpty() ? QCoreApplication::applicationDirPath() : chosenFolder();
}

void setApplicationFolder(const QString& folder)
{
    chosenFolder() = folder;
}
