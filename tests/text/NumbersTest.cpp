#include "Numbers.h"

#include "ErrorOf.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Row
{
    QString text;
    double number;
};

} // namespace

TEST(Numbers, TextIsReadByTheRegionalSettings)
{
    const std::vector<Row> numbers{
        {u"1.234,5"_s, 1234.5}, {u"12.50"_s, 1250},  {u"1.2.3,4"_s, 123.4},
        {u"1..0"_s, 10},        {u"1,"_s, 1},        {u",5"_s, 0.5},
        {u"1,5.5"_s, 1.55},     {u"R$ 5,00"_s, 5},   {u"5,00 R$"_s, 5},
        {u"(R$5,00)"_s, -5},    {u"R$ (5)"_s, -5},   {u"( 5 ) "_s, -5},
        {u"5-"_s, -5},          {u"5 +"_s, 5},       {u"- 5"_s, -5},
        {u"1e3"_s, 1000},       {u"1,5D-1"_s, 0.15}, {u"&H1f"_s, 31},
        {u"&O17"_s, 15},        {u" 12 \t"_s, 12},   {u"1e-4294967297"_s, 0},
        {u"0e4294967297"_s, 0},
    };
    for (const Row& row : numbers) {
        EXPECT_DOUBLE_EQ(toNumber(row.text), row.number) << row.text.toStdString();
        EXPECT_TRUE(isNumeric(row.text)) << row.text.toStdString();
    }
    const QStringList others{u".5"_s,   u","_s,     u"1,2,3"_s, u"$5"_s,    u"R$ 5 R$"_s, u"(-5)"_s,
                             u"-(5)"_s, u"(5)-"_s,  u"(5"_s,    u"5)"_s,    u"()"_s,      u"-5-"_s,
                             u"--5"_s,  u"1e"_s,    u"1e+"_s,   u"e3"_s,    u"&H"_s,      u"&O8"_s,
                             u"0x10"_s, u"12 34"_s, u"5%"_s,    u"p.EST"_s, u"*******"_s, u""_s,
                             u"  "_s,   u"05/12"_s, u"\u0661"_s};
    for (const QString& text : others) {
        EXPECT_EQ(errorOf([&] { toNumber(text); }), 13) << text.toStdString();
        EXPECT_FALSE(isNumeric(text)) << text.toStdString();
    }
    for (const QString& beyond : {u"1e999"_s, u"-1e99999999999999999999"_s, QString(400, u'9'),
                                  u"&H"_s + QString(400, u'f')})
        EXPECT_EQ(errorOf([&] { toNumber(beyond); }), 6) << beyond.toStdString();
}

TEST(Numbers, ValReadsTheHeadWithThePointAsDecimalPlace)
{
    const std::vector<Row> rows{
        {u"12,50"_s, 12}, {u"1.234,56"_s, 1.234}, {u""_s, 0},          {u"R$5"_s, 0},
        {u"(5)"_s, 0},    {u"0000012"_s, 12},     {u"p.EST"_s, 0},     {u"1 234"_s, 1234},
        {u"- 12"_s, -12}, {u"+3"_s, 3},           {u"&H1F"_s, 31},     {u"&o17x"_s, 15},
        {u"&Hz"_s, 0},    {u"1.2.3"_s, 1.2},      {u".5"_s, 0.5},      {u"."_s, 0},
        {u"-"_s, 0},      {u"1e3"_s, 1000},       {u"2d-1"_s, 0.2},    {u"1e"_s, 1},
        {u"1e+"_s, 1},    {u"7 peças"_s, 7},      {u"1\t2\n3"_s, 123}, {u"1\r2"_s, 1},
    };
    for (const Row& row : rows)
        EXPECT_DOUBLE_EQ(Val(row.text), row.number) << row.text.toStdString();
    EXPECT_EQ(errorOf([] { Val(u"-1e999"_s); }), 6);
}

TEST(Numbers, NumbersShowTheirShortestRegionalForm)
{
    const std::vector<Row> rows{
        {u"0"_s, -0.0},         {u"-2"_s, -2},       {u"0,5"_s, 0.5},
        {u"0,3"_s, 0.1 + 0.2},  {u"1,5"_s, 2.5 - 1}, {u"1234,56"_s, 1234.56},
        {u"0,0001"_s, 1e-4},    {u"1E-05"_s, 1e-5},  {u"1E+15"_s, 1e15 - 0.1},
        {u"-1E+300"_s, -1e300},
    };
    for (const Row& row : rows)
        EXPECT_EQ(toText(row.number).toStdString(), row.text.toStdString());
    EXPECT_EQ(toText(0.1F), u"0,1"_s);
    EXPECT_EQ(toText(12345678.0F), u"1,234568E+07"_s);
}
