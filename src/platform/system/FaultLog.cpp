#include "FaultLog.h"

#include "Dates.h"
#include "Program.h"
#include "RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype LongestWords = 300;

QString kindText(faultlog::Kind kind)
{
    switch (kind) {
    case faultlog::Kind::ProgramEnded: return u"programa encerrado"_s;
    case faultlog::Kind::Fault: return u"falha"_s;
    case faultlog::Kind::LostWrite: return u"gravação perdida"_s;
    case faultlog::Kind::RefusedWrite: return u"gravação recusada"_s;
    case faultlog::Kind::RefusedOpen: break;
    }
    return u"arquivo não abriu"_s;
}

// From the first quote to the last one: a typed text may hold quotes itself.
QString withoutQuoted(QString words)
{
    static const QRegularExpression quoted(u"'.*'|\".*\""_s,
                                           QRegularExpression::DotMatchesEverythingOption);
    return words.replace(quoted, u"'...'"_s).simplified().left(LongestWords);
}

void makeRoom(const QString& path, qint64 bytes)
{
    if (QFileInfo(path).size() + bytes <= faultlog::SizeLimit)
        return;
    QFile::remove(path + u".1"_s);
    QFile::rename(path, path + u".1"_s);
}

bool append(faultlog::Kind kind, const QString& form, const QString& words)
{
    const QString path = faultlog::path();
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder))
        return false;
    const QByteArray line =
        QStringList{Clock::now().toString(u"yyyy-MM-dd HH:mm:ss"_s), program::version(),
                    form.isEmpty() ? u"-"_s : form, kindText(kind), words}
            .join(u'\t')
            .toUtf8() +
        '\n';
    makeRoom(path, line.size());
    QFile file(path);
    // Whole lines at once, so that two programs of one user do not mix theirs.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return false;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return file.write(line) == line.size();
}

} // namespace

bool faultlog::note(Kind kind, const QString& form, const RuntimeError& error)
{
    return append(kind, form,
                  QString::number(error.number()) + u' ' + withoutQuoted(error.description()));
}

bool faultlog::note(Kind kind, const QString& form, const QString& what)
{
    return append(kind, form, withoutQuoted(what));
}

// By hand: the toolkit of Debian 12 does not know the state folder yet.
QString faultlog::path()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    // A relative path in the variable is to be ignored.
    return (QDir::isAbsolutePath(state) ? state : QDir::homePath() + u"/.local/state"_s) +
           u"/vorbelo/vorbelo.log"_s;
}
