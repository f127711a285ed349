#include "FileIdentity.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

std::optional<FileIdentity> fileIdentity(const QString& path)
{
#ifdef Q_OS_UNIX
    struct stat status;
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileIdentity{static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino)};
#else
    const QFileInfo info(path);
    if (!info.isFile())
        return std::nullopt;
    const QDateTime birth = info.fileTime(QFileDevice::FileBirthTime);
    return FileIdentity{qHash(info.canonicalFilePath()),
                        static_cast<quint64>(birth.toMSecsSinceEpoch())};
#endif
}

bool isOtherThanFile(const char* path)
{
#ifdef Q_OS_UNIX
    struct stat status;
    return lstat(path, &status) == 0 && !S_ISREG(status.st_mode);
#else
    const QFileInfo info(QString::fromUtf8(path));
    return info.exists() && !info.isFile();
#endif
}
