#include "PrintDialog.h"

#include "DocumentFiles.h"
#include "MsgBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

// Not the toolkit's dialog: it cannot tell that after "Cancelar" the paper comes all the same, and
// where to, nor offer to show the pages first.

namespace {

// The forms print on after "Cancelar", and whoever presses it must know where to.
QString whatCancelDoes(const PageDevice* last)
{
    QString device = u"em um arquivo PDF na pasta "_s + QDir::toNativeSeparators(documentsFolder());
    bool seenFirst = false;
    if (const auto* const preview = dynamic_cast<const PreviewDevice*>(last)) {
        seenFirst = true;
        last = preview->inner().get();
    }
    if (const auto* const system = dynamic_cast<const SystemPrinterDevice*>(last))
        device = u"em "_s + system->printerName();
    return u"\"Cancelar\" fecha só esta janela: o documento sai assim mesmo, "_s + device +
           (seenFirst ? u", depois de mostrado."_s : u"."_s);
}

} // namespace

PrintDialog::PrintDialog(const QString& documentName, const PageDevice* last, QWidget* parent)
    : QDialog(parent), devices_(new QComboBox(this)), file_(new QLineEdit(this)),
      browse_(new QPushButton(u"&Localizar..."_s, this)),
      preview_(new QCheckBox(u"&Ver a página antes de imprimir"_s, this))
{
    build(documentName);
    begin(last);
    enableFile();
}

std::shared_ptr<PageDevice> PrintDialog::chosenDevice() const
{
    std::shared_ptr<PageDevice> device;
    if (toFile())
        device = std::make_shared<PdfDevice>(typedPath());
    else
        device = std::make_shared<SystemPrinterDevice>(devices_->currentText());
    return preview_->isChecked() ? std::make_shared<PreviewDevice>(device) : device;
}

void PrintDialog::accept()
{
    if (toFile() && !fileMayBeWritten())
        file_->setFocus();
    else
        QDialog::accept();
}

void PrintDialog::build(const QString& documentName)
{
    setWindowTitle(u"Imprimir"_s);
    // A printer keeps its name as data, so that one called like the file stays a printer.
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    for (const QString& printer : printers)
        devices_->addItem(printer, printer);
    devices_->addItem(u"Arquivo PDF"_s);
    devices_->setAccessibleName(u"Dispositivo"_s);
    file_->setText(
        QDir::toNativeSeparators(unusedPdfPath(documentsFolder(), safeFileName(documentName))));
    file_->setAccessibleName(u"Arquivo"_s);
    file_->setMinimumWidth(420);
    browse_->setAccessibleName(u"Localizar o arquivo"_s);
    browse_->setAutoDefault(false);

    auto* const deviceLabel = new QLabel(u"&Dispositivo:"_s, this);
    deviceLabel->setBuddy(devices_);
    auto* const fileLabel = new QLabel(u"&Arquivo:"_s, this);
    fileLabel->setBuddy(file_);
    note_ = new QLabel(this);
    note_->setWordWrap(true);
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const print = buttons->addButton(u"&Imprimir"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"Cancelar"_s, QDialogButtonBox::RejectRole);

    auto* const layout = new QGridLayout(this);
    layout->addWidget(deviceLabel, 0, 0);
    layout->addWidget(devices_, 0, 1, 1, 2);
    layout->addWidget(fileLabel, 1, 0);
    layout->addWidget(file_, 1, 1);
    layout->addWidget(browse_, 1, 2);
    layout->addWidget(preview_, 2, 1, 1, 2);
    layout->addWidget(note_, 3, 0, 1, 3);
    layout->addWidget(buttons, 4, 0, 1, 3);

    connect(devices_, &QComboBox::currentIndexChanged, this, &PrintDialog::enableFile);
    connect(browse_, &QPushButton::clicked, this, &PrintDialog::browse);
    connect(buttons, &QDialogButtonBox::accepted, this, &PrintDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PrintDialog::reject);
    print->setDefault(true);
    print->setFocus();
}

void PrintDialog::begin(const PageDevice* last)
{
    note_->setText(whatCancelDoes(last));
    if (const auto* const preview = dynamic_cast<const PreviewDevice*>(last)) {
        preview_->setChecked(true);
        last = preview->inner().get();
    }
    const int file = devices_->count() - 1;
    QString printer = QPrinterInfo::defaultPrinterName();
    if (const auto* const system = dynamic_cast<const SystemPrinterDevice*>(last))
        printer = system->printerName();
    const int index = devices_->findData(printer);
    const bool fileAgain = dynamic_cast<const PdfDevice*>(last) != nullptr;
    devices_->setCurrentIndex(index < 0 || fileAgain ? file : index);
}

void PrintDialog::enableFile()
{
    file_->setEnabled(toFile());
    browse_->setEnabled(toFile());
}

void PrintDialog::browse()
{
    const QString path = QFileDialog::getSaveFileName(this, u"Imprimir em arquivo"_s, typedPath(),
                                                      u"Arquivos PDF (*.pdf)"_s);
    if (path.isEmpty())
        return;
    file_->setText(QDir::toNativeSeparators(path));
    // Where the suffix was left out, the file that the user was asked about is another one.
    agreedPath_ = path;
}

bool PrintDialog::toFile() const
{
    return !devices_->currentData().isValid();
}

QString PrintDialog::typedPath() const
{
    QString path = QDir::fromNativeSeparators(file_->text().trimmed());
    if (path.isEmpty())
        return path;
    if (!path.endsWith(u".pdf"_s, Qt::CaseInsensitive))
        path += u".pdf"_s;
    return QDir(documentsFolder()).absoluteFilePath(path);
}

bool PrintDialog::fileMayBeWritten()
{
    const QString path = typedPath();
    const QFileInfo info(path);
    if (path.isEmpty()) {
        MsgBox(u"Digite o nome do arquivo."_s, BoxButtons::Ok, BoxIcon::Exclamation, windowTitle());
        return false;
    }
    if (!info.dir().exists() || info.isDir()) {
        MsgBox(u"A pasta do arquivo não existe."_s, BoxButtons::Ok, BoxIcon::Exclamation,
               windowTitle());
        return false;
    }
    return !info.exists() || path == agreedPath_ ||
           MsgBox(u"O arquivo já existe. Quer substituir?"_s, BoxButtons::YesNo, BoxIcon::Question,
                  windowTitle()) == Answer::Yes;
}
