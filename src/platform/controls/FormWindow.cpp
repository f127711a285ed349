#include "FormWindow.h"
#include "Application.h"

#include "Controls.h"
#include "EventGate.h"
#include "Form.h"
#include "WindowPlace.h"

#include <QAbstractButton>
#include <QEvent>
#include <QEventLoop>
#include <QTableView>

// A child of the widget, found again from any widget of the window; but never owned by it.
FormWindow::FormWindow(Form& form, std::unique_ptr<QWidget> widget)
    : QObject(widget.get()), form_(form), widget_(std::move(widget))
{
    widget_->installEventFilter(this);
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
    if (alive_)
        windowPlace::remember(form_.name(), *widget_);
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

void FormWindow::frameClosed(QEvent& event)
{
    event.ignore();
    if (onlyPaints())
        return;
    gate::run(form_, OnError::Box, [this] { form_.unload(); });
}

// The toolkit has moved the focus already; a box that took it back swallows the click.
bool FormWindow::swallowsClick(const QAbstractButton& button) const
{
    return (button.focusPolicy() & Qt::ClickFocus) && widget_->focusWidget() != &button;
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (!alive_)
        return event->type() == QEvent::KeyPress || event->type() == QEvent::Close;
    // A handler may unload the form.
    const std::shared_ptr<FormWindow> held = weak_from_this().lock();
    auto* widget = qobject_cast<QWidget*>(watched);
    switch (event->type()) {
    case QEvent::Close:
        if (watched != widget_.get())
            return false;
        frameClosed(*event);
        return true;
    case QEvent::MouseButtonPress:
        if (const auto* button = qobject_cast<QAbstractButton*>(watched))
            return swallowsClick(*button);
        [[fallthrough]];
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
        if (Control* control = controlOf(watched))
            return control->intercept(*widget, *event);
        return false;
    default: return keys_.filter(watched, event);
    }
}
