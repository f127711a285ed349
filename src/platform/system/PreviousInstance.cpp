#include "PreviousInstance.h"

#include "HostPaths.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// Of a folder on a share this lock stays on the computer, as it is meant to: each one runs its own
// program there.
InstanceLock::InstanceLock(const QString& installationFolder)
    // Programs started from here must not inherit the lock.
    : folder_(open(QFile::encodeName(installationFolder).constData(),
                   O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    heldByAnother_ = folder_ >= 0 && flock(folder_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

InstanceLock::~InstanceLock()
{
    if (folder_ >= 0)
        close(folder_);
}

bool previousInstance()
{
    static const InstanceLock lock(applicationFolder());
    return lock.heldByAnother();
}
