#include "CommonDialog.h"

#include "EventGate.h"
#include "PageDevice.h"
#include "PrintDialog.h"

#include <QApplication>

#include <utility>

namespace {

std::function<void(const QString&)>& answerForTests()
{
    static std::function<void(const QString&)> answer;
    return answer;
}

// Cancelled: the printer stays, while a PDF goes to a name of its own, so that no earlier document
// is lost under it.
std::shared_ptr<PageDevice> keptDevice(const std::shared_ptr<PageDevice>& last)
{
    if (const auto preview = std::dynamic_pointer_cast<PreviewDevice>(last))
        return std::make_shared<PreviewDevice>(keptDevice(preview->inner()));
    if (!last || std::dynamic_pointer_cast<PdfDevice>(last))
        return std::make_shared<PdfDevice>();
    return last;
}

} // namespace

void CommonDialog::ShowPrinter(const QString& documentName)
{
    if (answerForTests()) {
        answerForTests()(documentName);
        return;
    }
    Printer& printer = Printer::instance();
    printer.setDocumentName(documentName);
    const gate::NestedLoop nested;
    PrintDialog dialog(documentName, printer.device().get(), QApplication::activeWindow());
    const bool chosen = dialog.exec() == QDialog::Accepted;
    printer.setDevice(chosen ? dialog.chosenDevice() : keptDevice(printer.device()));
}

void CommonDialog::setShowPrinterForTests(std::function<void(const QString& documentName)> answer)
{
    answerForTests() = std::move(answer);
}
