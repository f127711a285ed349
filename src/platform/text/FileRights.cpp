#include "FileRights.h"

#include <QFile>

#include <sys/stat.h>

void setRights(int handle, const QString& folder, Rights rights)
{
    struct stat file
    {
    };
    struct stat place
    {
    };
    if (fstat(handle, &file) != 0)
        return;
    mode_t mode = file.st_mode & (rights == Rights::OfOwner ? S_IRWXU : S_IRWXU | S_IRWXG);
    constexpr mode_t Given = S_ISGID | S_IWGRP;
    if (stat(QFile::encodeName(folder).constData(), &place) == 0 &&
        (place.st_mode & Given) == Given && place.st_gid == file.st_gid)
        mode |= S_IRGRP | S_IWGRP;
    fchmod(handle, mode);
}
