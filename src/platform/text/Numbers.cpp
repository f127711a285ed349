#include "Numbers.h"

#include "Decimal.h"
#include "RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

// Not the toolkit's locale: it refuses what is read here ("R$ 1.234,5", "(5)"), and takes no head
// of a text for a number as Val does.

namespace {

constexpr QStringView CurrencySign = u"R$";
// Beyond any length that a text can have, and far from the end of the integers.
constexpr qint64 MaximumExponent = 1'000'000'000'000;
constexpr double Infinity = std::numeric_limits<double>::infinity();

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isWhite(QChar character)
{
    return character == u' ' || (character >= u'\t' && character <= u'\r');
}

// Walks over a text; at the end it sees character 0.
class Reader
{
public:
    explicit Reader(QStringView text) : text_(text) {}

    QChar peek(qsizetype ahead = 0) const
    {
        return position_ + ahead < text_.size() ? text_[position_ + ahead] : QChar();
    }
    bool atEnd() const { return position_ == text_.size(); }
    void skip(qsizetype count = 1) { position_ += count; }
    void skipWhite()
    {
        while (!atEnd() && isWhite(peek()))
            skip();
    }
    bool take(QChar character)
    {
        if (atEnd() || peek() != character)
            return false;
        skip();
        return true;
    }
    bool take(QStringView word)
    {
        if (!text_.mid(position_).startsWith(word))
            return false;
        skip(word.size());
        return true;
    }

private:
    QStringView text_;
    qsizetype position_ = 0;
};

// Takes "e+12" if it is whole, else nothing. Both letters of the published exponent forms count.
void readExponent(Reader& reader, std::string& number)
{
    const QChar letter = reader.peek().toLower();
    if (letter != u'e' && letter != u'd')
        return;
    const bool isSigned = reader.peek(1) == u'+' || reader.peek(1) == u'-';
    if (!isDigit(reader.peek(isSigned ? 2 : 1)))
        return;
    number += 'e';
    if (isSigned && reader.peek(1) == u'-')
        number += '-';
    reader.skip(isSigned ? 2 : 1);
    for (; isDigit(reader.peek()); reader.skip())
        number += reader.peek().toLatin1();
}

// A number in plain form ("12.5e3"); infinite where it is beyond the range.
double valueOf(const std::string& number)
{
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc::result_out_of_range)
        return value;
    // Too large and too small are told alike; the place of the first digit that counts decides.
    const std::size_t mark = std::min(number.find('e'), number.size());
    const auto point = static_cast<qint64>(std::min(number.find('.'), mark));
    const auto first = static_cast<qint64>(number.find_first_of("123456789"));
    const bool isShrunk = number.compare(mark, 2, "e-") == 0;
    qint64 exponent = 0;
    const char* const digits = number.data() + std::min(mark + (isShrunk ? 2 : 1), number.size());
    if (std::from_chars(digits, number.data() + number.size(), exponent).ec ==
        std::errc::result_out_of_range)
        return isShrunk ? 0 : Infinity;
    exponent = std::min(exponent, MaximumExponent);
    return point - first + (isShrunk ? -exponent : exponent) > 0 ? Infinity : 0;
}

// "&H1F" and "&O17". Nothing, and nothing taken, where there is no such number.
std::optional<double> readRadix(Reader& reader)
{
    const QChar letter = reader.peek(1).toLower();
    if (reader.peek() != u'&' || (letter != u'h' && letter != u'o'))
        return std::nullopt;
    const int radix = letter == u'h' ? 16 : 8;
    const auto digitAt = [&](qsizetype ahead) {
        const char character = reader.peek(ahead).toLower().toLatin1();
        const int digit = character >= 'a' && character <= 'f'   ? character - 'a' + 10
                          : character >= '0' && character <= '9' ? character - '0'
                                                                 : radix;
        return digit < radix ? digit : -1;
    };
    if (digitAt(2) < 0)
        return std::nullopt;
    reader.skip(2);
    double value = 0;
    for (; digitAt(0) >= 0; reader.skip())
        value = value * radix + digitAt(0);
    return value;
}

