#include "DurableFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Some network drives know no sync; that is no failure to write.
bool synced(int handle)
{
    return fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP;
}

void syncFolder(const QString& folder)
{
    const int handle =
        open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    fsync(handle);
    close(handle);
}

} // namespace

bool commitDurably(QSaveFile& file)
{
    // The commit itself passes over a failing sync, which is where a full network drive shows.
    if (!file.flush() || !synced(file.handle()))
        file.cancelWriting();
    if (!file.commit())
        return false;
    syncFolder(QFileInfo(file.fileName()).absolutePath());
    return true;
}
