#pragma once

#include <QString>
#include <QStringList>

// Classic paths on this host: a backslash becomes a slash, a drive letter the folder to which it is
// mapped by a link "unidades/f:" in the user's configuration folder or beside the executable. A
// native path comes back as it is. Error 76 for a letter that is not mapped, or left out before
// ":".
QString hostPath(const QString& path);

// The letters that are mapped, "a:" to "z:" in order, those whose device is away included.
QStringList mappedDrives();
// The folder behind a letter of that list. Error 68 where the device is away, or nothing is mapped.
QString driveFolder(const QString& drive);

// The shop's folder, with its settings and by default its files, without a slash at the end: the
// folder of the executable, unless the start chose another.
QString applicationFolder();
void setApplicationFolder(const QString& folder);
