#pragma once

#include <QString>

// Takes a statement apart from left to right: words, signs and texts in apostrophes, with blanks
// between them. What does not fit answers false or an empty text.
class WordScanner
{
public:
    explicit WordScanner(QStringView text) : text_(text) {}

    // A word without regard to case.
    bool takeWord(QLatin1StringView word);
    bool takeSign(QChar sign);
    // Letters, digits and "_", beginning with a letter or "_".
    QString takeName();
    // A text in apostrophes, two of which stand for one; false where it is not closed.
    bool takeQuoted(QString& text);
    bool atEnd();
    QStringView rest() const { return text_.mid(at_); }

private:
    void skipBlanks();

    QStringView text_;
    qsizetype at_ = 0;
};
