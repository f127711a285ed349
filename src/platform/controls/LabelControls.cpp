#include "Controls.h"

#include "Dates.h"
#include "RuntimeError.h"
#include "WindowFocus.h"

#include <QLabel>
#include <QMouseEvent>
#include <QTimer>

namespace {

QLabel* panelOf(const QWidget* bar, const QString& name, int index)
{
    if (!bar)
        return nullptr;
    auto* panel = bar->findChild<QLabel*>(name + u'_' + QString::number(index));
    if (!panel)
        throw RuntimeError(RuntimeError::PanelOutOfBounds);
    return panel;
}

constexpr char ShutProperty[] = "shut";
constexpr char FocusProperty[] = "focusPolicyBeforeShut";

void shut(QWidget& frame, bool shut)
{
    if (frame.property(ShutProperty).toBool() == shut)
        return;
    frame.setProperty(ShutProperty, shut);
    frame.setAttribute(Qt::WA_TransparentForMouseEvents, shut);
    for (QWidget* each : frame.findChildren<QWidget*>()) {
        if (shut) {
            each->setProperty(FocusProperty, static_cast<int>(each->focusPolicy()));
            each->setFocusPolicy(Qt::NoFocus);
        } else {
            each->setFocusPolicy(
                static_cast<Qt::FocusPolicy>(each->property(FocusProperty).toInt()));
        }
    }
    QWidget* focused = frame.window()->focusWidget();
    if (shut && focused && frame.isAncestorOf(focused)) {
        QWidget* next = nextTabStop(*focused);
        if (next)
            next->setFocus(Qt::OtherFocusReason);
        else
            focused->clearFocus();
    }
    frame.update();
}

} // namespace

QString Label::caption() const
{
    const auto* label = qobject_cast<QLabel*>(widget());
    return label ? label->text() : QString();
}

void Label::setCaption(const QString& caption)
{
    if (auto* label = qobject_cast<QLabel*>(widget()))
        label->setText(caption);
}

bool Label::intercept(QWidget& widget, QEvent& event)
{
    if (event.type() == QEvent::MouseButtonRelease && click_.handler) {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        if (mouse.button() == Qt::LeftButton && widget.rect().contains(mouse.position().toPoint()))
            fire(click_);
    }
    return false;
}

bool Frame::shutsOff(const QWidget& widget)
{
    for (const QWidget* each = &widget; each; each = each->parentWidget())
        if (each->property(ShutProperty).toBool())
            return true;
    return false;
}

bool Frame::enabled() const
{
    const QWidget* own = widget();
    return Control::enabled() && !own->property(ShutProperty).toBool();
}

void Frame::setEnabled(bool enabled)
{
    if (QWidget* own = widget())
        shut(*own, !enabled);
}

void Frame::attach(FormWindow&, QWidget* widget)
{
    if (widget->isEnabledTo(widget->parentWidget()))
        return;
    widget->setEnabled(true);
    shut(*widget, true);
}

QString StatusBar::panel(int index) const
{
    const QLabel* label = panelOf(widget(), name(), index);
    return label ? label->text() : QString();
}

void StatusBar::setPanel(int index, const QString& text)
{
    if (QLabel* label = panelOf(widget(), name(), index))
        label->setText(text);
}

void StatusBar::attach(FormWindow&, QWidget* widget)
{
    for (QLabel* label : widget->findChildren<QLabel*>()) {
        const QString shows = label->property("shows").toString();
        if (shows.isEmpty())
            continue;
        const auto refresh = [label, shows] {
            label->setText(shows == QStringLiteral("date")
                               ? dateText(Clock::today())
                               : Clock::now().time().toString(QStringLiteral("HH:mm")));
        };
        refresh();
        auto* timer = new QTimer(label);
        QObject::connect(timer, &QTimer::timeout, label, refresh);
        timer->start(1000);
    }
}
