#include "LineGuard.h"

#include "TypedText.h"

#include <QLineEdit>

#include <algorithm>

LineGuard::LineGuard(QLineEdit& line, std::function<int()> limit, std::function<void()> changed,
                     QObject* parent)
    : QObject(parent), line_(line), limit_(std::move(limit)), changed_(std::move(changed)),
      last_(line.text())
{
    connect(&line, &QLineEdit::textEdited, this, &LineGuard::edited);
    connect(&line, &QLineEdit::textChanged, this, &LineGuard::textChanged);
}

// The stock line tells of the edit, then of the change. A correction is an edit of its own in
// between, so that the user can undo his typing.
void LineGuard::edited()
{
    if (correcting_)
        return;
    const TypedText typed{line_.text(), line_.cursorPosition()};
    const TypedText allowed = allowedText(last_, typed, limit_(), Lines::One);
    wasCorrected_ = allowed.text != typed.text;
    if (!wasCorrected_)
        return;
    // What stands behind the caret is the same in both.
    const auto end = static_cast<int>(typed.text.size() - (allowed.text.size() - allowed.caret));
    const QString before = typed.text.left(end);
    const QString instead = allowed.text.left(allowed.caret);
    const auto same = static_cast<int>(
        std::mismatch(before.begin(), before.end(), instead.begin(), instead.end()).first -
        before.begin());
    correcting_ = true;
    line_.setSelection(same, end - same);
    line_.insert(instead.mid(same));
    correcting_ = false;
}

void LineGuard::textChanged()
{
    const QString text = line_.text();
    if (wasCorrected_ && text == last_)
        return;
    last_ = text;
    changed_();
}
