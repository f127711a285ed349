#include "DailyCheck.h"

#include "Dates.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int MostFiles = 50;

QString notesPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/verificados"_s;
}

QString today()
{
    return Clock::today().toString(Qt::ISODate);
}

QString lineOf(const QString& path, const FileIdentity& file)
{
    return u"%1 %2 %3 %4"_s.arg(today()).arg(file.volume).arg(file.number).arg(path);
}

QStringList notes()
{
    QFile file(notesPath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

bool dailycheck::wasDone(const QString& path, const FileIdentity& file)
{
    return notes().contains(lineOf(path, file));
}

void dailycheck::note(const QString& path, const FileIdentity& file)
{
    QStringList lines = notes().filter(today());
    lines.append(lineOf(path, file));
    lines = lines.mid(lines.size() - std::min<qsizetype>(lines.size(), MostFiles));
    QDir().mkpath(QFileInfo(notesPath()).absolutePath());
    QSaveFile target(notesPath());
    if (!target.open(QIODevice::WriteOnly))
        return;
    target.write(lines.join(u'\n').toUtf8());
    target.commit();
}
