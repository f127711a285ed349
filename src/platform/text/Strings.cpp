#include "Strings.h"

#include "RuntimeError.h"

QString Trim(const QString& text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first);
}

QString Left(const QString& text, int count)
{
    if (count < 0)
        throw RuntimeError(RuntimeError::InvalidCall);
    return text.left(count);
}

QString Right(const QString& text, int count)
{
    if (count < 0)
        throw RuntimeError(RuntimeError::InvalidCall);
    return text.right(count);
}

QString Mid(const QString& text, int start, int count)
{
    if (start < 1 || count < 0)
        throw RuntimeError(RuntimeError::InvalidCall);
    return text.mid(start - 1, count);
}

QString repeated(int count, QChar character)
{
    if (count < 0)
        throw RuntimeError(RuntimeError::InvalidCall);
    return QString(count, character);
}
