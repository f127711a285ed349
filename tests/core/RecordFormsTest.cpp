#include "RecordForms.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(Codes, CountOnFromTheLastSevenCharacters)
{
    EXPECT_EQ(nextCode(QString()), u"0000001"_s);
    EXPECT_EQ(nextCode(u"0000041"_s), u"0000042"_s);
    EXPECT_EQ(nextCode(u"90000041"_s), u"0000042"_s);
    EXPECT_EQ(nextCode(u"*******"_s), u"0000001"_s);
    EXPECT_EQ(nextCode(u"9999999"_s), u"10000000"_s);
}

} // namespace
