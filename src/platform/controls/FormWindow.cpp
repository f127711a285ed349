#include "FormWindow.h"

#include "Application.h"
#include "Controls.h"
#include "EventGate.h"
#include "Form.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

namespace {

// The code that KeyPress tells: 13, 27 and 8 for the named keys, else the character's; 0 for a key
// that gives no character, which fires no KeyPress.
int keyCode(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return event.modifiers() & Qt::ControlModifier ? 0 : 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete:
        return 0;
    default:
        break;
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

// Where several buttons share an access key, it goes round among those that are alive.
QAbstractButton* nextOfKey(const QWidget& window, const QKeySequence& key)
{
    const auto holds = [&](const QWidget* widget) {
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        return button && button->shortcut() == key && button->isEnabled() && button->isVisible();
    };
    const QWidget* now = window.focusWidget() ? window.focusWidget() : &window;
    for (QWidget* next = now->nextInFocusChain(); next != now; next = next->nextInFocusChain())
        if (holds(next))
            return qobject_cast<QAbstractButton*>(next);
    return nullptr;
}

FormWindow* windowOf(const QWidget* widget)
{
    return widget ? widget->window()->findChild<FormWindow*>(QString(), Qt::FindDirectChildrenOnly)
                  : nullptr;
}

// Tells the windows about focus that moves between their controls, and the forms about focus that
// moves between forms. Boxes, dialogs and other programs are no forms.
class FocusWatch : public QObject
{
public:
    FocusWatch() : QObject(qApp)
    {
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            FormWindow* window = windowOf(now);
            if (!window || !window->alive() || QApplication::activePopupWidget())
                return;
            const QWidget* modal = QApplication::activeModalWidget();
            if (modal && modal != window->widget())
                return; // a window behind a modal one takes no input
            if (active_ != window) {
                const QPointer<FormWindow> former = active_;
                active_ = window;
                if (former && former->alive())
                    former->form().focusLeft();
                if (window->alive())
                    window->form().focusArrived();
            }
            window->focusMoved(now);
        });
    }

private:
    QPointer<FormWindow> active_;
};

void watchFocus()
{
    static QPointer<FocusWatch> watch;
    if (!watch)
        watch = new FocusWatch;
}

} // namespace

FormWindow::FormWindow(Form& form, std::unique_ptr<QWidget> widget)
    : QObject(widget.get()), form_(form), widget_(std::move(widget))
{
    setParent(nullptr);
    // Found again from any widget of the window.
    auto* anchor = this;
    anchor->setParent(widget_.get());
    widget_->installEventFilter(this);
    watchFocus();
    HeldKeys::instance();
}

FormWindow::~FormWindow()
{
    setParent(nullptr);
    // A handler of one of the controls may still be on its way back through the toolkit.
    if (QWidget* widget = widget_.release()) {
        widget->removeEventFilter(this);
        widget->deleteLater();
    }
}

void FormWindow::die()
{
    alive_ = false;
    widget_->hide();
    if (loop_)
        loop_->quit();
}

QObject* FormWindow::object(int slot) const
{
    return slot < static_cast<int>(objects_.size()) ? objects_[static_cast<size_t>(slot)] : nullptr;
}

void FormWindow::setObject(int slot, QObject* object, Control* control)
{
    if (slot >= static_cast<int>(objects_.size()))
        objects_.resize(static_cast<size_t>(slot) + 1);
    objects_[static_cast<size_t>(slot)] = object;
    controls_.insert(object, control);
    object->installEventFilter(this);
    if (const auto* view = qobject_cast<QTableView*>(object)) {
        view->viewport()->installEventFilter(this);
        controls_.insert(view->viewport(), control);
    }
}

void FormWindow::waitUntilGone()
{
    if (!alive_)
        return;
    QEventLoop loop;
    loop_ = &loop;
    loop.exec();
}

void FormWindow::focusMoved(QWidget* now)
{
    while (now && !controls_.contains(now) && now != widget_.get())
        now = now->parentWidget();
    if (!now || now == lastFocus_)
        return;
    if (leaving_) {
        // A LostFocus handler takes the focus elsewhere: the control in between never had it.
        lastFocus_ = now;
        return;
    }
    const QPointer<QWidget> former = lastFocus_;
    lastFocus_ = now;
    leaving_ = true;
    if (Control* left = controlOf(former))
        left->fire(left->lostFocus_);
    leaving_ = false;
    if (alive_)
        if (Control* entered = controlOf(lastFocus_))
            entered->fire(entered->gotFocus_);
}

