#include "PreviewWindow.h"

#include "PageDrawing.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double TwipsPerPixel = 15;
constexpr int Gap = 12;

} // namespace

// All pages below each other, each a white sheet.
class PreviewWindow::Sheets : public QWidget
{
public:
    Sheets(const std::vector<Page>& pages, QWidget* parent) : QWidget(parent), pages_(pages) {}

    double scale() const { return scale_; }
    void setScale(double scale)
    {
        scale_ = qBound(0.4, scale, 3.0);
        setFixedSize(qRound(pixels(sheet::Width)) + 2 * Gap, sheetStep() * count() + Gap);
        update();
    }
    int sheetStep() const { return qRound(pixels(sheet::Height)) + Gap; }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        for (int i = 0; i < count(); ++i) {
            const QRectF paper(Gap, Gap + i * sheetStep(), pixels(sheet::Width),
                               pixels(sheet::Height));
            if (!paper.intersects(event->rect()))
                continue;
            painter.fillRect(paper, Qt::white);
            painter.save();
            painter.translate(paper.topLeft());
            painter.scale(pixels(1), pixels(1));
            drawPage(painter, pages_[static_cast<std::size_t>(i)]);
            painter.restore();
        }
    }

private:
    int count() const { return static_cast<int>(pages_.size()); }
    double pixels(int twips) const { return twips / TwipsPerPixel * scale_; }

    const std::vector<Page>& pages_;
    double scale_ = 1;
};

PreviewWindow::PreviewWindow(const std::vector<Page>& pages, const QString& documentName,
                             QWidget* parent)
    : QDialog(parent), area_(new QScrollArea(this)), sheets_(new Sheets(pages, this))
{
    setWindowTitle(documentName.isEmpty() ? u"Visualização"_s
                                          : u"Visualização - "_s + documentName);
    area_->setWidget(sheets_);
    area_->setAlignment(Qt::AlignHCenter);
    area_->setBackgroundRole(QPalette::Dark);
    area_->setAccessibleName(u"Páginas do documento"_s);
    setScale(0.9);

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
    layout->addWidget(area_);
    layout->addLayout(bottom);
    resize(sheets_->width() + 60, 700);
    print->setDefault(true);
    print->setFocus();
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    QScrollBar& bar = *area_->verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_PageDown:
        bar.setValue(bar.value() + area_->viewport()->height() * 9 / 10);
        return;
    case Qt::Key_PageUp:
        bar.setValue(bar.value() - area_->viewport()->height() * 9 / 10);
        return;
    case Qt::Key_Home:
        bar.setValue(bar.minimum());
        return;
    case Qt::Key_End:
        bar.setValue(bar.maximum());
        return;
    case Qt::Key_Plus:
        setScale(sheets_->scale() * 1.25);
        return;
    case Qt::Key_Minus:
        setScale(sheets_->scale() / 1.25);
        return;
    default:
        QDialog::keyPressEvent(event);
    }
}

void PreviewWindow::setScale(double scale)
{
    sheets_->setScale(scale);
}
