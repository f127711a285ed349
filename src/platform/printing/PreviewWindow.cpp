#include "PreviewWindow.h"

#include "PageDrawing.h"

#include <QDialogButtonBox>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

// The toolkit's preview within a window of our own: its window prints through the toolkit's dialog,
// whose printer would be another than the one chosen.
PreviewWindow::PreviewWindow(const std::vector<Page>& pages, const QString& documentName,
                             QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(documentName.isEmpty() ? u"Visualização"_s
                                          : u"Visualização - "_s + documentName);
    paper_.setOutputFormat(QPrinter::PdfFormat); // asks no printer for its paper
    paper_.setResolution(sheet::TwipsPerInch);
    paper_.setPageSize(QPageSize(QPageSize::A4));
    paper_.setFullPage(true);
    preview_ = new QPrintPreviewWidget(&paper_, this);
    preview_->setAccessibleName(u"Páginas do documento"_s);
    connect(preview_, &QPrintPreviewWidget::paintRequested, this,
            [&pages](QPrinter* printer) { drawPages(*printer, pages); });
    preview_->setZoomFactor(0.9);

    const QString count =
        pages.size() == 1 ? u"1 página"_s : QString::number(pages.size()) + u" páginas"_s;
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const print = buttons->addButton(u"&Imprimir"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"&Fechar"_s, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(count, this));
    bottom->addWidget(buttons);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(preview_);
    layout->addLayout(bottom);
    resize(880, 700);
    print->setDefault(true);
    print->setFocus();
}

void PreviewWindow::turn(int direction)
{
    QScrollBar& bar = *preview_->findChild<QGraphicsView*>()->verticalScrollBar();
    const int page = preview_->currentPage();
    if (bar.value() != (direction > 0 ? bar.maximum() : bar.minimum())) {
        bar.setValue(bar.value() + direction * bar.pageStep() * 9 / 10);
        return;
    }
    preview_->setCurrentPage(page + direction);
    if (preview_->currentPage() != page)
        bar.setValue(direction > 0 ? bar.minimum() : bar.maximum());
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_PageDown: turn(1); return;
    case Qt::Key_PageUp: turn(-1); return;
    case Qt::Key_Home: preview_->setCurrentPage(1); return;
    case Qt::Key_End: preview_->setCurrentPage(preview_->pageCount()); return;
    case Qt::Key_Plus: preview_->zoomIn(1.25); return;
    case Qt::Key_Minus: preview_->zoomOut(1.25); return;
    default: QDialog::keyPressEvent(event);
    }
}
