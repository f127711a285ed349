#pragma once

#include <QPointer>
#include <QWidget>

class FormWindow;

// The control behind this one that Tab reaches next, or null where it reaches none.
QWidget* nextTabStop(const QWidget& from);

// Where the keyboard focus of one window is: fires LostFocus and GotFocus as it moves between the
// controls. Moves between forms reach the forms, those to boxes and other programs reach nobody.
class WindowFocus
{
public:
    explicit WindowFocus(FormWindow& window);

    // For each move of the keyboard focus inside the window.
    void moved(QWidget* now);

private:
    FormWindow& window_;
    QPointer<QWidget> last_;
    bool leaving_ = false;
};
