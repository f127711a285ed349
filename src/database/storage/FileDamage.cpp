#include "FileDamage.h"

#include "Database.h"
#include "SqliteHandle.h"

QStringList damageOf(const QString& path)
{
    SqliteHandle file(path, SqliteHandle::Mode::Existing, Database::vfs());
    SqliteStatement check(file, "PRAGMA integrity_check");
    QStringList lines;
    while (check.step()) {
        const std::string_view line = check.column(0).text;
        if (line != "ok")
            lines << QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
    }
    return lines;
}
