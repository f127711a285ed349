#pragma once

#include <QString>

// Classic paths on this host: a backslash becomes a slash, a drive letter the folder to which it is
// mapped by a link "unidades/f:" in the user's configuration folder or beside the executable. A
// native path comes back as it is. Error 76 for a letter that is not mapped, or left out before
// ":".
QString hostPath(const QString& path);

// The folder of the executable, without a slash at the end; tests set their own.
QString applicationFolder();
void setApplicationFolderForTests(const QString& folder);
