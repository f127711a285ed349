#include "ProfileFile.h"

#include "DurableFile.h"
#include "Faults.h"
#include "FileRights.h"
#include "Profile.h"
#include "RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 LargestFile = 16'777'216; // bytes

// Nothing where there is no such file; also for a folder, a pipe or a file beyond all reason.
std::optional<QByteArray> contents(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > LargestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

// The renaming would get past a file or folder marked read-only, and the administrator past any
// mark.
bool markedReadOnly(const QString& path)
{
    const auto anyone = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    return !(QFileInfo(path).permissions() & anyone);
}

bool write(const QString& section, const QString& key, const QString& value, const QString& path)
{
    faults::point(faults::Call::File);
    const QFileInfo target(path);
    const QString real = target.exists() ? target.canonicalFilePath() : path;
    if (markedReadOnly(QFileInfo(real).absolutePath()) || (target.exists() && markedReadOnly(real)))
        return false;
    const std::optional<QByteArray> before = contents(real);
    if (target.exists() && !before)
        return false;

    Profile profile(before.value_or(QByteArray()));
    profile.set(section, key, value);
    const QByteArray after = profile.bytes();
    QSaveFile file(real);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (!target.exists())
        setRights(file.handle(), QFileInfo(real).absolutePath(), Rights::OfGroup);
    return file.write(after) == after.size() && commitDurably(file);
}

QString read(const QString& section, const QString& key, const QString& defaultValue,
             const QString& path)
{
    faults::point(faults::Call::File);
    const std::optional<QByteArray> bytes = contents(path);
    if (!bytes)
        return defaultValue;
    return Profile(*bytes).value(section, key).value_or(defaultValue);
}

} // namespace

QString readProfileString(const QString& section, const QString& key, const QString& defaultValue,
                          int bufferSize, const QString& path)
try {
    return read(section, key, defaultValue, path).left(qMax(0, bufferSize - 1));
} catch (const RuntimeError&) {
    return defaultValue.left(qMax(0, bufferSize - 1));
}

bool writeProfileString(const QString& section, const QString& key, const QString& value,
                        const QString& path)
try {
    return write(section, key, value, path);
} catch (const RuntimeError&) {
    return false;
}
