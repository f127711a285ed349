#include "Controls.h"

#include "DropDownEntries.h"
#include "FormWindow.h"
#include "HostPaths.h"
#include "LineGuard.h"
#include "LockedLook.h"
#include "RuntimeError.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>

#include <algorithm>

namespace {

DropDownEntries* entriesOf(const QWidget* widget)
{
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    return combo ? static_cast<DropDownEntries*>(combo->model()) : nullptr;
}

// The stock box picks an entry of its own, and sets its text, when its list or its choice changes.
template <class Act> void keepingText(QComboBox& combo, Act act)
{
    QLineEdit& line = *combo.lineEdit();
    const QSignalBlocker quiet(combo);
    const QSignalBlocker alsoQuiet(line);
    const QString text = line.text();
    const int caret = line.cursorPosition();
    act();
    if (line.text() == text)
        return;
    line.setText(text);
    line.setCursorPosition(caret);
}

void leaveUnchosen(QComboBox& combo)
{
    if (combo.currentIndex() >= 0)
        keepingText(combo, [&combo] { combo.setCurrentIndex(-1); });
}

bool isLocked(const QComboBox& combo)
{
    return combo.lineEdit() && combo.lineEdit()->isReadOnly();
}

void lock(QComboBox& combo, bool locked)
{
    combo.lineEdit()->setReadOnly(locked);
    showLocked(combo, locked);
}

// A list opened over a text that is none of its entries begins at the first one that begins so.
class Opening : public QObject
{
public:
    explicit Opening(QComboBox& combo) : QObject(&combo), combo_(combo)
    {
        combo.view()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Show && combo_.currentIndex() < 0) {
            const int first = entriesOf(&combo_)->firstThatBegins(combo_.currentText());
            if (first >= 0)
                combo_.view()->setCurrentIndex(combo_.model()->index(first, 0));
        }
        return false;
    }

private:
    QComboBox& combo_;
};

// The wheel over a box without the focus belongs to what stands behind it.
bool refusesWheel(const QWidget& widget, QEvent& event, bool locked = false)
{
    if (event.type() != QEvent::Wheel || (widget.hasFocus() && !locked))
        return false;
    event.ignore();
    return true;
}

// So many entries that no width of theirs is measured.
void setLook(QComboBox& combo)
{
    constexpr int LeastCharacters = 6;
    combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo.setMinimumContentsLength(std::max(LeastCharacters, combo.minimumContentsLength()));
    if (auto* list = qobject_cast<QListView*>(combo.view()))
        list->setUniformItemSizes(true);
}

// With what the design lists.
void takeOverEntries(QComboBox& combo)
{
    auto* entries = new DropDownEntries(&combo);
    for (int index = 0; index < combo.count(); ++index)
        entries->insert(combo.itemText(index), index);
    const int chosen = combo.currentIndex();
    keepingText(combo, [&] {
        combo.setModel(entries);
        combo.setCurrentIndex(chosen);
    });
}

} // namespace

QString ComboBox::text() const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo ? combo->currentText() : QString();
}

void ComboBox::setText(const QString& text)
{
    auto* combo = qobject_cast<QComboBox*>(widget());
    if (!combo)
        return;
    leaveUnchosen(*combo);
    combo->setEditText(text);
    combo->lineEdit()->home(false);
}

bool ComboBox::locked() const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo && isLocked(*combo);
}

void ComboBox::setLocked(bool locked)
{
    if (auto* combo = qobject_cast<QComboBox*>(widget()))
        lock(*combo, locked);
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
    const bool isChosen = combo->currentIndex() >= 0;
    keepingText(*combo, [&] {
        entriesOf(combo)->insert(text, index);
        if (!isChosen)
            combo->setCurrentIndex(-1);
    });
}

void ComboBox::Clear()
{
    setEntries(nullptr);
}

void ComboBox::setEntries(Entries entries)
{
    auto* combo = qobject_cast<QComboBox*>(widget());
    if (!combo)
        return;
    // The stock box chooses the first of a new list.
    keepingText(*combo, [&] {
        entriesOf(combo)->show(std::move(entries));
        combo->setCurrentIndex(-1);
    });
    combo->setEditText(QString());
}

void ComboBox::attach(FormWindow& window, QWidget* widget)
{
    auto* combo = qobject_cast<QComboBox*>(widget);
    if (!combo)
        return;
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setDuplicatesEnabled(true);
    combo->setCompleter(nullptr);
    takeOverEntries(*combo);
    setLook(*combo);
    new Opening(*combo);
    QLineEdit* line = combo->lineEdit();
    lock(*combo, combo->property("locked").toBool());
    // The stock box picks the entry whose text was typed when the focus leaves it; here typing is
    // no click.
    QObject::disconnect(line, &QLineEdit::editingFinished, combo, nullptr);
    constexpr int NoLimit = 0;
    new LineGuard(
        *line, [] { return NoLimit; }, firing(window, change_), &window);
    QObject::connect(line, &QLineEdit::textEdited, combo, [combo] { leaveUnchosen(*combo); });
    QObject::connect(combo, &QComboBox::currentIndexChanged, &window, [this, &window](int index) {
        if (window.alive() && index >= 0)
            fire(click_);
    });
}

bool ComboBox::intercept(QWidget& widget, QEvent& event)
{
    const auto& combo = static_cast<QComboBox&>(widget);
    const bool opens =
        event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    return refusesWheel(widget, event, isLocked(combo)) || (opens && isLocked(combo));
}

bool ComboBox::useKey(QWidget& widget, const QKeyEvent& key)
{
    auto& combo = static_cast<QComboBox&>(widget);
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_F4: break;
    default: return Control::useKey(widget, key);
    }
    if (isLocked(combo))
        return true;
    if (key.key() != Qt::Key_Down || key.modifiers() != Qt::NoModifier || combo.currentIndex() >= 0)
        return false;
    const int first = entriesOf(&combo)->firstThatBegins(combo.currentText());
    if (first >= 0)
        combo.setCurrentIndex(first);
    return first >= 0;
}

QString DriveListBox::drive() const
{
    const auto* combo = qobject_cast<QComboBox*>(widget());
    return combo ? combo->currentText() : QString();
}

void DriveListBox::attach(FormWindow& window, QWidget* widget)
{
    auto* combo = qobject_cast<QComboBox*>(widget);
    if (!combo)
        return;
    combo->clear();
    combo->addItems(mappedDrives());
    const QString program = applicationFolder() + u'/';
    for (int index = 0; index < combo->count(); ++index) {
        try {
            if (program.startsWith(driveFolder(combo->itemText(index)) + u'/'))
                combo->setCurrentIndex(index);
        } catch (const RuntimeError&) {
            // Mapped to what is away: listed, and no place of the program.
        }
    }
    QObject::connect(combo, &QComboBox::activated, &window, firing(window, change_));
}

bool DriveListBox::intercept(QWidget& widget, QEvent& event)
{
    return refusesWheel(widget, event);
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

bool DTPicker::intercept(QWidget& widget, QEvent& event)
{
    return refusesWheel(widget, event);
}
