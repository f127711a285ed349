#include "RunningSum.h"

#include "Format.h"
#include "Numbers.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

// The sum as it is told: the text, read as a number, plus the amount, shown again.
QString told(const QString& text, const Value& amount, const QString& format)
{
    return Format(toNumber(text) + amount.number(), format);
}

Value someAmount(std::mt19937& random)
{
    const auto below = [&](qint64 limit) {
        return std::uniform_int_distribution<qint64>(0, limit - 1)(random);
    };
    const Value amounts[] = {Value::Money{-below(1'000'000)},
                             Value::Money{below(900'000'000'000'000)},
                             Value::Money{below(100) * 50},
                             static_cast<double>(below(1000)) / 8,
                             static_cast<double>(below(1'000'000'000)),
                             u"1.234,5"_s,
                             Value::Money{below(10'000'000)}};
    return amounts[below(std::ssize(amounts))];
}

TEST(RunningSumTest, ShowsAtEachStepWhatTheTextsGive)
{
    std::mt19937 random(20041205);
    for (const RunningSum::Kind kind : {RunningSum::Total, RunningSum::Count}) {
        const QString& format = kind == RunningSum::Total ? formats::Total : formats::Count;
        for (int run = 0; run < 200; ++run) {
            QString expected = kind == RunningSum::Total ? u"0,00"_s : u"0"_s;
            RunningSum sum(expected, kind);
            for (int step = 0; step < 50; ++step) {
                const Value amount = someAmount(random);
                expected = told(expected, amount, format);
                sum = sum.plus(amount);
                ASSERT_EQ(sum.text().toStdString(), expected.toStdString())
                    << "run " << run << " step " << step;
                if (!isNumeric(expected))
                    break;
            }
        }
    }
}

} // namespace
