#pragma once

#include <QString>

// A text of a box and its caret, after the user typed, pasted or dropped something into it.
struct TypedText
{
    QString text;
    int caret = 0;
};

enum class Lines
{
    One,
    Several
};

// What may stand. Of what was put in, the line breaks of a box of one line go at either end and
// become a blank inside; what is beyond the limit (characters, 0 is none) goes, and never the end
// of what stood there before. A text that was longer already does not grow.
TypedText allowedText(const QString& former, const TypedText& typed, int limit, Lines lines);
