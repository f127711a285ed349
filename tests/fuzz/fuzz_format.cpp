#include "Require.h"

#include "Format.h"
#include "Numbers.h"
#include "RuntimeError.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

// The digits alone, without leading zeros.
QString digitsOf(const QString& text)
{
    QString digits;
    for (const QChar c : text) {
        if (c >= u'0' && c <= u'9' && (c != u'0' || !digits.isEmpty()))
            digits += c;
    }
    return digits;
}

// Places and plain literals only: such a format shows every digit of the whole number.
bool showsWholeNumber(const QString& format)
{
    bool hasPlace = false;
    for (const QChar c : format) {
        if (u";\"\\.123456789"_s.contains(c))
            return false;
        hasPlace |= c == u'0' || c == u'#';
    }
    return hasPlace;
}

void checkNumber(double number, const QString& format)
{
    const QString total = Format(number, formats::Total);
    require(std::fabs(toNumber(total) - number) <= 0.0051 + std::fabs(number) * 1e-14,
            "a total reads back as the number, but for the rounding");
    if (number > 0 && digitsOf(total).size() > 0)
        require(Format(-number, formats::Total) == u'-' + total, "the sign changes nothing else");
    if (showsWholeNumber(format))
        require(digitsOf(Format(number, format)) == digitsOf(Format(number, u"0"_s)),
                "no digit of the whole number is lost");
    const Value::Money money{static_cast<qint64>(std::fmod(number, 1e14) * 1e4)};
    require(toNumber(Format(money, u"0.0000"_s)) == toNumber(Value(money).text()),
            "money keeps its ten-thousandths");
    for (const QString& price : {formats::Money, formats::Total})
        require(Format(money, price) == Format(Value(money).text(), price),
                "prices show as the same numbers do");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    const QString& format = input.head;
    const QString& value = input.rest;
    require(Format(Value(), format).isEmpty(), "Null shows nothing");
    try {
        const QString shown = Format(value, format);
        if (!isNumeric(value)) {
            require(shown == value, "a text that is no number comes back unchanged");
            return 0;
        }
        const double number = toNumber(value);
        require(shown == Format(number, format), "a text is shown as its number");
        if (std::fabs(number) < 1e300)
            checkNumber(number, format);
    } catch (const RuntimeError& error) {
        require(error.number() == RuntimeError::Overflow, "only the range is a fault");
    }
    return 0;
}
