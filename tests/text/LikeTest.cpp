#include "Like.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// What "%" and "_" find is held against another engine by the fuzz target.
TEST(Like, CaseAndSetsFollowTheirRules)
{
    struct Row
    {
        const char* rule;
        QString pattern, text;
        bool matches;
    };
    const std::vector<Row> rows{
        {"case is ignored", u"%jose%"_s, u"MARIA JOSE"_s, true},
        {"accents count", u"%jose%"_s, u"José"_s, false},
        {"case of accented letters", u"%JOSÉ%"_s, u"josé"_s, true},
        {"whole text", u"ab"_s, u"abc"_s, false},
        {"question mark is a character", u"a?c"_s, u"abc"_s, false},
        {"set", u"[a-c]x"_s, u"Bx"_s, true},
        {"set of single characters", u"[xz]"_s, u"y"_s, false},
        {"hyphen at the end of a set", u"[a-]"_s, u"-"_s, true},
        {"complement", u"%[!a-c]%"_s, u"abc"_s, false},
        {"complement takes a character", u"[!a]"_s, u""_s, false},
        {"wildcard in brackets", u"%[%]%"_s, u"10"_s, false},
        {"bracket in brackets", u"%[[]%"_s, u"a[b"_s, true},
        {"closing bracket alone", u"a]"_s, u"a]"_s, true},
        {"nothing in brackets is nothing", u"a[]b"_s, u"ab"_s, true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(LikePattern(row.pattern).matches(row.text), row.matches) << row.rule;
}
