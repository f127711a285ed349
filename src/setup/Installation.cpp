#include "Installation.h"

#include "BulkInsert.h"
#include "RuntimeError.h"
#include "SampleData.h"
#include "Schema.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

namespace {

QString iniText(const QString& mainFile, bool withExamples)
{
    QString text = u"[Local]\r\nCaminho=%1\r\nCaminho2=%1\r\n"
                   "[Opcao]\r\nMarque2=1\r\n"
                   "[Configurar]\r\nCPFCGC=11222333000181\r\n"_s.arg(mainFile);
    if (withExamples)
        for (const auto& [key, value] : sampleSettings())
            text += key + u'=' + value + u"\r\n"_s;
    return text;
}

void writeIni(const QString& path, const QString& text)
{
    QSaveFile file(path);
    // Western European, as the profile file is read; these texts hold nothing beyond Latin-1.
    const QByteArray bytes = text.toLatin1();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw RuntimeError(RuntimeError::PathFileAccess);
}

TableRows firstUser()
{
    std::vector<Value> row{u"Administrador"_s, u"1234"_s};
    row.resize(10, Value(true));
    return {u"VALIDAR"_s, {row}};
}

} // namespace

QStringList layDownInstallation(const QString& folder, bool withExamples)
{
    const QDir place(folder);
    if (!place.mkpath(u"."_s))
        throw RuntimeError(RuntimeError::PathFileAccess);

    QStringList made;
    const auto isMissing = [&](const QString& name) {
        const bool missing = !QFile::exists(place.filePath(name));
        if (missing)
            made += name;
        return missing;
    };
    const QString mainFile = place.absoluteFilePath(u"GALTERIA1.mdb"_s);
    if (isMissing(u"GALTERIA1.mdb"_s)) {
        schema::createFile(mainFile, schema::mainFile());
        std::vector<TableRows> rows{firstUser()};
        if (withExamples)
            for (TableRows& group : sampleRows())
                rows.push_back(std::move(group));
        insertRows(mainFile, rows);
    }
    if (isMissing(u"MIRANDEL1.mdb"_s))
        schema::createFile(place.filePath(u"MIRANDEL1.mdb"_s), schema::saleListFile());
    if (isMissing(u"Banco.ini"_s))
        writeIni(place.filePath(u"Banco.ini"_s),
                 iniText(QDir::toNativeSeparators(mainFile), withExamples));
    return made;
}
