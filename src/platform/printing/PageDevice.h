#pragma once

#include "Printer.h"

#include <memory>

// Where finished pages go: a system printer, a PDF file, a preview before either, or a recorder.
class PageDevice
{
public:
    virtual ~PageDevice() = default;
    // Error 482 where the pages could not be put out whole.
    virtual void put(const std::vector<Page>& pages, const QString& documentName) = 0;
};

// Keeps the pages, for tests. A run reads as a line "100,2600 10 Nome: Ana", a bold one
// "8500,1900 24 bold O.S: 0000012". A run of no characters leaves no line.
class RecordingDevice : public PageDevice
{
public:
    void put(const std::vector<Page>& pages, const QString& documentName) override;
    const std::vector<std::vector<Page>>& documents() const { return documents_; }
    // The last document, one line a run, pages divided by a line "--- page".
    QStringList lines() const;

private:
    std::vector<std::vector<Page>> documents_;
};

// Writes a PDF of A4 pages with the texts as texts. The file is written to a temporary name and
// renamed. An empty path stands for "<document name> <date> <time>.pdf" in the user's documents
// folder. A second document of the same device gets a name of its own beside the first.
class PdfDevice : public PageDevice
{
public:
    explicit PdfDevice(QString path = {});
    void put(const std::vector<Page>& pages, const QString& documentName) override;

private:
    QString path_;
    bool hasWritten_ = false;
};

class SystemPrinterDevice : public PageDevice
{
public:
    explicit SystemPrinterDevice(QString printerName);
    void put(const std::vector<Page>& pages, const QString& documentName) override;
    const QString& printerName() const { return printerName_; }

private:
    QString printerName_;
};

// Shows the pages in a window; they go to the inner device when the user prints from there.
class PreviewDevice : public PageDevice
{
public:
    explicit PreviewDevice(std::shared_ptr<PageDevice> inner);
    void put(const std::vector<Page>& pages, const QString& documentName) override;
    const std::shared_ptr<PageDevice>& inner() const { return inner_; }

private:
    std::shared_ptr<PageDevice> inner_;
};
