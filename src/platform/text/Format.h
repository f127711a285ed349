#pragma once

#include "Value.h"

#include <QString>

// The classic number format (published language reference, page "Format function"), as far as this
// program's formats go: a second section for numbers below zero, "0" and "#" placeholders, ","
// between placeholders groups by three, all else is printed as it stands. The format is written in
// US form; values given as text are read, and
// results written, by the regional settings of Brazil. Text that is no number comes back unchanged;
// Null gives the empty text. Rounds half away from zero on the decimal text.
QString Format(const QString& value, const QString& format);
QString Format(double value, const QString& format);
QString Format(const Value& value, const QString& format);

namespace formats {
inline const QString Money = QStringLiteral("#,##0.00;($#,##0.00)");
inline const QString Total = QStringLiteral("#,##0.00");
inline const QString LineTotal = QStringLiteral("###0.00");
inline const QString Count = QStringLiteral("####");
inline const QString Code = QStringLiteral("0000000");
inline const QString Phone = QStringLiteral("(00)0000-0000");
inline const QString Cpf = QStringLiteral("000-000-000/00");
inline const QString Cgc = QStringLiteral("00-000-000-0000/00");
inline const QString CaptionCpf = QStringLiteral("###-###-###/##");
inline const QString CaptionCgc = QStringLiteral("##-###-###-####/##");
} // namespace formats
