#include "RunningSum.h"

#include "Format.h"
#include "Numbers.h"

#include <cmath>

namespace {

constexpr qint64 One = 10'000;
// 15 significant digits, as many as a number is shown with. Below it, and without negative amounts,
// the sum of two numbers and the whole ten-thousandths that they stand for show the same digits:
// three roundings of half a unit in the last binary place do not reach the middle between two such
// decimals.
constexpr qint64 Limit = 1'000'000'000'000'000;

std::optional<qint64> exact(const Value& amount)
{
    qint64 tenThousandths = -1;
    if (const auto* money = std::get_if<Value::Money>(&amount.data())) {
        tenThousandths = money->tenThousandths;
    } else if (const auto* number = std::get_if<double>(&amount.data())) {
        if (*number >= 0 && *number < static_cast<double>(Limit / One) &&
            *number == std::floor(*number))
            tenThousandths = static_cast<qint64>(*number) * One;
    }
    if (tenThousandths < 0 || tenThousandths >= Limit)
        return std::nullopt;
    return tenThousandths;
}

// What the format leaves of a sum; its last place is one, or a hundredth.
qint64 roundedBy(const QString& format, qint64 tenThousandths)
{
    const qint64 unit = &format == &formats::Count ? One : One / 100;
    return (tenThousandths + unit / 2) / unit * unit;
}

// The text of a number that was shown by the format already.
std::optional<qint64> knownBy(const QString& text, const QString& format)
{
    const double number = toNumber(text) * One;
    if (!(number >= 0 && number < static_cast<double>(Limit)))
        return std::nullopt;
    const qint64 tenThousandths = std::llround(number);
    if (Format(Value(Value::Money{tenThousandths}), format) != text)
        return std::nullopt;
    return roundedBy(format, tenThousandths);
}

} // namespace

QString RunningSum::text() const
{
    return known_ ? Format(Value(Value::Money{*known_}), *format_) : text_;
}

RunningSum RunningSum::plus(const Value& amount) const
{
    const std::optional<qint64> added = exact(amount);
    RunningSum sum;
    sum.format_ = format_;
    if (added) {
        const std::optional<qint64> before = known_ ? known_ : knownBy(text_, *format_);
        const qint64 total = before ? roundedBy(*format_, *before + *added) : Limit;
        // A count of 0 shows as the empty text, which nothing can be added to.
        if (total < Limit && (total > 0 || format_ != &formats::Count)) {
            sum.known_ = total;
            return sum;
        }
    }
    sum.text_ = Format(toNumber(text()) + amount.number(), *format_);
    return sum;
}
