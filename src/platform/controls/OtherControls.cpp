#include "Controls.h"

#include "Dates.h"
#include "FormWindow.h"
#include "RuntimeError.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

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

void Label::attach(FormWindow&, QWidget*) {}

QString CommandButton::caption() const
{
    const auto* button = qobject_cast<QAbstractButton*>(widget());
    return button ? button->text() : QString();
}

void CommandButton::setCaption(const QString& caption)
{
    if (auto* button = qobject_cast<QAbstractButton*>(widget()))
        button->setText(caption);
}

void CommandButton::attach(FormWindow& window, QWidget* widget)
{
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (button)
        QObject::connect(button, &QAbstractButton::clicked, &window, [this, &window] {
            if (window.alive())
                fire(click_);
        });
}

int CheckBox::value() const
{
    const auto* box = qobject_cast<QCheckBox*>(widget());
    if (!box)
        return 0;
    switch (box->checkState()) {
    case Qt::Unchecked:
        return 0;
    case Qt::Checked:
        return 1;
    default:
        return 2;
    }
}

void CheckBox::setValue(int value)
{
    if (value < 0 || value > 2)
        throw RuntimeError(RuntimeError::InvalidPropertyValue);
    if (auto* box = qobject_cast<QCheckBox*>(widget()))
        box->setCheckState(value == 0   ? Qt::Unchecked
                           : value == 1 ? Qt::Checked
                                        : Qt::PartiallyChecked);
}

void CheckBox::attach(FormWindow& window, QWidget* widget)
{
    auto* box = qobject_cast<QCheckBox*>(widget);
    if (box)
        QObject::connect(box, &QCheckBox::stateChanged, &window, [this, &window] {
            if (window.alive())
                fire(click_);
        });
}

QString ComboBox::text() const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo ? combo->currentText() : QString();
}

void ComboBox::setText(const QString& text)
{
    if (auto* combo = qobject_cast<QComboBox*>(widget()))
        combo->setEditText(text);
}

int ComboBox::listCount() const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo ? combo->count() : 0;
}

QString ComboBox::list(int index) const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo ? combo->itemText(index) : QString();
}

int ComboBox::listIndex() const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo ? combo->currentIndex() : -1;
}

void ComboBox::setListIndex(int index)
{
    auto* combo = qobject_cast<QComboBox*>(widget());
    if (!combo)
        return;
    if (index < -1 || index >= combo->count())
        throw RuntimeError(RuntimeError::InvalidPropertyValue);
    combo->setCurrentIndex(index);
}

void ComboBox::AddItem(const QString& text, int index)
{
    auto* combo = qobject_cast<QComboBox*>(widget());
    if (!combo)
        return;
    if (index < 0 || index > combo->count())
        throw RuntimeError(RuntimeError::InvalidCall);
    // The stock box picks its first entry by itself; here nothing is picked until someone does.
    const QSignalBlocker quiet(combo);
    const QString typed = combo->currentText();
    const int chosen = combo->currentIndex();
    combo->insertItem(index, text);
    if (chosen < 0) {
        combo->setCurrentIndex(-1);
        combo->setEditText(typed);
    }
}

void ComboBox::Clear()
{
    if (auto* combo = qobject_cast<QComboBox*>(widget()))
        combo->clear();
}

void ComboBox::attach(FormWindow& window, QWidget* widget)
{
    auto* combo = qobject_cast<QComboBox*>(widget);
    if (!combo)
        return;
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    // The stock box picks the entry whose text was typed when the focus leaves it; here typing is
    // no click.
    if (combo->lineEdit())
        QObject::disconnect(combo->lineEdit(), &QLineEdit::editingFinished, combo, nullptr);
    QObject::connect(combo, &QComboBox::currentIndexChanged, &window, [this, &window](int index) {
        if (window.alive() && index >= 0)
            fire(click_);
    });
    QObject::connect(combo, &QComboBox::editTextChanged, &window, [this, &window] {
        if (window.alive())
            fire(change_);
    });
}

QDate DTPicker::value() const
{
    const auto* edit = qobject_cast<QDateEdit*>(widget());
    return edit ? edit->date() : QDate();
}

void DTPicker::setValue(QDate date)
{
    if (auto* edit = qobject_cast<QDateEdit*>(widget()))
        edit->setDate(date);
}

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

namespace {

QAction* actionOf(QObject* object)
{
    if (auto* menu = qobject_cast<QMenu*>(object))
        return menu->menuAction();
    return qobject_cast<QAction*>(object);
}

} // namespace

QString Menu::caption() const
{
    const QAction* action = actionOf(object());
    return action ? action->text() : QString();
}

bool Menu::menuEnabled() const
{
    const QAction* action = actionOf(object());
    return action && action->isEnabled();
}

void Menu::setMenuEnabled(bool enabled)
{
    if (QAction* action = actionOf(object()))
        action->setEnabled(enabled);
}

void Menu::attach(FormWindow& window, QWidget*)
{
    QAction* action = actionOf(window.object(slot()));
    if (action && !action->menu())
        QObject::connect(action, &QAction::triggered, &window, [this, &window] {
            if (window.alive())
                fire(click_);
        });
}
