#pragma once

#include "Value.h"

#include <QString>

#include <optional>
#include <utility>

// A sum that goes through its text at each step, as the boxes of the cash report do: what the next
// step counts on from is the text, rounded by its format.
class RunningSum
{
public:
    // Shown with two places, or as a whole number whose 0 is the empty text.
    enum Kind
    {
        Total,
        Count
    };

    RunningSum(QString text, Kind kind) : text_(std::move(text)), kind_(kind) {}

    QString text() const;
    // Error 13 where the text or the amount is no number, 94 where the amount is Null, 6 beyond the
    // range.
    RunningSum plus(const Value& amount) const;

private:
    // Whole ten-thousandths, where the text is known by them and was not made yet.
    std::optional<qint64> known_;
    QString text_;
    Kind kind_;
};
