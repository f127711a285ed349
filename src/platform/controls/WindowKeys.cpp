#include "WindowKeys.h"

#include "Application.h"
#include "Controls.h"
#include "FormWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

namespace {

// The code that KeyPress tells: 13, 27 and 8 for the named keys, else the character's; 0 for a key
// that gives no character, which fires no KeyPress.
int keyCode(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return event.modifiers() & Qt::ControlModifier ? 0 : 13;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete: return 0;
    default: break;
    }
    if ((event.modifiers() & Qt::AltModifier) || event.text().isEmpty())
        return 0;
    return event.text().front().unicode();
}

bool isAccessKey(const QKeyEvent& event)
{
    return event.modifiers() == Qt::AltModifier && !event.text().isEmpty();
}

// Knows a key that is held down. The toolkit tells it of most repetitions; where the release and
// the press of one reach it apart, both still bear the same time.
class HeldKeys : public QObject
{
public:
    static const HeldKeys& instance()
    {
        static QPointer<HeldKeys> keys;
        if (!keys)
            keys = new HeldKeys;
        return *keys;
    }

    bool isHeld(const QKeyEvent& press) const
    {
        constexpr quint64 Together = 2; // milliseconds
        return press.isAutoRepeat() || (press.key() == released_ && press.timestamp() > 0 &&
                                        press.timestamp() - when_ <= Together);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::KeyRelease) {
            const auto* key = static_cast<QKeyEvent*>(event);
            released_ = key->key();
            when_ = key->timestamp();
        }
        return false;
    }

private:
    HeldKeys() : QObject(qApp) { qApp->installEventFilter(this); }

    int released_ = 0;
    quint64 when_ = 0;
};

// A button held down by Enter or Space is pressed once.
bool pressesAgain(const QWidget& widget, const QKeyEvent& key)
{
    const bool presses =
        key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Space;
    return presses && qobject_cast<const QAbstractButton*>(&widget) &&
           HeldKeys::instance().isHeld(key);
}

// Where several buttons share an access key, it goes round among those that are alive.
QAbstractButton* nextOfKey(const QWidget& window, const QKeySequence& key)
{
    const auto holds = [&](const QWidget* widget) {
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        return button && button->shortcut() == key && button->isEnabled() && button->isVisible() &&
               !Frame::shutsOff(*button);
    };
    const QWidget* now = window.focusWidget() ? window.focusWidget() : &window;
    for (QWidget* next = now->nextInFocusChain(); next != now; next = next->nextInFocusChain())
        if (holds(next))
            return qobject_cast<QAbstractButton*>(next);
    return nullptr;
}

} // namespace

WindowKeys::WindowKeys(FormWindow& window) : window_(window)
{
    HeldKeys::instance();
}

bool WindowKeys::filter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: return claimsKey(*static_cast<QKeyEvent*>(event));
    case QEvent::Shortcut: {
        auto* button = qobject_cast<QAbstractButton*>(watched);
        return button && accessKeyPressed(*button, *static_cast<QShortcutEvent*>(event));
    }
    case QEvent::KeyPress: return keyArrived(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::InputMethod:
        return composedTextArrived(watched, *static_cast<QInputMethodEvent*>(event));
    default: return false;
    }
}

// The key of an enabled menu entry wins over a text box's own use of it.
bool WindowKeys::claimsKey(QKeyEvent& key) const
{
    if (isAccessKey(key) && HeldKeys::instance().isHeld(key)) {
        key.accept(); // it pressed its button once already
        return true;
    }
    const QKeySequence pressed(key.keyCombination());
    for (const QAction* action : window_.widget()->findChildren<QAction*>())
        if (action->isEnabled() && action->shortcut() == pressed && !pressed.isEmpty()) {
            key.ignore();
            return true;
        }
    return false;
}

// An access key moves the focus before it presses, so that the box left can still object.
bool WindowKeys::accessKeyPressed(QAbstractButton& button, const QShortcutEvent& event)
{
    if (Frame::shutsOff(button))
        return true;
    if (event.isAmbiguous()) {
        if (QAbstractButton* next = nextOfKey(*window_.widget(), button.shortcut()))
            next->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    button.setFocus(Qt::ShortcutFocusReason);
    if (!window_.alive() || window_.widget()->focusWidget() != &button)
        return true;
    // Pressed at once: the next key of a quick typist belongs to what the button opens.
    if (!qobject_cast<QPushButton*>(&button))
        return false;
    button.click();
    return true;
}

bool WindowKeys::keyArrived(QObject* watched, QKeyEvent& key)
{
    Control* control = window_.controlOf(watched);
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!control || !widget || replacing_ || qobject_cast<QMenu*>(widget)) // a menu uses its own
        return false;
    // An access key that no button has now types nothing.
    if (isAccessKey(key) || pressesAgain(*widget, key))
        return true;
    const bool used = keyPressed(*control, *widget, key);
    if (used)
        deliverSentKeys();
    return used;
}

bool WindowKeys::keyPressed(Control& control, QWidget& widget, QKeyEvent& event)
{
    if (const int code = keyCode(event)) {
        const int use = control.fireKeyPress(code);
        if (use == 0 || !window_.alive())
            return true;
        if (use != code) {
            QKeyEvent replaced(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(use)));
            replacing_ = true;
            QCoreApplication::sendEvent(&widget, &replaced);
            replacing_ = false;
            return true;
        }
    }
    return control.useKey(widget, event);
}

// What dead keys and other composing keys put together passes through KeyPress, too.
bool WindowKeys::composedTextArrived(QObject* watched, QInputMethodEvent& event)
{
    Control* control = window_.controlOf(watched);
    if (!control || replacing_ || event.commitString().isEmpty())
        return false;
    QString let;
    for (const QChar each : event.commitString()) {
        const int use = control->fireKeyPress(each.unicode());
        if (!window_.alive())
            return true;
        if (use != 0)
            let += QChar(use);
    }
    QInputMethodEvent replaced(event.preeditString(), event.attributes());
    replaced.setCommitString(let, event.replacementStart(), event.replacementLength());
    replacing_ = true;
    QCoreApplication::sendEvent(watched, &replaced);
    replacing_ = false;
    deliverSentKeys();
    return true;
}
