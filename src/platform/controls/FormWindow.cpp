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
#include <QLineEdit>
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
        connect(qApp, &QApplication::focusChanged, this,
                [this](QWidget*, QWidget* now) { focusWent(now); });
    }

private:
    void focusWent(QWidget* now)
    {
        FormWindow* window = windowOf(now);
        if (!window || !window->alive() || QApplication::activePopupWidget())
            return;
        const QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal != window->widget())
            return; // a window behind a modal one takes no input
        const std::shared_ptr<FormWindow> held = window->weak_from_this().lock();
        if (active_ != window)
            formChanged(*window);
        window->focusMoved(now);
    }

    void formChanged(FormWindow& window)
    {
        const QPointer<FormWindow> former = active_;
        active_ = &window;
        if (former && former->alive())
            former->form().focusLeft();
        if (window.alive())
            window.form().focusArrived();
    }

    QPointer<FormWindow> active_;
};

void watchFocus()
{
    static QPointer<FocusWatch> watch;
    if (!watch)
        watch = new FocusWatch;
}

} // namespace

// A child of the widget, found again from any widget of the window; but never owned by it.
FormWindow::FormWindow(Form& form, std::unique_ptr<QWidget> widget)
    : QObject(widget.get()), form_(form), widget_(std::move(widget))
{
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
    Control* entered = alive_ ? controlOf(lastFocus_) : nullptr;
    if (!entered)
        return;
    // A text that the Tab key selected stays so where the handler puts another in its place.
    const QPointer<QLineEdit> line = qobject_cast<QLineEdit*>(lastFocus_);
    const bool isSelected = line && line->hasSelectedText();
    entered->fire(entered->gotFocus_);
    if (isSelected && alive_ && line && line == lastFocus_)
        line->selectAll();
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

void FormWindow::frameClosed(QEvent& event)
{
    event.ignore();
    gate::run(form_, OnError::Box, [this] { form_.unload(); });
}

// The key of an enabled menu entry wins over a text box's own use of it.
bool FormWindow::claimsKey(QKeyEvent& key) const
{
    if (isAccessKey(key) && HeldKeys::instance().isHeld(key)) {
        key.accept(); // it pressed its button once already
        return true;
    }
    const QKeySequence pressed(key.keyCombination());
    for (const QAction* action : widget_->findChildren<QAction*>())
        if (action->isEnabled() && action->shortcut() == pressed && !pressed.isEmpty()) {
            key.ignore();
            return true;
        }
    return false;
}

// An access key moves the focus before it presses, so that the box left can still object.
bool FormWindow::accessKeyPressed(QAbstractButton& button, const QShortcutEvent& event)
{
    if (event.isAmbiguous()) {
        if (QAbstractButton* next = nextOfKey(*widget_, button.shortcut()))
            next->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    button.setFocus(Qt::ShortcutFocusReason);
    if (!alive_ || widget_->focusWidget() != &button)
        return true;
    // Pressed at once: the next key of a quick typist belongs to what the button opens.
    if (!qobject_cast<QPushButton*>(&button))
        return false;
    button.click();
    return true;
}

// The toolkit has moved the focus already; a box that took it back swallows the click.
bool FormWindow::swallowsClick(const QAbstractButton& button) const
{
    return (button.focusPolicy() & Qt::ClickFocus) && widget_->focusWidget() != &button;
}

bool FormWindow::keyArrived(QObject* watched, QKeyEvent& key)
{
    Control* control = controlOf(watched);
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!control || !widget || replacingKey_)
        return false;
    // An access key that no button has now types nothing.
    if (isAccessKey(key) || pressesAgain(*widget, key))
        return true;
    const bool used = keyPressed(*control, *widget, key);
    if (used)
        deliverSentKeys();
    return used;
}

void FormWindow::mouseReleased(const QObject& watched, const QMouseEvent& mouse)
{
    const auto* view = qobject_cast<QTableView*>(watched.parent());
    if (!view || view->viewport() != &watched ||
        view->indexAt(mouse.position().toPoint()).isValid())
        return;
    // A click beside all rows is a click on the grid, too.
    if (Control* control = controlOf(&watched))
        control->fire(control->click_);
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (!alive_)
        return event->type() == QEvent::KeyPress || event->type() == QEvent::Close;
    // A handler may unload the form.
    const std::shared_ptr<FormWindow> held = weak_from_this().lock();
    auto* button = qobject_cast<QAbstractButton*>(watched);
    switch (event->type()) {
    case QEvent::Close:
        if (watched != widget_.get())
            return false;
        frameClosed(*event);
        return true;
    case QEvent::ShortcutOverride:
        return claimsKey(*static_cast<QKeyEvent*>(event));
    case QEvent::Shortcut:
        return button && accessKeyPressed(*button, *static_cast<QShortcutEvent*>(event));
    case QEvent::MouseButtonPress:
        return button && swallowsClick(*button);
    case QEvent::KeyPress:
        return keyArrived(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::InputMethod:
        return composedTextArrived(watched, *static_cast<QInputMethodEvent*>(event));
    case QEvent::MouseButtonRelease:
        mouseReleased(*watched, *static_cast<QMouseEvent*>(event));
        return false;
    default:
        return false;
    }
}
