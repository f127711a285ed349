#pragma once

class Control;
class FormWindow;
class QAbstractButton;
class QEvent;
class QInputMethodEvent;
class QKeyEvent;
class QObject;
class QShortcutEvent;
class QWidget;

// The keyboard of one window: the keys of its menus and buttons, and each character on its way
// through KeyPress into a control.
class WindowKeys
{
public:
    explicit WindowKeys(FormWindow& window);

    // For each event of the window and its controls; true: it goes no further.
    bool filter(QObject* watched, QEvent* event);

private:
    bool claimsKey(QKeyEvent& key) const;
    bool accessKeyPressed(QAbstractButton& button, const QShortcutEvent& event);
    bool keyArrived(QObject* watched, QKeyEvent& key);
    bool keyPressed(Control& control, QWidget& widget, QKeyEvent& event);
    bool composedTextArrived(QObject* watched, QInputMethodEvent& event);

    FormWindow& window_;
    bool replacing_ = false;
};
