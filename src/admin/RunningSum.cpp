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
constexpr qint64 WholeLimit = Limit / One;

std::optional<qint64> exact(const Value& amount)
{
    qint64 tenThousandths = -1;
    if (const auto* money = std::get_if<Value::Money>(&amount.data())) {
        tenThousandths = money->tenThousandths;
    } else if (const auto* number = std::get_if<double>(&amount.data())) {
        if (*number >= 0 && *number < static_cast<double>(WholeLimit) &&
            *number == std::floor(*number))
            tenThousandths = static_cast<qint64>(*number) * One;
    }
    if (tenThousandths < 0 || tenThousandths >= Limit)
        return std::nullopt;
    return tenThousandths;
}

QString shown(const Value& sum, RunningSum::Kind kind)
{
    return Format(sum, kind == RunningSum::Count ? formats::Count : formats::Total);
}

// What the text leaves of a sum; its last place is one, or a hundredth.
qint64 rounded(qint64 tenThousandths, RunningSum::Kind kind)
{
    const qint64 unit = kind == RunningSum::Count ? One : One / 100;
    return (tenThousandths + unit / 2) / unit * unit;
}

// The text of a sum that was shown so already.
std::optional<qint64> exact(const QString& text, RunningSum::Kind kind)
{
    const double number = toNumber(text) * One;
    if (!(number >= 0 && number < static_cast<double>(Limit)))
        return std::nullopt;
    const qint64 tenThousandths = std::llround(number);
    if (shown(Value::Money{tenThousandths}, kind) != text)
        return std::nullopt;
    return rounded(tenThousandths, kind);
}

} // namespace

QString RunningSum::text() const
{
    return known_ ? shown(Value::Money{*known_}, kind_) : text_;
}

RunningSum RunningSum::plus(const Value& amount) const
{
    const std::optional<qint64> added = exact(amount);
    RunningSum sum({}, kind_);
    if (added) {
        const std::optional<qint64> before = known_ ? known_ : exact(text_, kind_);
        const qint64 total = before ? rounded(*before + *added, kind_) : Limit;
        // A count of 0 shows as the empty text, which nothing can be added to.
        if (total < Limit && (total > 0 || kind_ != Count)) {
            sum.known_ = total;
            return sum;
        }
    }
    sum.text_ = shown(toNumber(text()) + amount.number(), kind_);
    return sum;
}
