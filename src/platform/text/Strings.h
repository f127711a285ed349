#pragma once

#include <QString>

// Removes blanks (code 32) at both ends; tabs and line breaks stay.
QString Trim(const QString& text);
// Error 5 on a negative count; a count beyond the text gives the whole text.
QString Left(const QString& text, int count);
QString Right(const QString& text, int count);
// One-based; a start beyond the end gives the empty text. Error 5 on a start below 1 or a negative
// count.
QString Mid(const QString& text, int start, int count);
// The character, count times over. Error 5 on a negative count.
QString repeated(int count, QChar character);
