#include "Decimal.h"

#include <cmath>

namespace {

Decimal trimmed(Decimal decimal)
{
    qsizetype last = decimal.digits.size();
    while (last > 0 && decimal.digits[last - 1] == '0')
        --last;
    decimal.digits.truncate(last);
    qsizetype zeros = 0;
    while (zeros < last && decimal.digits[zeros] == '0')
        ++zeros;
    decimal.digits.remove(0, zeros);
    decimal.wholeDigits -= static_cast<int>(zeros);
    if (decimal.digits.isEmpty()) {
        decimal.isNegative = false;
        decimal.wholeDigits = 0;
    }
    return decimal;
}

} // namespace

Decimal Decimal::fromDouble(double number, int significantDigits)
{
    // "d.ddde+xx"
    const QByteArray text = QByteArray::number(std::fabs(number), 'e', significantDigits - 1);
    const qsizetype exponentMark = text.indexOf('e');
    Decimal decimal;
    decimal.isNegative = number < 0;
    decimal.digits = text.left(exponentMark);
    if (decimal.digits.size() > 1)
        decimal.digits.remove(1, 1);
    decimal.wholeDigits = text.mid(exponentMark + 1).toInt() + 1;
    return trimmed(std::move(decimal));
}

Decimal Decimal::fromScaled(qint64 number, int places)
{
    Decimal decimal;
    decimal.isNegative = number < 0;
    // Unsigned, since the lowest integer has no positive counterpart.
    const quint64 magnitude = number < 0 ? 0 - static_cast<quint64>(number) : number;
    decimal.digits = QByteArray::number(magnitude);
    decimal.wholeDigits = static_cast<int>(decimal.digits.size()) - places;
    return trimmed(std::move(decimal));
}

Decimal Decimal::rounded(int places) const
{
    const int kept = wholeDigits + places;
    if (kept >= digits.size())
        return *this;
    if (kept < 0)
        return {};
    Decimal result = *this;
    const bool up = digits[kept] >= '5';
    result.digits.truncate(kept);
    if (up) {
        qsizetype i = kept;
        while (i > 0 && result.digits[i - 1] == '9')
            result.digits[--i] = '0';
        if (i > 0) {
            ++result.digits[i - 1];
        } else {
            result.digits.prepend('1');
            ++result.wholeDigits;
        }
    }
    return trimmed(std::move(result));
}

QByteArray Decimal::whole() const
{
    if (wholeDigits <= 0)
        return {};
    return digits.left(wholeDigits).leftJustified(wholeDigits, '0');
}

QByteArray Decimal::fraction() const
{
    if (wholeDigits < 0)
        return QByteArray(-wholeDigits, '0') + digits;
    return digits.mid(wholeDigits);
}

QString Decimal::plainText() const
{
    QString text;
    if (isNegative)
        text += u'-';
    const QByteArray before = whole();
    text += before.isEmpty() ? QStringLiteral("0") : QString::fromLatin1(before);
    const QByteArray behind = fraction();
    if (!behind.isEmpty())
        text += u',' + QString::fromLatin1(behind);
    return text;
}
