#include "PageDevice.h"

#include "EventGate.h"
#include "PreviewWindow.h"
#include "RuntimeError.h"

#include <QApplication>

#include <utility>

PreviewDevice::PreviewDevice(std::shared_ptr<PageDevice> inner) : inner_(std::move(inner)) {}

void PreviewDevice::put(const std::vector<Page>& pages, const QString& documentName)
{
    bool wanted = false;
    {
        const gate::NestedLoop nested;
        PreviewWindow window(pages, documentName, QApplication::activeWindow());
        wanted = window.exec() == QDialog::Accepted;
    }
    // Closed, it put out no paper: nothing that depends on the paper may go on.
    if (!wanted)
        throw RuntimeError(RuntimeError::PrinterFault);
    inner_->put(pages, documentName);
}
