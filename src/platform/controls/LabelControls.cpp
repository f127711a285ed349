#include "Controls.h"

#include "Dates.h"
#include "RuntimeError.h"

#include <QLabel>
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
