#pragma once

#include <QString>

// Conversions between text and number. The first two read by the regional settings of Brazil
// (decimal comma, point as grouping, R$), the way that the published language reference tells of
// IsNumeric and CDbl; Val reads by its own rules wherever the program runs.

bool isNumeric(const QString& text);

// Error 13 where the text is not wholly a number, 6 where it is out of range.
double toNumber(const QString& text);

// The longest numeric head of the text; only "." is a decimal point; 0 when nothing is read. Error
// 6 where it is out of range.
double Val(const QString& text);

// Regional comma, shortest form of at most 15 significant digits, no grouping.
QString toText(double number);
// The same with at most 7 significant digits, for values kept in single precision.
QString toText(float number);
inline QString toText(int number)
{
    return QString::number(number);
}
