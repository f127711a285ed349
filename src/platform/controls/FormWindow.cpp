#include "FormWindow.h"

#include "Controls.h"
#include "EventGate.h"
#include "Form.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QMouseEvent>
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
    gate::run(form_, OnError::Box, [this] { form_.unload(); });
}

// The toolkit has moved the focus already; a box that took it back swallows the click.
bool FormWindow::swallowsClick(const QAbstractButton& button) const
{
    return (button.focusPolicy() & Qt::ClickFocus) && widget_->focusWidget() != &button;
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
    switch (event->type()) {
    case QEvent::Close:
        if (watched != widget_.get())
            return false;
        frameClosed(*event);
        return true;
    case QEvent::MouseButtonPress: {
        const auto* button = qobject_cast<QAbstractButton*>(watched);
        return button && swallowsClick(*button);
    }
    case QEvent::MouseButtonRelease:
        mouseReleased(*watched, *static_cast<QMouseEvent*>(event));
        return false;
    default:
        return keys_.filter(watched, event);
    }
}
