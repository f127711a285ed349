#include "WordScanner.h"

void WordScanner::skipBlanks()
{
    while (at_ < text_.size() && text_[at_].isSpace())
        ++at_;
}

QString WordScanner::takeName()
{
    skipBlanks();
    const qsizetype begin = at_;
    while (at_ < text_.size() && (text_[at_].isLetterOrNumber() || text_[at_] == u'_'))
        ++at_;
    if (at_ > begin && text_[begin].isDigit())
        at_ = begin;
    return text_.mid(begin, at_ - begin).toString();
}

bool WordScanner::takeWord(QLatin1StringView word)
{
    skipBlanks();
    const qsizetype begin = at_;
    if (takeName().compare(word, Qt::CaseInsensitive) == 0)
        return true;
    at_ = begin;
    return false;
}

bool WordScanner::takeSign(QChar sign)
{
    skipBlanks();
    if (at_ == text_.size() || text_[at_] != sign)
        return false;
    ++at_;
    return true;
}

bool WordScanner::takeQuoted(QString& text)
{
    if (!takeSign(u'\''))
        return false;
    text.clear();
    while (at_ < text_.size()) {
        const QChar c = text_[at_++];
        if (c != u'\'') {
            text += c;
        } else if (at_ < text_.size() && text_[at_] == u'\'') {
            text += c;
            ++at_;
        } else {
            return true;
        }
    }
    return false;
}

bool WordScanner::atEnd()
{
    skipBlanks();
    return at_ == text_.size();
}
