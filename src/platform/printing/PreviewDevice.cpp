#include "PageDevice.h"

#include "EventGate.h"
#include "PreviewWindow.h"

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
    if (wanted)
        inner_->put(pages, documentName);
}
