#include "Require.h"

#include "Format.h"
#include "Numbers.h"
#include "RuntimeError.h"

#include <cmath>
#include <optional>

namespace {

// Nothing where the text is no number; a text beyond the range counts as infinite.
std::optional<double> numberBy(double (*convert)(const QString&), const QString& text)
{
    try {
        return convert(text);
    } catch (const RuntimeError& error) {
        require(error.number() == RuntimeError::Overflow ||
                    error.number() == RuntimeError::TypeMismatch,
                "conversion fails with 6 or 13");
        return error.number() == RuntimeError::Overflow ? std::optional(HUGE_VAL) : std::nullopt;
    }
}

void checkTexts(double number)
{
    const double again = toNumber(toText(number));
    require(std::fabs(again - number) <= std::fabs(number) * 1e-14, "the text keeps the number");
    require(Val(toText(number).replace(u',', u'.')) == again, "both readings agree");
    const Value::Money money{static_cast<qint64>(std::fmod(number, 1e14) * 1e4)};
    for (const QString& price : {formats::Money, formats::Total})
        require(Format(money, price) == Format(Value(money).text(), price),
                "prices show as the same numbers do");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = FuzzInput(data, size).whole;
    const auto number = numberBy(toNumber, text);
    require(isNumeric(text) == number.has_value(), "numeric is what converts");
    if (number && (*number == 0 || (std::fabs(*number) > 1e-300 && std::fabs(*number) < 1e308)))
        checkTexts(*number);
    require(numberBy(Val, text + u'z') == numberBy(Val, text), "only the head is read");
    return 0;
}
