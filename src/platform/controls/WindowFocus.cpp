#include "WindowFocus.h"

#include "Controls.h"
#include "Form.h"
#include "FormWindow.h"

#include <QApplication>
#include <QLineEdit>

namespace {

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
        window->focus().moved(now);
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

QWidget* nextTabStop(const QWidget& from)
{
    const QWidget* window = from.window();
    const auto takesTab = [window](const QWidget& widget) {
        return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && !widget.isHidden() &&
               widget.isVisibleTo(window);
    };
    QWidget* next = from.nextInFocusChain();
    while (next != &from && !takesTab(*next))
        next = next->nextInFocusChain();
    return next == &from ? nullptr : next;
}

WindowFocus::WindowFocus(FormWindow& window) : window_(window)
{
    watchFocus();
}

void WindowFocus::moved(QWidget* now)
{
    while (now && !window_.controlOf(now) && now != window_.widget())
        now = now->parentWidget();
    if (!now || now == last_)
        return;
    if (leaving_) {
        // A LostFocus handler takes the focus elsewhere: the control in between never had it.
        last_ = now;
        return;
    }
    const QPointer<QWidget> former = last_;
    last_ = now;
    leaving_ = true;
    if (Control* left = window_.controlOf(former))
        left->fire(left->lostFocus_);
    leaving_ = false;
    Control* entered = window_.alive() ? window_.controlOf(last_) : nullptr;
    if (!entered)
        return;
    // A text that the Tab key selected stays so where the handler puts another in its place.
    const QPointer<QLineEdit> line = qobject_cast<QLineEdit*>(last_);
    const bool isSelected = line && line->hasSelectedText();
    entered->fire(entered->gotFocus_);
    if (isSelected && window_.alive() && line && line == last_)
        line->selectAll();
}
