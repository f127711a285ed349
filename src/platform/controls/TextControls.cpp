#include "Controls.h"

#include "FormWindow.h"
#include "Look.h"

#include <QLineEdit>
#include <QPalette>
#include <QPlainTextEdit>

#include <algorithm>

namespace {

constexpr char MaxLengthProperty[] = "maxLength";
constexpr char LimitProperty[] = "limit";
constexpr int Unlimited = 32767;

QString textOf(const QWidget* widget)
{
    if (const auto* line = qobject_cast<const QLineEdit*>(widget))
        return line->text();
    if (const auto* several = qobject_cast<const QPlainTextEdit*>(widget))
        return several->toPlainText();
    return {};
}

// The limit set at run time, else the one of the design (for a box of several lines a dynamic
// property, since the stock widget has none).
int limitOf(const QWidget* widget)
{
    const QVariant set = widget->property(LimitProperty);
    const int characters =
        set.isValid() ? set.toInt() : widget->property(MaxLengthProperty).toInt();
    return characters > 0 && characters < Unlimited ? characters : 0;
}

// The stock box would cut a longer text, and tell of it; here lowering the limit leaves it alone.
void narrowTo(QLineEdit& line, int characters)
{
    const int present = static_cast<int>(line.text().size());
    line.setMaxLength(characters > 0 ? std::max(characters, present) : Unlimited);
}

// What was typed or pasted beyond the limit goes, and never the end of what stood there before; the
// caret stays with the typing. A text that is longer already, since the limit was lowered under it,
// does not grow.
void dropSurplus(QPlainTextEdit& edit, qsizetype former)
{
    const int limit = limitOf(&edit);
    QString text = edit.toPlainText();
    const auto surplus = static_cast<int>(text.size() - std::max<qsizetype>(limit, former));
    if (limit == 0 || surplus <= 0)
        return;
    const int caret = std::max(0, edit.textCursor().position() - surplus);
    text.remove(caret, surplus);
    const QSignalBlocker quiet(edit);
    // Taken back and done again with what fits: one step for the user who undoes it.
    edit.document()->undo();
    QTextCursor cursor = edit.textCursor();
    if (text != edit.toPlainText()) {
        cursor.select(QTextCursor::Document);
        cursor.insertText(text);
    }
    cursor.setPosition(caret);
    edit.setTextCursor(cursor);
}

// A locked box can be read and copied from; its ground tells that it takes no typing.
void showLocked(QWidget& widget, bool locked)
{
    if (!locked) {
        widget.setPalette(QPalette());
        return;
    }
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Active, QPalette::Base, look::lockedGround());
    palette.setColor(QPalette::Inactive, QPalette::Base, look::lockedGround());
    widget.setPalette(palette);
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
        // In this order: the stock box would cut the old text to the limit, and tell of it.
        line->setText(cut);
        // A handler of the change may have set another limit, or another text.
        narrowTo(*line, limitOf(own));
        line->home(false);
    } else if (auto* several = qobject_cast<QPlainTextEdit*>(own)) {
        several->setPlainText(cut);
    }
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
    return own ? limitOf(own) : 0;
}

void TextBox::setMaxLength(int characters)
{
    QWidget* own = widget();
    if (!own)
        return;
    if (auto* line = qobject_cast<QLineEdit*>(own))
        narrowTo(*line, characters);
    own->setProperty(LimitProperty, characters);
}

void TextBox::attach(FormWindow& window, QWidget* widget)
{
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        showLocked(*line, line->isReadOnly());
        QObject::connect(line, &QLineEdit::textChanged, &window, firing(window, change_));
    } else if (auto* several = qobject_cast<QPlainTextEdit*>(widget)) {
        several->setTabChangesFocus(true);
        showLocked(*several, several->isReadOnly());
        // The stock box tells of formatting, too, and knows no limit.
        auto last = std::make_shared<QString>(several->toPlainText());
        QObject::connect(several, &QPlainTextEdit::textChanged, &window, [=, this, &window] {
            dropSurplus(*several, last->size());
            const QString text = several->toPlainText();
            if (text == *last || !window.alive())
                return;
            *last = text;
            fire(change_);
        });
    }
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

QString MaskEdBox::clipText() const
{
    QString digits;
    for (const QChar character : text())
        if (character.isDigit())
            digits += character;
    return digits;
}

void MaskEdBox::attach(FormWindow& window, QWidget* widget)
{
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        QObject::connect(line, &QLineEdit::textChanged, &window, firing(window, change_));
}
