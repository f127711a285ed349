#include "Controls.h"

#include "FormWindow.h"
#include "RuntimeError.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QSignalBlocker>

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
    QObject::connect(combo, &QComboBox::editTextChanged, &window, firing(window, change_));
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
