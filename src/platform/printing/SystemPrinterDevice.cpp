#include "PageDevice.h"

#include "PageDrawing.h"
#include "RuntimeError.h"

#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include <utility>

namespace {

bool drawPages(QPrinter& printer, const std::vector<Page>& pages)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    // The sheet's corner is the origin; where a printer's own margin is wider, its edge is lost.
    painter.scale(printer.logicalDpiX() / 1440.0, printer.logicalDpiY() / 1440.0);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (i > 0 && !printer.newPage())
            return false;
        drawPage(painter, pages[i]);
    }
    return painter.end();
}

} // namespace

SystemPrinterDevice::SystemPrinterDevice(QString printerName) : printerName_(std::move(printerName))
{
}

void SystemPrinterDevice::put(const std::vector<Page>& pages, const QString& documentName)
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(printerName_);
    if (info.isNull())
        throw RuntimeError(RuntimeError::PrinterFault);
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(documentName);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setFullPage(true);
    const bool drawn = drawPages(printer, pages);
    const QPrinter::PrinterState state = printer.printerState();
    if (!drawn || state == QPrinter::Aborted || state == QPrinter::Error)
        throw RuntimeError(RuntimeError::PrinterFault);
}
