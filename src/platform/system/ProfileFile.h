#pragma once

#include <QString>

// The plain Windows profile file, after the published pages of GetPrivateProfileString and
// WritePrivateProfileString: sections and keys without regard to case, CRLF. Windows-1252 where the
// file does not say otherwise (Profile.h). A new file is closed to all but owner and group.

// The value, or the default where file, section or key is missing; at most bufferSize - 1
// characters.
QString readProfileString(const QString& section, const QString& key, const QString& defaultValue,
                          int bufferSize, const QString& path);

// Writes the key in place, keeping every other line, to a temporary file that is renamed. False,
// with the file as it was, where that cannot be done (read-only, missing folder, full disk).
bool writeProfileString(const QString& section, const QString& key, const QString& value,
                        const QString& path);
