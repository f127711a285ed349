#include "PreviousInstance.h"

#include "HostPaths.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// One for the computer, whoever is logged in: two users' programs would share one sale list.
QString lockPath(const QString& installationFolder)
{
    const QFileInfo info(installationFolder);
    const QString folder = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray hash =
        QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return QStringLiteral(P_tmpdir) + u"/vorbelo-"_s + QString::fromLatin1(hash) + u".lock"_s;
}

} // namespace

InstanceLock::InstanceLock(const QString& installationFolder)
{
    const QByteArray path = QFile::encodeName(lockPath(installationFolder));
    // Programs started from here must not inherit the lock, and a planted link must not be
    // followed.
    constexpr int Flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW;
    constexpr mode_t ForAll = S_IRUSR | S_IRGRP | S_IROTH;
    file_ = open(path.constData(), Flags | O_CREAT, ForAll);
    if (file_ < 0)
        file_ = open(path.constData(), Flags); // another user's
    if (file_ < 0)
        return;
    // The sticky bit keeps it through the periodic clean-up of temporary files.
    fchmod(file_, ForAll | S_ISVTX);
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