// Digits with one decimal comma, grouping points anywhere behind the first digit, exponent.
std::optional<double> readRegionalDigits(Reader& reader)
{
    std::string number;
    bool hasDigit = false;
    bool hasComma = false;
    for (;; reader.skip()) {
        const QChar character = reader.peek();
        if (isDigit(character)) {
            hasDigit = true;
            number += character.toLatin1();
        } else if (character == u',' && !hasComma) {
            hasComma = true;
            number += '.';
        } else if (character != u'.' || !hasDigit) {
            break;
        }
    }
    if (!hasDigit)
        return std::nullopt;
    readExponent(reader, number);
    return valueOf(number);
}

// The value of a text that is wholly a number, infinite where it is out of range.
std::optional<double> readRegional(QStringView text)
{
    Reader reader(text);
    reader.skipWhite();
    if (const auto radix = readRadix(reader)) {
        reader.skipWhite();
        return reader.atEnd() ? radix : std::nullopt;
    }

    bool hasSign = false;
    bool isNegative = false;
    bool hasCurrency = false;
    bool isOpen = false;
    const auto takeSign = [&] {
        if (hasSign || (reader.peek() != u'-' && reader.peek() != u'+'))
            return false;
        hasSign = true;
        isNegative = reader.peek() == u'-';
        reader.skip();
        return true;
    };
    const auto takeCurrency = [&] {
        if (hasCurrency || !reader.take(CurrencySign))
            return false;
        hasCurrency = true;
        return true;
    };
    const auto takeOpening = [&] {
        if (hasSign || !reader.take(u'('))
            return false;
        hasSign = isNegative = isOpen = true;
        return true;
    };
    const auto takeClosing = [&] {
        if (!isOpen || !reader.take(u')'))
            return false;
        isOpen = false;
        return true;
    };

    while (takeSign() || takeCurrency() || takeOpening())
        reader.skipWhite();
    const auto magnitude = readRegionalDigits(reader);
    if (!magnitude)
        return std::nullopt;
    reader.skipWhite();
    while (takeSign() || takeCurrency() || takeClosing())
        reader.skipWhite();
    if (!reader.atEnd() || isOpen)
        return std::nullopt;
    return isNegative ? -*magnitude : *magnitude;
}

QString shortest(double number, int significantDigits)
{
    if (!std::isfinite(number))
        return QString::number(number);
    const Decimal decimal = Decimal::fromDouble(number, significantDigits);
    const int exponent = decimal.wholeDigits - 1;
    if (decimal.isZero() || (exponent >= -4 && exponent < significantDigits))
        return decimal.plainText();
    Decimal mantissa = decimal;
    mantissa.wholeDigits = 1;
    return mantissa.plainText() + (exponent < 0 ? QStringLiteral("E-") : QStringLiteral("E+")) +
           QString::number(std::abs(exponent)).rightJustified(2, u'0');
}

} // namespace

bool isNumeric(const QString& text)
{
    return readRegional(text).has_value();
}

double toNumber(const QString& text)
{
    const auto number = readRegional(text);
    if (!number)
        throw RuntimeError(RuntimeError::TypeMismatch);
    if (std::isinf(*number))
        throw RuntimeError(RuntimeError::Overflow);
    return *number;
}

double Val(const QString& text)
{
    QString packed = text;
    packed.removeIf([](QChar c) { return c == u' ' || c == u'\t' || c == u'\n'; });
    Reader reader(packed);
    std::string number;
    double value = 0;
    if (const auto radix = readRadix(reader)) {
        value = *radix;
    } else {
        if (reader.take(u'-'))
            number += '-';
        else
            reader.take(u'+');
        bool hasDigit = false;
        bool hasPoint = false;
        for (;; reader.skip()) {
            const QChar character = reader.peek();
            if (isDigit(character))
                hasDigit = true;
            else if (character == u'.' && !hasPoint)
                hasPoint = true;
            else
                break;
            number += character.toLatin1();
        }
        if (!hasDigit)
            return 0;
        readExponent(reader, number);
        value = valueOf(number);
    }
    if (std::isinf(value))
        throw RuntimeError(RuntimeError::Overflow);
    return value;
}

QString toText(double number)
{
    // Most numbers of a shop are counts; below so much they show all their digits.
    constexpr double WholeLimit = 1e15;
    if (std::fabs(number) < WholeLimit && number == std::trunc(number))
        return QString::number(static_cast<qint64>(number));
    return shortest(number, 15);
}

QString toText(float number)
{
    return shortest(number, 7);
}
