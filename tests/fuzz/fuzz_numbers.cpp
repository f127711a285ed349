#include "Require.h"

#include "Dates.h"
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
        if (error.number() == RuntimeError::Overflow)
            return HUGE_VAL;
        require(error.number() == RuntimeError::TypeMismatch, "conversion fails with 6 or 13");
        return std::nullopt;
    }
}

void checkRoundTrip(double number)
{
    QString text = toText(number);
    const double again = toNumber(text);
    require(std::fabs(again - number) <= std::fabs(number) * 1e-14, "the text keeps the number");
    require(toText(again) == text, "the text of the read text is the same");
    const auto single = static_cast<float>(number);
    if (std::isnormal(single) && std::fabs(single) < 1e38F)
        require(std::fabs(toNumber(toText(single)) - static_cast<double>(single)) <=
                    std::fabs(static_cast<double>(single)) * 1e-6,
                "single precision keeps its seven digits");
    require(Val(text.replace(u',', u'.')) == again, "both readings agree but for the comma");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    const QString& text = input.whole;

    const auto number = numberBy(toNumber, text);
    require(isNumeric(text) == number.has_value(), "numeric is what converts");
    require(numberBy(toNumber, u' ' + text + u' ') == number, "blanks around do not count");
    if (number && (*number == 0 || (std::fabs(*number) > 1e-300 && std::fabs(*number) < 1e308)))
        checkRoundTrip(*number);

    const auto head = numberBy(Val, text);
    require(head.has_value(), "every text can be read");
    require(numberBy(Val, text + u'z') == head, "what follows the head does not count");
    require(numberBy(Val, u' ' + text) == head, "blanks do not count");

    if (const auto date = dateFromText(text))
        require(dateFromText(dateText(*date)) == date, "a date reads back");
    return 0;
}
