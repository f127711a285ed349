#pragma once

#include "PageDevice.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// Asks where a document goes: to a printer of the system or into a PDF file, and whether it is to
// be seen first.
class PrintDialog : public QDialog
{
public:
    // Begins with the printer of the device last chosen, else with the default printer, else with
    // the PDF file.
    PrintDialog(const QString& documentName, const PageDevice* last, QWidget* parent);

    std::shared_ptr<PageDevice> chosenDevice() const;

    void accept() override;

private:
    void build(const QString& documentName);
    void begin(const PageDevice* last);
    void enableFile();
    void browse();
    bool toFile() const;
    QString typedPath() const;
    bool fileMayBeWritten();

    QComboBox* devices_;
    QLineEdit* file_;
    QPushButton* browse_;
    QCheckBox* preview_;
    QLabel* note_;
    // The file that the user has already agreed to replace.
    QString agreedPath_;
};
