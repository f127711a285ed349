#include "FieldValues.h"

#include "Dates.h"
#include "Numbers.h"
#include "RuntimeError.h"

#include <cmath>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char StrayMark = '\'';

OwnedCell textCell(const QString& text)
{
    OwnedCell owned;
    owned.cell.type = Cell::Type::Text;
    owned.text = text.toStdString();
    return owned;
}

// A text in a field of another kind.
OwnedCell strayCell(const QString& text)
{
    const QChar first = text.isEmpty() ? QChar() : text.front();
    const bool ambiguous = first.isDigit() || first.isSpace() || first == u'+' || first == u'-' ||
                           first == u'.' || first == u'\'';
    return textCell(ambiguous ? QLatin1Char(StrayMark) + text : text);
}

QString strayText(std::string_view text)
{
    if (!text.empty() && text.front() == StrayMark)
        text.remove_prefix(1);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<double> asNumber(const Value& value)
{
    if (const auto* text = std::get_if<QString>(&value.data()); text && !isNumeric(*text))
        return std::nullopt;
    if (std::holds_alternative<QDate>(value.data()))
        return std::nullopt;
    try {
        return value.number();
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

OwnedCell moneyCell(const Value& value)
{
    if (const auto* money = std::get_if<Value::Money>(&value.data()))
        return {Cell::ofInteger(money->tenThousandths), {}};
    const std::optional<double> number = asNumber(value);
    // Beyond this the ten-thousandths of a double are no longer exact.
    constexpr double Largest = 900'000'000'000.0;
    if (!number || std::abs(*number) > Largest)
        return strayCell(value.text());
    return {Cell::ofInteger(static_cast<qint64>(std::nearbyint(*number * 10000))), {}};
}

OwnedCell numberCell(const Value& value)
{
    const std::optional<double> number = asNumber(value);
    return number ? OwnedCell{Cell::ofReal(*number), {}} : strayCell(value.text());
}

OwnedCell yesNoCell(const Value& value)
{
    if (const auto* text = std::get_if<QString>(&value.data())) {
        for (const bool yes : {true, false})
            if (text->compare(Value(yes).text(), Qt::CaseInsensitive) == 0)
                return {Cell::ofInteger(yes ? 1 : 0), {}};
    }
    const std::optional<double> number = asNumber(value);
    return number ? OwnedCell{Cell::ofInteger(*number != 0 ? 1 : 0), {}} : strayCell(value.text());
}

OwnedCell dateCell(const Value& value)
{
    std::optional<QDate> date;
    if (const auto* held = std::get_if<QDate>(&value.data()))
        date = *held;
    else if (const auto* text = std::get_if<QString>(&value.data()))
        date = dateFromText(*text);
    if (!date || !date->isValid())
        return strayCell(value.text());
    return textCell(date->toString(Qt::ISODate));
}

std::optional<QDate> storedDate(std::string_view text)
{
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const QDate date = QDate::fromString(
        QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())), Qt::ISODate);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

Value integerValue(qint64 integer, FieldKind kind)
{
    switch (kind) {
    case FieldKind::Money: return Value::Money{integer};
    case FieldKind::YesNo: return integer != 0;
    case FieldKind::Number: return static_cast<double>(integer);
    case FieldKind::Text:
    case FieldKind::Date: break;
    }
    return QString::number(integer);
}

} // namespace

OwnedCell toCell(const Value& value, FieldKind kind)
{
    if (value.isNull())
        return {};
    switch (kind) {
    case FieldKind::Money: return moneyCell(value);
    case FieldKind::Number: return numberCell(value);
    case FieldKind::YesNo: return yesNoCell(value);
    case FieldKind::Date: return dateCell(value);
    case FieldKind::Text: break;
    }
    return textCell(value.text());
}

Value toValue(const Cell& cell, FieldKind kind)
{
    switch (cell.type) {
    case Cell::Type::Null: return {};
    case Cell::Type::Integer: return integerValue(cell.integer, kind);
    case Cell::Type::Real:
        return kind == FieldKind::Text ? Value(toText(cell.real)) : Value(cell.real);
    case Cell::Type::Text: break;
    }
    if (kind == FieldKind::Text)
        return QString::fromUtf8(cell.text.data(), static_cast<qsizetype>(cell.text.size()));
    if (kind == FieldKind::Date)
        if (const std::optional<QDate> date = storedDate(cell.text))
            return *date;
    return strayText(cell.text);
}

QString toDisplayText(const Cell& cell, FieldKind kind)
{
    if (kind == FieldKind::Text && cell.type == Cell::Type::Text)
        return QString::fromUtf8(cell.text.data(), static_cast<qsizetype>(cell.text.size()));
    return toValue(cell, kind).textOrEmpty();
}
