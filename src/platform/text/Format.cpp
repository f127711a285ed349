#include "Format.h"

#include "Decimal.h"
#include "Numbers.h"
#include "RuntimeError.h"

#include <QList>

#include <cmath>

// The toolkit's locale shows numbers, and knows neither sections nor placeholders.

namespace {

// One section of a format, read.
struct Section
{
    explicit Section(QStringView text) : characters(text)
    {
        bool isPastPoint = false;
        bool hasPendingComma = false;
        for (const QChar character : text) {
            if (character == u'.') {
                isPastPoint = true;
            } else if (character == u',') {
                hasPendingComma |= wholePlaces > 0 && !isPastPoint;
            } else if (isPlace(character)) {
                ++(isPastPoint ? fractionPlaces : wholePlaces);
                isGrouped |= hasPendingComma && !isPastPoint;
            }
        }
    }

    static bool isPlace(QChar character) { return character == u'0' || character == u'#'; }

    QStringView characters;
    int wholePlaces = 0;
    int fractionPlaces = 0;
    bool isGrouped = false;
};

// Fills the places of a section, one after the other.
class Filler
{
public:
    Filler(const Section& section, const Decimal& rounded, bool showsSign)
        : section_(section), whole_(rounded.whole()), fraction_(rounded.fraction()),
          showsSign_(showsSign && !rounded.isZero()), placesLeft_(section.wholePlaces)
    {
    }

    QString filled()
    {
        for (const QChar character : section_.characters) {
            if (character == u'.')
                decimalPlace();
            else if (Section::isPlace(character))
                pastPoint_ ? fractionPlace(character) : wholePlace(character);
            else if (character != u',')
                result_ += character;
        }
        return result_;
    }

private:
    void sign()
    {
        if (showsSign_)
            result_ += u'-';
        showsSign_ = false;
    }

    // A digit with so many places of the whole part to its right.
    void wholeDigit(char digit, qsizetype right)
    {
        result_ += QLatin1Char(digit);
        if (section_.isGrouped && right > 0 && right % 3 == 0)
            result_ += u'.';
    }

    // Digits that have no place of their own come out at the first one.
    void surplus()
    {
        for (; whole_.size() - nextWhole_ > placesLeft_; ++nextWhole_)
            wholeDigit(whole_[nextWhole_], whole_.size() - nextWhole_ - 1);
    }

    void wholePlace(QChar place)
    {
        sign();
        surplus();
        const bool hasDigit = whole_.size() - nextWhole_ == placesLeft_;
        --placesLeft_;
        if (hasDigit)
            wholeDigit(whole_[nextWhole_++], placesLeft_);
        else if (place == u'0' || hasZeros_)
            wholeDigit('0', placesLeft_);
        hasZeros_ |= place == u'0';
    }

    void decimalPlace()
    {
        sign();
        surplus();
        result_ += u',';
        pastPoint_ = true;
    }

    void fractionPlace(QChar place)
    {
        if (nextFraction_ < fraction_.size())
            result_ += QLatin1Char(fraction_[nextFraction_]);
        else if (place == u'0')
            result_ += u'0';
        ++nextFraction_;
    }

    const Section& section_;
    const QByteArray whole_;
    const QByteArray fraction_;
    QString result_;
    bool showsSign_;
    bool hasZeros_ = false;
    bool pastPoint_ = false;
    qsizetype placesLeft_;
    qsizetype nextWhole_ = 0;
    qsizetype nextFraction_ = 0;
};

QString formatted(const Decimal& number, const QString& format)
{
    if (format.isEmpty())
        return number.plainText();
    const QList<QStringView> sections = QStringView(format).split(u';');
    // The section is chosen before rounding.
    const bool isOfItsOwn = number.isNegative && sections.size() > 1;
    const Section section(sections[isOfItsOwn ? 1 : 0]);
    const bool showsSign = number.isNegative && !isOfItsOwn;
    return Filler(section, number.rounded(section.fractionPlaces), showsSign).filled();
}

} // namespace

QString Format(const QString& value, const QString& format)
{
    return isNumeric(value) ? Format(toNumber(value), format) : value;
}

QString Format(double value, const QString& format)
{
    if (!std::isfinite(value))
        return toText(value);
    return formatted(Decimal::fromDouble(value), format);
}

namespace {

// Prices stand in every row of a catalogue; nearly all are neither negative nor beyond a million
// millions, and need no reading of a format.
bool isPlainPrice(Value::Money money)
{
    return money.tenThousandths >= 0 && money.tenThousandths < 10'000'000'000'000'000;
}

// "#,##0.00", half away from zero.
QString priceText(qint64 tenThousandths)
{
    const qint64 cents = (tenThousandths + 50) / 100;
    char16_t text[32];
    char16_t* const end = text + 32;
    char16_t* place = end;
    *--place = static_cast<char16_t>(u'0' + cents % 10);
    *--place = static_cast<char16_t>(u'0' + cents / 10 % 10);
    *--place = u',';
    qint64 whole = cents / 100;
    for (int digits = 0; digits == 0 || whole > 0; ++digits, whole /= 10) {
        if (digits > 0 && digits % 3 == 0)
            *--place = u'.';
        *--place = static_cast<char16_t>(u'0' + whole % 10);
    }
    return QString(reinterpret_cast<const QChar*>(place), end - place);
}

} // namespace

QString Format(const Value& value, const QString& format)
{
    if (value.isNull())
        return {};
    if (const auto* text = std::get_if<QString>(&value.data()))
        return Format(*text, format);
    if (const auto* money = std::get_if<Value::Money>(&value.data())) {
        if (isPlainPrice(*money) && (format == formats::Money || format == formats::Total))
            return priceText(money->tenThousandths);
        return formatted(Decimal::fromScaled(money->tenThousandths, 4), format);
    }
    return Format(value.number(), format);
}
