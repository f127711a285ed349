#include "Value.h"

#include "Dates.h"
#include "Decimal.h"
#include "Numbers.h"
#include "RuntimeError.h"

namespace {

const QDate DayZero(1899, 12, 30);

QString plain(std::monostate)
{
    throw RuntimeError(RuntimeError::InvalidNull);
}
QString plain(const QString& text)
{
    return text;
}
QString plain(double number)
{
    return toText(number);
}
QString plain(bool yes)
{
    return yes ? QStringLiteral("Verdadeiro") : QStringLiteral("Falso");
}
QString plain(Value::Money money)
{
    return Decimal::fromScaled(money.tenThousandths, 4).plainText();
}
QString plain(QDate date)
{
    return dateText(date);
}

double numeric(std::monostate)
{
    throw RuntimeError(RuntimeError::InvalidNull);
}
double numeric(const QString& text)
{
    return toNumber(text);
}
double numeric(double number)
{
    return number;
}
double numeric(bool yes)
{
    return yes ? -1 : 0;
}
double numeric(Value::Money money)
{
    return static_cast<double>(money.tenThousandths) / 10000;
}
double numeric(QDate date)
{
    return static_cast<double>(DayZero.daysTo(date));
}

} // namespace

QString Value::text() const
{
    return std::visit([](const auto& held) { return plain(held); }, data_);
}

QString Value::textOrEmpty() const
{
    return isNull() ? QString() : text();
}

double Value::number() const
{
    return std::visit([](const auto& held) { return numeric(held); }, data_);
}

bool Value::isTrue() const
try {
    return !isNull() && number() != 0;
} catch (const RuntimeError&) {
    return false;
}
