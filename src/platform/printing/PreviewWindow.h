#pragma once

#include "Printer.h"

#include <QDialog>

class QScrollArea;

// The pages on the screen before they go to paper. Accepted: print them. Page keys and the wheel
// turn the pages, "+" and "-" change the scale.
class PreviewWindow : public QDialog
{
public:
    PreviewWindow(const std::vector<Page>& pages, const QString& documentName, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setScale(double scale);

    class Sheets;
    QScrollArea* area_;
    Sheets* sheets_;
};
