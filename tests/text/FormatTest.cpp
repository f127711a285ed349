#include "Format.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

// A value in quotes is text, without them a number.
struct Row
{
    const char* rule;
    Value value;
    QString format;
    QString shown;
};

Value text(const char16_t* value)
{
    return QString::fromUtf16(value);
}

const std::vector<Row> rows{
    {"leading zeros", 12, formats::Code, u"0000012"_s},
    {"comma is the decimal place", text(u"2,5"), formats::Code, u"0000003"_s},
    {"minus before the first place", text(u"-7"), formats::Code, u"-0000007"_s},
    {"yes counts as -1", true, formats::Code, u"-0000001"_s},
    {"date counts its days", QDate(1900, 1, 1), formats::Code, u"0000002"_s},

    {"grouping", text(u"1234,5"), formats::Money, u"1.234,50"_s},
    {"point never is decimal", text(u"12.50"), formats::Money, u"1.250,00"_s},
    {"US form", text(u"1,234.56"), formats::Money, u"1,23"_s},
    {"zero takes the first of two sections", text(u"0"), formats::Money, u"0,00"_s},
    {"half a cent goes up", text(u"0,005"), formats::Money, u"0,01"_s},
    {"negative section", text(u"-5"), formats::Money, u"($5,00)"_s},
    {"section chosen before rounding", -0.001, formats::Money, u"($0,00)"_s},
    {"money to the last ten-thousandth", Value::Money{std::numeric_limits<qint64>::min()},
     u"#,##0.0000"_s, u"-922.337.203.685.477,5808"_s},

    {"minus and grouping", -1234.5, formats::Total, u"-1.234,50"_s},
    {"rounds the decimal text", 2.675, formats::Total, u"2,68"_s},
    {"half away from zero", 0.125, formats::Total, u"0,13"_s},
    {"rounding carries", 999.995, formats::Total, u"1.000,00"_s},
    {"nothing is left to sign", -0.001, formats::Total, u"0,00"_s},
    {"more than fifteen digits", 1e18, formats::Total, u"1.000.000.000.000.000.000,00"_s},
    {"cents fill up", 37.5, formats::LineTotal, u"37,50"_s},
    {"no grouping asked", 1234.5, formats::LineTotal, u"1234,50"_s},
    {"one zero stands", 0, formats::LineTotal, u"0,00"_s},

    {"zero prints nothing", 0, formats::Count, u""_s},
    {"nothing before the comma", 0.4, formats::Count, u""_s},
    {"more digits than places", 12345, formats::Count, u"12345"_s},
    {"half up", 2.5, formats::Count, u"3"_s},
    {"negative count", -3, formats::Count, u"-3"_s},

    {"telephone", text(u"1199998888"), formats::Phone, u"(11)9999-8888"_s},
    {"eleven digits", text(u"11999998888"), formats::Phone, u"(119)9999-8888"_s},
    {"without area", text(u"33334444"), formats::Phone, u"(00)3333-4444"_s},
    {"parentheses alone are a minus", text(u"(11)"), formats::Phone, u"(-00)0000-0011"_s},
    {"person's number keeps its zero", text(u"01234567890"), formats::Cpf, u"012-345-678/90"_s},
    {"short number", text(u"123"), formats::Cpf, u"000-000-001/23"_s},
    {"company's number", text(u"12345678000195"), formats::Cgc, u"12-345-678-0001/95"_s},
    {"leading zero lost", text(u"01234567890"), formats::CaptionCpf, u"12-345-678/90"_s},
    {"literals stay", text(u"123"), formats::CaptionCpf, u"--1/23"_s},
    {"zeros lost", text(u"00000000000191"), formats::CaptionCgc, u"---1/91"_s},

    {"third section for zero", 0, u"0;-0;nada"_s, u"nada"_s},
    {"empty section is the first", -2, u"0;;z"_s, u"-2"_s},
    {"quoted and escaped literals", 7, u"\"0;\"0\\#"_s, u"0;7#"_s},
    {"optional cents", 1.5, u"0.##"_s, u"1,5"_s},
    {"no whole place", 12.5, u".00"_s, u"12,50"_s},
    {"places behind a zero fill up", 5, u"0##"_s, u"005"_s},
    {"comma groups between places only", 1234, u",0000"_s, u"1234"_s},
    {"filled places are grouped", 5, u"0,000"_s, u"0.005"_s},
};

} // namespace

TEST(Format, ShowsByTheFormat)
{
    for (const Row& row : rows)
        EXPECT_EQ(Format(row.value, row.format).toStdString(), row.shown.toStdString()) << row.rule;
}
