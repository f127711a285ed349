#pragma once

#include <QPointer>
#include <QWidget>

class FormWindow;

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
