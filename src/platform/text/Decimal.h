#pragma once

#include <QByteArray>
#include <QString>

// A decimal number as its digits, for all that shows numbers: no binary fraction stands between the
// number that a shop typed and the digits that it sees.
struct Decimal
{
    bool isNegative = false;
    // '0' to '9', neither a leading nor a trailing zero; empty for zero.
    QByteArray digits;
    // How many of the digits stand before the decimal place; negative for 0.00...
    int wholeDigits = 0;

    // Rounded to so many significant digits, half away from zero on the binary value's own digits.
    // Not for infinities.
    static Decimal fromDouble(double number, int significantDigits = 15);
    // The quotient of an integer by ten to the power of places; exact.
    static Decimal fromScaled(qint64 number, int places);

    bool isZero() const { return digits.isEmpty(); }
    // Half away from zero.
    Decimal rounded(int places) const;
    // Digits before the decimal place, none for a value below 1.
    QByteArray whole() const;
    // Digits behind it, without trailing zeros.
    QByteArray fraction() const;
    // "-1234,5": regional comma, no grouping, no exponent.
    QString plainText() const;
};
