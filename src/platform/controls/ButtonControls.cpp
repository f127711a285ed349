#include "Controls.h"

#include "Application.h"
#include "FormWindow.h"
#include "RuntimeError.h"

#include <QAction>
#include <QCheckBox>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

namespace {

QAction* actionOf(QObject* object)
{
    if (auto* menu = qobject_cast<QMenu*>(object))
        return menu->menuAction();
    return qobject_cast<QAction*>(object);
}

} // namespace

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
        QObject::connect(button, &QAbstractButton::clicked, &window, firing(window, click_));
}

bool CommandButton::useKey(QWidget& widget, const QKeyEvent& key)
{
    if (!Control::useKey(widget, key))
        return false;
    const QPointer<QAbstractButton> pressed = qobject_cast<QAbstractButton*>(&widget);
    // What the KeyPress sent comes first: a box that the click opens must not get it.
    deliverSentKeys();
    if (pressed)
        pressed->click();
    return true;
}

int CheckBox::value() const
{
    const auto* box = qobject_cast<QCheckBox*>(widget());
    if (!box)
        return 0;
    switch (box->checkState()) {
    case Qt::Unchecked: return 0;
    case Qt::Checked: return 1;
    default: return 2;
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
        QObject::connect(box, &QCheckBox::stateChanged, &window, firing(window, click_));
}

QString Menu::caption() const
{
    const QAction* action = actionOf(object());
    return action ? action->text() : QString();
}

bool Menu::enabled() const
{
    const QAction* action = actionOf(object());
    return action && action->isEnabled();
}

void Menu::setEnabled(bool enabled)
{
    if (QAction* action = actionOf(object()))
        action->setEnabled(enabled);
}

void Menu::attach(FormWindow& window, QWidget*)
{
    QAction* action = actionOf(window.object(slot()));
    if (action && !action->menu())
        QObject::connect(action, &QAction::triggered, &window, firing(window, click_));
}
