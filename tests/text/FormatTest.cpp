#include "Format.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Row
{
    const char* rule;
    Value value;
    QString format, shown;
};

const std::vector<Row> rows{
    {"Null shows nothing", Value(), formats::Money, u""_s},
    {"a text that is no number stays", u"* 1"_s, formats::Money, u"* 1"_s},

    {"leading zeros", 12, formats::Code, u"0000012"_s},
    {"comma is the decimal place", u"2,5"_s, formats::Code, u"0000003"_s},
    {"yes counts as -1", true, formats::Code, u"-0000001"_s},
    {"date counts its days", QDate(1900, 1, 1), formats::Code, u"0000002"_s},

    {"point never is decimal", u"12.50"_s, formats::Money, u"1.250,00"_s},
    {"US form", u"1,234.56"_s, formats::Money, u"1,23"_s},
    {"zero takes the first of two sections", u"0"_s, formats::Money, u"0,00"_s},
    {"half a cent goes up", u"0,005"_s, formats::Money, u"0,01"_s},
    {"negative section", u"-5"_s, formats::Money, u"($5,00)"_s},
    {"section chosen before rounding", -0.001, formats::Money, u"($0,00)"_s},
    {"money to the last ten-thousandth", Value::Money{std::numeric_limits<qint64>::min()},
     u"#,##0.0000"_s, u"-922.337.203.685.477,5808"_s},

    {"minus and grouping", -1234.5, formats::Total, u"-1.234,50"_s},
    {"rounds the decimal text", 2.675, formats::Total, u"2,68"_s},
    {"half away from zero", 0.125, formats::Total, u"0,13"_s},
    {"rounding carries", 999.995, formats::Total, u"1.000,00"_s},
    {"nothing is left to sign", -0.001, formats::Total, u"0,00"_s},
    {"more than fifteen digits", 1e18, formats::Total, u"1.000.000.000.000.000.000,00"_s},
    {"no grouping asked", 1234.5, formats::LineTotal, u"1234,50"_s},
    {"one zero stands", 0, formats::LineTotal, u"0,00"_s},

    {"zero prints nothing", 0, formats::Count, u""_s},
    {"nothing before the comma", 0.4, formats::Count, u""_s},
    {"half up", 2.5, formats::Count, u"3"_s},

    {"telephone", u"1199998888"_s, formats::Phone, u"(11)9999-8888"_s},
    {"eleven digits", u"11999998888"_s, formats::Phone, u"(119)9999-8888"_s},
    {"parentheses alone are a minus", u"(11)"_s, formats::Phone, u"(-00)0000-0011"_s},
    {"person's number keeps its zero", u"01234567890"_s, formats::Cpf, u"012-345-678/90"_s},
    {"company's number", u"12345678000195"_s, formats::Cgc, u"12-345-678-0001/95"_s},
    {"leading zero lost", u"01234567890"_s, formats::CaptionCpf, u"12-345-678/90"_s},
    {"literals stay", u"123"_s, formats::CaptionCpf, u"--1/23"_s},
    {"zeros lost", u"00000000000191"_s, formats::CaptionCgc, u"---1/91"_s},

    {"places behind a zero fill up", 5, u"0##"_s, u"005"_s},
};

} // namespace

TEST(Format, ShowsByTheFormat)
{
    for (const Row& row : rows)
        EXPECT_EQ(Format(row.value, row.format).toStdString(), row.shown.toStdString()) << row.rule;
}
