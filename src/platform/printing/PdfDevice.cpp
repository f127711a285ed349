#include "PageDevice.h"

#include "Dates.h"
#include "DocumentFiles.h"
#include "DurableFile.h"
#include "PageDrawing.h"
#include "RuntimeError.h"

#include <QFileInfo>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

bool writePdf(QIODevice& file, const std::vector<Page>& pages, const QString& title)
{
    QPdfWriter writer(&file);
    writer.setTitle(title);
    writer.setCreator(u"Vorbelo"_s);
    writer.setResolution(sheet::TwipsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    return drawPages(writer, pages);
}

} // namespace

PdfDevice::PdfDevice(QString path) : path_(std::move(path)) {}

void PdfDevice::put(const std::vector<Page>& pages, const QString& documentName)
{
    const QFileInfo first(path_);
    QString path = path_;
    if (path.isEmpty())
        path =
            unusedPdfPath(documentsFolder(), safeFileName(documentName) +
                                                 Clock::now().toString(u" yyyy-MM-dd HH-mm-ss"_s));
    else if (hasWritten_)
        path = unusedPdfPath(first.absolutePath(), first.completeBaseName());

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !writePdf(file, pages, documentName) ||
        !commitDurably(file))
        throw RuntimeError(RuntimeError::PrinterFault);
    hasWritten_ = true;
}
