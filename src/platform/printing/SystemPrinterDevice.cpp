#include "PageDevice.h"

#include "PageDrawing.h"
#include "RuntimeError.h"

#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>

#include <utility>

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
