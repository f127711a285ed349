#include "Value.h"
#include "Dates.h"
#include "ErrorOf.h"
#include "Strings.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::Literals::StringLiterals;

TEST(Value, EachKindHasItsTextItsNumberAndItsTruth)
{
    struct Row
    {
        Value value;
        QString text;
        double number;
        bool isTrue;
    };
    const qint64 lowest = std::numeric_limits<qint64>::min();
    const std::vector<Row> rows{
        {u"12,5"_s, u"12,5"_s, 12.5, true},
        {u"0"_s, u"0"_s, 0, false},
        {true, u"Verdadeiro"_s, -1, true},
        {false, u"Falso"_s, 0, false},
        {Value::Money{125000}, u"12,5"_s, 12.5, true},
        {Value::Money{-1}, u"-0,0001"_s, -0.0001, true},
        {Value::Money{lowest}, u"-922337203685477,5808"_s, -922337203685477.5808, true},
        {QDate(2004, 12, 5), u"05/12/2004"_s, 38326, true},
        {QDate(1899, 12, 30), u"30/12/1899"_s, 0, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.value.text().toStdString(), row.text.toStdString());
        EXPECT_DOUBLE_EQ(row.value.number(), row.number) << row.text.toStdString();
        EXPECT_EQ(row.value.isTrue(), row.isTrue) << row.text.toStdString();
    }
}

TEST(Value, NullIsAFaultAndEmptyTextIsNot)
{
    const Value null;
    const Value empty = QString();
    EXPECT_NE(null, empty);
    EXPECT_EQ(errorOf([&] { null.text(); }), 94);
    EXPECT_EQ(errorOf([&] { null.number(); }), 94);
    EXPECT_EQ(null.textOrEmpty(), QString());
    EXPECT_EQ(errorOf([&] { empty.number(); }), 13);
    for (const Value& value : {null, empty, Value(u"Sim"_s), Value(u"1e999"_s)})
        EXPECT_FALSE(value.isTrue());
}

TEST(Dates, ShortDatesAreRead)
{
    const QDateTime midnight = QDate(2004, 12, 5).startOfDay();
    EXPECT_EQ(dateTimeText(midnight) + dateTimeText(midnight.addSecs(7)),
              u"05/12/200405/12/2004 00:00:07"_s);
    const std::vector<std::pair<QString, QDate>> rows{
        {u"05/12/2004"_s, QDate(2004, 12, 5)},
        {u"1-1-29"_s, QDate(2029, 1, 1)},
        {u" 01.01.30 "_s, QDate(1930, 1, 1)},
        {u"29/02/2004"_s, QDate(2004, 2, 29)},
    };
    for (const auto& [text, date] : rows)
        EXPECT_EQ(dateFromText(text), date) << text.toStdString();
    for (const QString& text :
         {u"29/02/2003"_s, u"12/25/2004"_s, u"1/2-2004"_s, u"1/2"_s, u"1/2/3/4"_s, u"1//2004"_s,
          u"/1/2004"_s, u"1/1/204"_s, u"001/1/2004"_s, u"1/1/20045"_s, u"a/1/2004"_s,
          u"__/__/____"_s, u""_s})
        EXPECT_FALSE(dateFromText(text)) << text.toStdString();
}

TEST(Strings, CountsBeyondTheTextAreFineAndNegativeOnesAreNot)
{
    EXPECT_EQ(Trim(u"   "_s) + Trim(u"  a \t "_s), u"a \t"_s);
    EXPECT_EQ(Left(u"abc"_s, 9) + Right(u"abc"_s, 9) + Right(u"abc"_s, 2), u"abcabcbc"_s);
    EXPECT_EQ(Mid(u"abc"_s, 2, 1) + Mid(u"abc"_s, 3, 9) + Mid(u"abc"_s, 4, 1), u"bc"_s);
    for (void (*const cut)() : {+[] { Left(u"a"_s, -1); }, +[] { Right(u"a"_s, -1); },
                                +[] { Mid(u"a"_s, 0, 1); }, +[] { Mid(u"a"_s, 1, -1); }})
        EXPECT_EQ(errorOf(cut), 5);
}
