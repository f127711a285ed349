#include "Controls.h"

#include "FormWindow.h"
#include "LineGuard.h"
#include "LockedLook.h"
#include "TypedText.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace {

constexpr char MaxLengthProperty[] = "maxLength";
constexpr char LimitProperty[] = "limit";
constexpr char EnterBreaksLineProperty[] = "enterBreaksLine";
constexpr char DownLeadsToProperty[] = "downLeadsTo";
constexpr int StockLimit = 32767; // of a box whose design gives none

QString textOf(const QWidget* widget)
{
    if (const auto* line = qobject_cast<const QLineEdit*>(widget))
        return line->text();
    if (const auto* several = qobject_cast<const QPlainTextEdit*>(widget))
        return several->toPlainText();
    return {};
}

int limitOf(const QWidget& widget)
{
    return widget.property(LimitProperty).toInt();
}

// The limit is ours to keep: the stock box would cut a longer text where it is lowered, and what is
// pasted before its line breaks are out. For a box of several lines the design has it as a dynamic
// property, since the stock widget has none.
void takeLimit(QWidget& widget)
{
    int limit = widget.property(MaxLengthProperty).toInt();
    if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
        if (limit == StockLimit)
            limit = 0;
        line->setMaxLength(std::numeric_limits<int>::max());
    }
    widget.setProperty(LimitProperty, limit);
}

void keepAllowed(QPlainTextEdit& edit, const QString& former)
{
    const TypedText typed{edit.toPlainText(), edit.textCursor().position()};
    const TypedText allowed = allowedText(former, typed, limitOf(edit), Lines::Several);
    if (allowed.text == typed.text)
        return;
    const QSignalBlocker quiet(edit);
    // Taken back and done again with what fits: one step for the user who undoes it.
    edit.document()->undo();
    QTextCursor cursor = edit.textCursor();
    if (allowed.text != edit.toPlainText()) {
        cursor.select(QTextCursor::Document);
        cursor.insertText(allowed.text);
    }
    cursor.setPosition(allowed.caret);
    edit.setTextCursor(cursor);
}

} // namespace

QString TextBox::text() const
{
    return textOf(widget());
}

void TextBox::setText(const QString& text)
{
    QWidget* own = widget();
    if (!own)
        return;
    const int limit = maxLength();
    const QString cut = limit > 0 ? text.left(limit) : text;
    if (cut == textOf(own))
        return;
    if (auto* line = qobject_cast<QLineEdit*>(own)) {
        line->setText(cut);
        line->home(false);
    } else if (auto* several = qobject_cast<QPlainTextEdit*>(own)) {
        several->setPlainText(cut);
    }
}

void TextBox::selectAll()
{
    QWidget* own = widget();
    if (auto* line = qobject_cast<QLineEdit*>(own))
        line->selectAll();
    else if (auto* several = qobject_cast<QPlainTextEdit*>(own))
        several->selectAll();
}

bool TextBox::locked() const
{
    const QWidget* own = widget();
    if (const auto* line = qobject_cast<const QLineEdit*>(own))
        return line->isReadOnly();
    if (const auto* several = qobject_cast<const QPlainTextEdit*>(own))
        return several->isReadOnly();
    return false;
}

void TextBox::setLocked(bool locked)
{
    QWidget* own = widget();
    if (auto* line = qobject_cast<QLineEdit*>(own))
        line->setReadOnly(locked);
    else if (auto* several = qobject_cast<QPlainTextEdit*>(own))
        several->setReadOnly(locked);
    else
        return;
    showLocked(*own, locked);
}

int TextBox::maxLength() const
{
    const QWidget* own = widget();
    return own ? limitOf(*own) : 0;
}

void TextBox::setMaxLength(int characters)
{
    if (QWidget* own = widget())
        own->setProperty(LimitProperty, characters);
}

QString TextBox::passwordChar() const
{
    const auto* line = qobject_cast<const QLineEdit*>(widget());
    return line && line->echoMode() == QLineEdit::Password ? QStringLiteral("*") : QString();
}

void TextBox::setPasswordChar(const QString& character)
{
    if (auto* line = qobject_cast<QLineEdit*>(widget()))
        line->setEchoMode(character.isEmpty() ? QLineEdit::Normal : QLineEdit::Password);
}

void TextBox::attach(FormWindow& window, QWidget* widget)
{
    takeLimit(*widget);
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        showLocked(*line, line->isReadOnly());
        new LineGuard(
            *line, [line] { return limitOf(*line); }, firing(window, change_), &window);
    } else if (auto* several = qobject_cast<QPlainTextEdit*>(widget)) {
        several->setTabChangesFocus(true);
        showLocked(*several, several->isReadOnly());
        // The stock box tells of formatting, too.
        auto last = std::make_shared<QString>(several->toPlainText());
        QObject::connect(several, &QPlainTextEdit::textChanged, &window, [=, this, &window] {
            keepAllowed(*several, *last);
            const QString text = several->toPlainText();
            if (text == *last || !window.alive())
                return;
            *last = text;
            fire(change_);
        });
    }
}

bool TextBox::useKey(QWidget& widget, const QKeyEvent& key)
{
    if (key.key() == Qt::Key_Down && key.modifiers() == Qt::NoModifier) {
        const QString name = widget.property(DownLeadsToProperty).toString();
        auto* other = name.isEmpty() ? nullptr : widget.window()->findChild<QWidget*>(name);
        if (other && other->isVisible() && other->isEnabled())
            other->setFocus(Qt::TabFocusReason);
        return other;
    }
    if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter)
        return false;
    auto* several = qobject_cast<QPlainTextEdit*>(&widget);
    if (several && !several->isReadOnly() &&
        (key.modifiers() & Qt::ControlModifier ||
         widget.property(EnterBreaksLineProperty).toBool()))
        several->insertPlainText(QStringLiteral("\n"));
    return true;
}

QString MaskEdBox::mask() const
{
    const QWidget* own = widget();
    return own ? own->property("mask").toString() : QString();
}

QString MaskEdBox::text() const
{
    return textOf(widget());
}

void MaskEdBox::setText(const QString& text)
{
    auto* line = qobject_cast<QLineEdit*>(widget());
    if (!line)
        return;
    const QString places = mask();
    QString filled;
    qsizetype place = 0;
    for (const QChar character : text) {
        if (place < places.size() && places[place] != u'#' && places[place] == character) {
            filled += character;
            ++place;
            continue;
        }
        if (!character.isDigit())
            continue;
        qsizetype next = place;
        while (next < places.size() && places[next] != u'#')
            ++next;
        if (next == places.size())
            break;
        filled += QStringView(places).mid(place, next - place);
        filled += character;
        place = next + 1;
    }
    line->setText(places.isEmpty() ? text : filled);
}

void MaskEdBox::attach(FormWindow& window, QWidget* widget)
{
    constexpr int NoLimit = 0;
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        new LineGuard(
            *line, [] { return NoLimit; }, firing(window, change_), &window);
}
