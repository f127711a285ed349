#include "PreviousInstance.h"

#include "HostPaths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The folder of the session, or that of temporary files; a session opened from elsewhere may not
// tell of it, and must find the same lock.
QString runtimeFolder()
{
    const QString told = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString usual = u"/run/user/"_s + QString::number(getuid());
    for (const QString& folder : {told, usual}) {
        const QFileInfo info(folder);
        if (!folder.isEmpty() && info.isDir() && info.isWritable() && info.ownerId() == getuid())
            return folder;
    }
    return QDir::tempPath();
}

QString lockPath(const QString& installationFolder)
{
    const QFileInfo info(installationFolder);
    const QString folder = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray hash =
        QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return runtimeFolder() + u"/vorbelo-"_s + QString::number(getuid()) + u'-' +
           QString::fromLatin1(hash) + u".lock"_s;
}

} // namespace

InstanceLock::InstanceLock(const QString& installationFolder)
{
    // Programs started from here must not inherit the lock, and a planted link must not be
    // followed.
    file_ = open(QFile::encodeName(lockPath(installationFolder)).constData(),
                 O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (file_ < 0)
        return;
    // The sticky bit keeps it through the periodic clean-up of the runtime folder.
    fchmod(file_, S_IRUSR | S_IWUSR | S_ISVTX);
    heldByAnother_ = flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

InstanceLock::~InstanceLock()
{
    // The file stays: removing it would let two later programs lock two files of one name.
    if (file_ >= 0)
        close(file_);
}

bool previousInstance()
{
    static const InstanceLock lock(applicationFolder());
    return lock.heldByAnother();
}