bool FormWindow::keyPressed(Control& control, QWidget& widget, QKeyEvent& event)
{
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (const int code = keyCode(event)) {
        const int use = control.fireKeyPress(code);
        if (use == 0 || !alive_)
            return true;
        if (use != code) {
            QKeyEvent replaced(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(use)));
            replacingKey_ = true;
            QCoreApplication::sendEvent(&widget, &replaced);
            replacingKey_ = false;
            return true;
        }
    }
    if (!isEnter)
        return false;
    if (qobject_cast<QAbstractButton*>(&widget)) {
        const QPointer<QPushButton> pressed = qobject_cast<QPushButton*>(&widget);
        // What the KeyPress sent comes first: a box that the click opens must not get it.
        deliverSentKeys();
        if (pressed && alive_)
            pressed->click();
        return true;
    }
    // In a box of several lines Enter moves on, as the form says; Ctrl+Enter breaks the line.
    if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget))
        if (event.modifiers() & Qt::ControlModifier && !edit->isReadOnly())
            edit->insertPlainText(QStringLiteral("\n"));
    return true;
}

// What dead keys and other composing keys put together passes through KeyPress, too.
bool FormWindow::composedTextArrived(QObject* watched, QInputMethodEvent& event)
{
    Control* control = controlOf(watched);
    if (!control || replacingKey_ || event.commitString().isEmpty())
        return false;
    QString let;
    for (const QChar each : event.commitString()) {
        const int use = control->fireKeyPress(each.unicode());
        if (!alive_)
            return true;
        if (use != 0)
            let += QChar(use);
    }
    QInputMethodEvent replaced(event.preeditString(), event.attributes());
    replaced.setCommitString(let, event.replacementStart(), event.replacementLength());
    replacingKey_ = true;
    QCoreApplication::sendEvent(watched, &replaced);
    replacingKey_ = false;
    deliverSentKeys();
    return true;
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (!alive_)
        return event->type() == QEvent::KeyPress || event->type() == QEvent::Close;
    switch (event->type()) {
    case QEvent::Close:
        if (watched != widget_.get())
            return false;
        event->ignore();
        gate::run(form_, OnError::Box, [this] { form_.unload(); });
        return true;
    case QEvent::ShortcutOverride: {
        // The key of an enabled menu entry wins over a text box's own use of it.
        const auto* key = static_cast<QKeyEvent*>(event);
        if (isAccessKey(*key) && HeldKeys::instance().isHeld(*key)) {
            event->accept(); // it pressed its button once already
            return true;
        }
        const QKeySequence pressed(key->keyCombination());
        for (const QAction* action : widget_->findChildren<QAction*>())
            if (action->isEnabled() && action->shortcut() == pressed && !pressed.isEmpty()) {
                event->ignore();
                return true;
            }
        return false;
    }
    case QEvent::Shortcut: {
        // An access key moves the focus before it presses, so that the box left can still object.
        auto* button = qobject_cast<QAbstractButton*>(watched);
        if (!button)
            return false;
        if (static_cast<QShortcutEvent*>(event)->isAmbiguous()) {
            if (QAbstractButton* next = nextOfKey(*widget_, button->shortcut()))
                next->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
        button->setFocus(Qt::ShortcutFocusReason);
        if (!alive_ || widget_->focusWidget() != button)
            return true;
        // Pressed at once: the next key of a quick typist belongs to what the button opens.
        if (!qobject_cast<QPushButton*>(button))
            return false;
        button->click();
        return true;
    }
    case QEvent::MouseButtonPress: {
        // The toolkit has moved the focus already; a box that took it back swallows the click.
        const auto* button = qobject_cast<QAbstractButton*>(watched);
        return button && (button->focusPolicy() & Qt::ClickFocus) &&
               widget_->focusWidget() != button;
    }
    case QEvent::KeyPress: {
        Control* control = controlOf(watched);
        auto* widget = qobject_cast<QWidget*>(watched);
        if (!control || !widget || replacingKey_)
            return false;
        const auto& key = *static_cast<QKeyEvent*>(event);
        // An access key that no button has now types nothing, and a button held down by Enter or
        // Space is pressed once.
        if (isAccessKey(key) ||
            (qobject_cast<QAbstractButton*>(widget) && HeldKeys::instance().isHeld(key) &&
             (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter ||
              key.key() == Qt::Key_Space)))
            return true;
        const bool used = keyPressed(*control, *widget, *static_cast<QKeyEvent*>(event));
        if (used)
            deliverSentKeys();
        return used;
    }
    case QEvent::InputMethod:
        return composedTextArrived(watched, *static_cast<QInputMethodEvent*>(event));
    case QEvent::MouseButtonRelease:
        // A click beside all rows is a click on the grid, too.
        if (const auto* viewport = qobject_cast<QWidget*>(watched))
            if (const auto* view = qobject_cast<QTableView*>(viewport->parent()))
                if (view->viewport() == viewport &&
                    !view->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint())
                         .isValid())
                    if (Control* control = controlOf(watched))
                        control->fire(control->click_);
        return false;
    default:
        return false;
    }
}
