#pragma once

#include <QString>

#include <functional>

// The print dialog of a form: a system printer or a PDF file, with a preview if wanted. Cancelled,
// it raises nothing and leaves the device last chosen, else a PDF in the user's documents folder.
// The forms print on either way.
class CommonDialog
{
public:
    // The document's name serves as the proposed file name.
    void ShowPrinter(const QString& documentName);

    // The title of the dialog that looks for a file, which no form opens.
    QString DialogTitle;

    // Tests answer the dialog instead of showing it.
    static void setShowPrinterForTests(std::function<void(const QString& documentName)> answer);
};
