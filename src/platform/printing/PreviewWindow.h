#pragma once

#include "Printer.h"

#include <QDialog>
#include <QPrinter>

class QPrintPreviewWidget;

// The pages on the screen before they go to paper. Accepted: print them. Page keys scroll and turn
// the pages, "+" and "-" change the scale.
class PreviewWindow : public QDialog
{
public:
    PreviewWindow(const std::vector<Page>& pages, const QString& documentName, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Scrolls by most of what is in view; at the end of the sheet it turns to the next one.
    void turn(int direction);

    // Gives the sheets their size, and never prints.
    QPrinter paper_{QPrinter::HighResolution};
    QPrintPreviewWidget* preview_;
};
