#include "DocumentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LongestName = 80;

bool isTaken(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

QString documentsFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir().mkpath(folder) ? folder : QDir::homePath();
}

QString safeFileName(const QString& text)
{
    QString name = text.simplified();
    for (QChar& character : name) {
        if (!character.isPrint() || u"/\\:*?\"<>|"_s.contains(character))
            character = u'-';
    }
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    name = name.left(LongestName).trimmed();
    return name.isEmpty() ? u"Documento"_s : name;
}

QString unusedPdfPath(const QString& folder, const QString& name)
{
    const QString beginning = folder + u'/' + name;
    QString path = beginning + u".pdf"_s;
    for (int number = 2; isTaken(path); ++number)
        path = beginning + u" ("_s + QString::number(number) + u").pdf"_s;
    return path;
}
